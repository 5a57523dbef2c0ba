#!/usr/bin/env bash
# Sets up the machine, builds, and runs every test headless under ctest.
# With --sanitize the build is a Debug build with ASan and UBSan (build-asan/).
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
if [[ "${1:-}" == "--sanitize" ]]; then
  build="$src/build-asan"
  "$src/tools/setup.sh" "$build" -DCMAKE_BUILD_TYPE=Debug -DAS_SANITIZE=ON
  export ASAN_OPTIONS="detect_leaks=0:abort_on_error=1"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
else
  build="$src/build"
  "$src/tools/setup.sh" "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
export QT_QPA_PLATFORM=offscreen
cd "$build"
ctest --output-on-failure -j2
