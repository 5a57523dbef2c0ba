#!/usr/bin/env bash
# Builds the libFuzzer targets (fuzz/) and runs each for the given time,
# printing its executions and findings.
#
#   tools/run-fuzz.sh [seconds per target, default 60] [target...]
#
# The fuzz build needs clang; it lives in build-fuzz/ and is configured as
#   CC=clang CXX=clang++ cmake -S . -B build-fuzz -DAS_BUILD_FUZZ=ON \
#     -DAS_BUILD_TESTS=OFF -DAS_BUILD_BENCH=OFF -DAS_WARNINGS_AS_ERRORS=OFF \
#     -DCMAKE_BUILD_TYPE=RelWithDebInfo "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -gline-tables-only"
# (warnings are gated by the gcc build; clang's own ones should not stop fuzzing).
# Each target starts from its seeds in fuzz/corpus/<target>/ plus what earlier
# runs found (build-fuzz/corpus/<target>/). A crash, a sanitizer report or a
# wrong answer of a differential target is saved in build-fuzz/findings/<target>/;
# replay one with: build-fuzz/fuzz/<target> <file>.
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
build="${AS_FUZZ_BUILD_DIR:-$src/build-fuzz}"
seconds="${1:-60}"
shift || true

if [[ ! -f "$build/CMakeCache.txt" ]]; then
  CC=clang CXX=clang++ cmake -S "$src" -B "$build" -DAS_BUILD_FUZZ=ON -DAS_BUILD_TESTS=OFF \
    -DAS_BUILD_BENCH=OFF -DAS_WARNINGS_AS_ERRORS=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -gline-tables-only" >/dev/null
fi

targets=("$@")
if ((${#targets[@]} == 0)); then
  for f in "$src"/fuzz/fuzz_*.cpp; do
    targets+=("$(basename "$f" .cpp)")
  done
fi
cmake --build "$build" -j2 --target "${targets[@]}"

export QT_QPA_PLATFORM=offscreen
# No leak detection, neither per input nor at exit (see below).
# Last, so that it wins over options the caller set.
export ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0"
# One input may take this long (seconds of wall time) before it counts as a
# hang; on a machine busy with other work give it more (AS_FUZZ_TIMEOUT).
timeout="${AS_FUZZ_TIMEOUT:-10}"
# Crashes, sanitizer reports, wrong answers, hangs and memory blow-ups; the
# slow inputs libFuzzer also writes there are no findings.
count_findings() {
  find "$1" -type f \( -name 'crash-*' -o -name 'timeout-*' -o -name 'oom-*' -o -name 'leak-*' \) | wc -l
}
total_findings=0
summary=()
for t in "${targets[@]}"; do
  corpus="$build/corpus/$t"
  findings="$build/findings/$t"
  mkdir -p "$corpus" "$findings"
  log="$build/findings/$t.log"
  before=$(count_findings "$findings")
  # Stops at the first finding, like a crash would; the time is the limit.
  # No leak detection here: the distribution's Qt allocates a few things once
  # and keeps them, and without frame pointers in Qt their stacks cannot be
  # told from ours. Leaks are checked by the sanitize test run instead.
  "$build/fuzz/$t" -max_total_time="$seconds" -timeout="$timeout" -print_final_stats=1 -detect_leaks=0 \
    -artifact_prefix="$findings/" "$corpus" "$src/fuzz/corpus/$t" >"$log" 2>&1 || true
  execs=$(grep -m1 -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo "?")
  units=$(find "$corpus" -type f | wc -l)
  after=$(count_findings "$findings")
  new=$((after - before))
  total_findings=$((total_findings + new))
  line=$(printf '%-26s %6ss %12s execs %6s corpus %3s new findings' "$t" "$seconds" "$execs" "$units" "$new")
  summary+=("$line")
  echo "$line"
  if ((new > 0)); then
    grep -m1 -E 'WRONG ANSWER|ERROR: AddressSanitizer|runtime error|ERROR: libFuzzer|ERROR: LeakSanitizer' "$log" | cut -c1-300 || true
    ls -t "$findings" | grep -v '^slow-unit' | head -n "$new" | sed "s|^|    $findings/|"
  fi
done

echo
echo "Fuzzing summary ($seconds s per target):"
printf '%s\n' "${summary[@]}"
echo "findings: $total_findings"
((total_findings == 0))
