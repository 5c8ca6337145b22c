#!/usr/bin/env bash
# Builds the fuzz targets of the file parsers with clang's libFuzzer,
# AddressSanitizer and UBSan (in build-fuzz/), and runs each over a working
# copy of its seed corpus in tests/fuzz/corpus/.
#   scripts/fuzz.sh [RUNS]    inputs per target, default 1000000
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
plumet_install_deps
runs=${1:-1000000}
jobs=$(nproc 2>/dev/null || echo 2)
CC=clang CXX=clang++ cmake -S . -B build-fuzz -DPLUMET_FUZZ=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    >/dev/null
cmake --build build-fuzz -j "$jobs"
for target in preferences custom_paths; do
    work=build-fuzz/corpus-$target
    mkdir -p "$work"
    cp -n tests/fuzz/corpus/$target/* "$work"/
    echo "== fuzz_$target: $runs inputs"
    build-fuzz/tests/fuzz/fuzz_$target -runs="$runs" -max_len=8192 -timeout=10 \
        -rss_limit_mb=2048 -print_final_stats=1 "$work"
done
