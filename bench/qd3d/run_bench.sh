#!/bin/sh
# Runs the interactive renderer and llvmpipe (when OSMesa was found at
# configure time) on the same 50,000 triangles, one after the other in one
# process. Real time is the frame time; CPU is the whole process's, over all
# threads. Pictures of both frames go to <build>/test-output.
# Usage: bench/qd3d/run_bench.sh [build directory, default build-bench]
set -e
build=${1:-build-bench}
here=$(cd "$(dirname "$0")/../.." && pwd)
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=Release -DPLUMET_BENCH=ON >/dev/null
cmake --build "$build" --target bench_qd3d_render -j2 >/dev/null
"$build/bench/qd3d/bench_qd3d_render" --benchmark_min_time=2 --benchmark_repetitions=5 \
    --benchmark_report_aggregates_only=true
echo "load average: $(cut -d' ' -f1-3 /proc/loadavg) on $(nproc) cores"
