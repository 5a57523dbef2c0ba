#!/usr/bin/env bash
# Builds the benchmarks in Release (build-bench/) and runs them. Each figure is
# printed with its ratio to a baseline measured in the same run.
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
build="$src/build-bench"
"$src/tools/setup.sh" "$build" -DCMAKE_BUILD_TYPE=Release -DAS_BUILD_TESTS=OFF -DAS_BUILD_BENCH=ON
export QT_QPA_PLATFORM=offscreen
"$build/bench/alarmscreen_bench" "$@"
"$build/bench/alarmscreen_bench_table"
"$build/bench/alarmscreen_bench_completions"
"$build/bench/alarmscreen_bench_colors"
"$build/bench/alarmscreen_bench_logflood"
"$build/bench/alarmscreen_bench_bursts" "$@"
"$build/bench/alarmscreen_bench_patterneditors"
"$build/bench/alarmscreen_bench_structured"
