#!/usr/bin/env bash
# Sets up the machine, builds, and runs every test headless under ctest.
# With --sanitize the build is a Debug build with ASan and UBSan (build-asan/),
# run with leak detection (Qt-internal leaks suppressed by tools/lsan.supp).
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
if [[ "${1:-}" == "--sanitize" ]]; then
  build="$src/build-asan"
  "$src/tools/setup.sh" "$build" -DCMAKE_BUILD_TYPE=Debug -DAS_SANITIZE=ON
  # Leak detection stays on; leaks inside Qt and below it are suppressed,
  # which needs whole allocation stacks (Qt has no frame pointers).
  export ASAN_OPTIONS="detect_leaks=1:fast_unwind_on_malloc=0:abort_on_error=1"
  export LSAN_OPTIONS="suppressions=$src/tools/lsan.supp:print_suppressions=0"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
else
  build="$src/build"
  "$src/tools/setup.sh" "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
export QT_QPA_PLATFORM=offscreen
cd "$build"
ctest --output-on-failure -j2
