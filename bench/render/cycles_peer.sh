#!/bin/sh
# Times the final renderer and Blender's Cycles (CPU, direct light only) on
# the same letters, lights, camera, size and samples, in one run.
#   bench/render/cycles_peer.sh [build dir configured with -DPLUMET_BENCH=ON]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../../build-bench}
bench=$build/bench/render/bench_render
out=$build/test-output
[ -x "$bench" ] || { echo "no $bench: build the target bench_render first" >&2; exit 1; }
command -v blender >/dev/null || { echo "blender is not installed" >&2; exit 1; }
mkdir -p "$out"

# ours: four samples a pixel; the run also writes the scene for the peer
"$bench" --benchmark_filter='BM_FinalRender/2' --benchmark_format=json > "$out/bench_render_final.json"
ours=$(python3 -c 'import json,sys; b=json.load(open(sys.argv[1]))["benchmarks"][0]; print("%.3f" % b["real_time"])' "$out/bench_render_final.json")

cycles=$(blender -b --factory-startup -noaudio -P "$here/cycles_peer.py" -- \
    "$out/bench_render_letters.obj" "$out/bench_render_scene.txt" "$out/bench_render_cycles.png" \
    2>&1 | sed -n 's/^cycles_seconds //p')
[ -n "$cycles" ] || { echo "Cycles did not render" >&2; exit 1; }

echo "final renderer: $ours s"
echo "Cycles (CPU, direct light): $cycles s"
python3 -c 'import sys; o,c=float(sys.argv[1]),float(sys.argv[2]); print("Cycles / ours: %.2f" % (c/o))' "$ours" "$cycles"
