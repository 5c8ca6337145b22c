#!/usr/bin/env bash
# Installs what is missing, builds, and runs the command-line host.
# With no arguments it renders onto the bundled sample image.
#   ./run.sh --install-gimp   installs the GIMP plug-in for this user instead
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
cd "$here"
source scripts/deps.sh
plumet_install_deps
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
if [ "${1:-}" = "--install-gimp" ]; then
    cmake --build build -j "$jobs" --target plumet_gimp plumet_filter >/dev/null
    # GIMP 2.10 takes a plug-in from a folder of the same name; the filter
    # module and the Type 1 module lie beside it.
    gimp_dir="${GIMP2_DIRECTORY:-${XDG_CONFIG_HOME:-$HOME/.config}/GIMP/2.10}"
    dest="$gimp_dir/plug-ins/plumet-gimp"
    mkdir -p "$dest"
    install -m 755 build/hosts/gimp/plumet-gimp "$dest/plumet-gimp"
    install -m 644 build/host/plumet.8bf build/host/plumet_type1.so "$dest/"
    echo "Installed the GIMP plug-in in $dest"
    echo "Start GIMP and open an RGB image: Filters > Lumerra 3D > FlyWORD Plumet..."
    exit 0
fi
cmake --build build -j "$jobs" --target plumet plumet_filter >/dev/null
if [ $# -eq 0 ]; then
    mkdir -p out
    set -- --no-window resources/samples/sample.png out/sample-plumet.png
    echo "Rendering onto the sample image: $here/out/sample-plumet.png"
fi
exec build/hosts/plumet --plugin build/host/plumet.8bf "$@"
