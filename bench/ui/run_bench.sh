#!/usr/bin/env bash
# Runs the window benchmark on a display of a usual desktop's size, so that
# the preview of a large image is reduced as it would be for a person.
#   bench/ui/run_bench.sh BUILD_DIR
set -euo pipefail
build=${1:-build-bench}
exec xvfb-run -a -s "-screen 0 1920x1080x24" "$build/bench/ui/bench_window" \
    --benchmark_counters_tabular=true
