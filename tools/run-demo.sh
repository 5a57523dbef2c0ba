#!/usr/bin/env bash
# Sets up the machine, builds, and runs the demo alarm screen on the demo
# project. With a display it opens the window; without one ($DISPLAY empty)
# it runs under Xvfb and writes a screenshot of the live alarm table.
# Extra arguments go to the demo (see alarmscreen-demo --help).
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
build="$src/build"
"$src/tools/setup.sh" "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo
demo="$build/demo/alarmscreen-demo"

if [[ -n "${DISPLAY:-}" ]]; then
  exec "$demo" "$@"
fi

screenshot="$build/demo-screenshot.png"
rm -f "$screenshot"
echo "No display: running the demo under Xvfb and writing a screenshot."
xvfb-run -a -s "-screen 0 1400x900x24" "$demo" --screenshot "$screenshot" --quit-after 60000 "$@"
if [[ ! -s "$screenshot" ]]; then
  echo "The demo did not write $screenshot" >&2
  exit 1
fi
echo "Screenshot of the demo alarm screen: $screenshot"
