#!/usr/bin/env bash
# Installs what is missing, builds and runs every test.
#   ./test.sh             release build with assertions, all tests
#   ./test.sh --sanitize  the same under AddressSanitizer and UBSan
set -euo pipefail
cd "$(dirname "$0")"
source scripts/deps.sh
plumet_install_deps

build=build
flags=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
if [ "${1:-}" = "--sanitize" ]; then
    build=build-sanitize
    flags=(-DCMAKE_BUILD_TYPE=Debug -DPLUMET_SANITIZE=ON)
fi
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B "$build" "${flags[@]}" >/dev/null
cmake --build "$build" -j "$jobs"
cd "$build"
ctest --output-on-failure -j "$jobs"
