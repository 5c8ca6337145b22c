#!/usr/bin/env bash
# Installs what is missing, builds, and runs the command-line host.
# With no arguments it renders onto the bundled sample image.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
cd "$here"
source scripts/deps.sh
plumet_install_deps
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$jobs" --target plumet plumet_filter >/dev/null
if [ $# -eq 0 ]; then
    mkdir -p out
    set -- --no-window resources/samples/sample.png out/sample-plumet.png
    echo "Rendering onto the sample image: $here/out/sample-plumet.png"
fi
exec build/hosts/plumet --plugin build/host/plumet.8bf "$@"
