#!/bin/sh
# Times the final renderer and Blender's Cycles (CPU, direct light only) on
# the same letters, lights, camera, size and samples, in one run, for two
# scenes: the render benchmark's letters with three lights, and the view's
# 40 letters with five shadowing lights as the filter renders them.
#   bench/render/cycles_peer.sh [build dir configured with -DPLUMET_BENCH=ON]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../../build-bench}
out=$build/test-output
for b in bench_render bench_interaction; do
    [ -x "$build/bench/render/$b" ] || { echo "no $b in $build: build it first" >&2; exit 1; }
done
command -v blender >/dev/null || { echo "blender is not installed" >&2; exit 1; }
mkdir -p "$out"

# One pair: our benchmark (which also writes the scene for the peer), then
# Cycles on that scene.
pair() { # title, benchmark, filter, file prefix
    "$build/bench/render/$2" --benchmark_filter="$3" --benchmark_format=json > "$out/$4_final.json"
    ours=$(python3 -c 'import json,sys
b=json.load(open(sys.argv[1]))["benchmarks"][0]
print("%.3f" % (b["real_time"] / {"ms": 1e3, "us": 1e6}.get(b["time_unit"], 1)))' "$out/$4_final.json")
    cycles=$(blender -b --factory-startup -noaudio -P "$here/cycles_peer.py" -- \
        "$out/$4_letters.obj" "$out/$4_scene.txt" "$out/$4_cycles.png" \
        2>&1 | sed -n 's/^cycles_seconds //p')
    [ -n "$cycles" ] || { echo "Cycles did not render $1" >&2; exit 1; }
    echo "$1"
    echo "  final renderer: $ours s"
    echo "  Cycles (CPU, direct light): $cycles s"
    python3 -c 'import sys; o,c=float(sys.argv[1]),float(sys.argv[2]); print("  Cycles / ours: %.2f" % (c/o))' "$ours" "$cycles"
}

pair "letters, three lights, 4 samples" bench_render 'BM_FinalRender/2' bench_render
pair "40 letters of the view, five shadowing lights, 9 samples" bench_interaction \
    'FinalRenderWithFiveShadowingLights' bench_lights
