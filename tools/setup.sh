#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks for building (as root, with
# apt-get), then configures and builds into the given build directory.
# Usage: tools/setup.sh <build-dir> [extra cmake arguments...]
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:?build directory}"
shift

packages=(g++ make cmake ccache qtbase5-dev qtbase5-dev-tools qtdeclarative5-dev qttools5-dev qttools5-dev-tools
          xvfb xauth)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

cmake -S "$src" -B "$build" "$@"
cmake --build "$build" -j2
