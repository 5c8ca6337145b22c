#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, only those that
# are missing. Sourced by run.sh and test.sh.
plumet_packages=(
    g++ cmake make pkg-config
    libgtest-dev libgmock-dev libbenchmark-dev
    qt6-base-dev qt6-base-dev-tools libgl-dev
    libfreetype-dev libfontconfig-dev fonts-dejavu-core fonts-urw-base35 fonts-liberation2
    libembree-dev libtiff-dev libjpeg62-turbo-dev libexiv2-dev libglu1-mesa-dev
    clang libfuzzer-14-dev
    gimp libgimp2.0-dev xvfb xauth xdotool x11-utils
)

plumet_install_deps() {
    local missing=()
    for p in "${plumet_packages[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}
