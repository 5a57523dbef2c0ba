#!/usr/bin/env bash
# Builds the benchmarks in Release (build-bench/) and runs them. Each figure is
# printed with its ratio to a baseline measured in the same run.
# With --soak it runs only the flood soak instead (a minute of updates on a
# table of 100 000 alarms; further arguments go to the soak).
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
build="$src/build-bench"
"$src/tools/setup.sh" "$build" -DCMAKE_BUILD_TYPE=Release -DAS_BUILD_TESTS=OFF -DAS_BUILD_BENCH=ON
export QT_QPA_PLATFORM=offscreen
if [[ "${1:-}" == "--soak" ]]; then
  shift
  exec "$build/bench/alarmscreen_bench_soak" "$@"
fi
"$build/bench/alarmscreen_bench" "$@"
"$build/bench/alarmscreen_bench_table"
"$build/bench/alarmscreen_bench_completions"
"$build/bench/alarmscreen_bench_colors"
"$build/bench/alarmscreen_bench_logflood"
"$build/bench/alarmscreen_bench_bursts" "$@"
"$build/bench/alarmscreen_bench_patterneditors"
"$build/bench/alarmscreen_bench_structured"
