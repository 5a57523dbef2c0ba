#!/usr/bin/env bash
# Sets up the machine, builds, and runs every test headless under ctest, in
# three parts, each timed:
#   1. normal      RelWithDebInfo build (build/) and the whole suite;
#   2. sanitize    Debug build with ASan and UBSan (build-asan/) and the whole
#                  suite with leak detection on (suppressions: tools/lsan.supp);
#   3. fuzz smoke  every fuzz target for a few seconds (tools/run-fuzz.sh,
#                  clang build in build-fuzz/).
# A part runs only when the ones before it passed.
#
#   tools/run-tests.sh               all three parts
#   tools/run-tests.sh --quick       the normal part only
#   tools/run-tests.sh --sanitize    the sanitize part only
#   tools/run-tests.sh --fuzz-smoke  the fuzz smoke only
# AS_FUZZ_SMOKE_SECONDS sets the seconds per fuzz target (default 5).
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
export QT_QPA_PLATFORM=offscreen
times=()

timed() {
  local name="$1"
  shift
  local start=$SECONDS
  echo "=== $name"
  "$@"
  times+=("$(printf '%-11s %4d s' "$name" $((SECONDS - start)))")
}

normal() {
  "$src/tools/setup.sh" "$src/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo
  (cd "$src/build" && ctest --output-on-failure -j2)
}

# A subshell: the sanitizer options must not reach the fuzz smoke.
sanitize() (
  "$src/tools/setup.sh" "$src/build-asan" -DCMAKE_BUILD_TYPE=Debug -DAS_SANITIZE=ON
  # Leaks are findings; only what Qt's offscreen platform and fontconfig keep
  # for the life of the process is suppressed, which needs whole allocation
  # stacks (Qt has no frame pointers).
  export ASAN_OPTIONS="detect_leaks=1:fast_unwind_on_malloc=0:abort_on_error=1"
  export LSAN_OPTIONS="suppressions=$src/tools/lsan.supp:print_suppressions=0"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
  (cd "$src/build-asan" && ctest --output-on-failure -j2)
)

fuzz_smoke() {
  if ! command -v clang++ >/dev/null; then
    echo "Installing: clang"
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends clang
  fi
  "$src/tools/run-fuzz.sh" "${AS_FUZZ_SMOKE_SECONDS:-5}"
}

case "${1:-}" in
  --quick) timed normal normal ;;
  --sanitize) timed sanitize sanitize ;;
  --fuzz-smoke) timed fuzz-smoke fuzz_smoke ;;
  "")
    timed normal normal
    timed sanitize sanitize
    timed fuzz-smoke fuzz_smoke
    ;;
  *) echo "usage: $0 [--quick | --sanitize | --fuzz-smoke]" >&2; exit 2 ;;
esac

echo
echo "Times:"
printf '  %s\n' "${times[@]}"
