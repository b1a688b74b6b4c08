#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build and test DC Ampora, then
# configures and builds build/ (not with --install-only). Safe to run again: it installs and
# rebuilds only what is missing.
set -euo pipefail
install_only=0
if [[ "${1:-}" == "--install-only" ]]; then
    install_only=1
fi

here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build_dir="${AMPORA_BUILD_DIR:-$here/build}"

packages=(
    build-essential cmake ninja-build pkg-config
    qt6-base-dev qt6-base-dev-tools libgl-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    xvfb xauth fonts-liberation
    ngspice clang llvm libclang-rt-14-dev
    unrtf poppler-utils desktop-file-utils libxml2-utils
    qt6-svg-dev librsvg2-bin dpkg-dev shared-mime-info
    clang-format
    libboost-dev
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done

if ((${#missing[@]} > 0)); then
    echo "Installing: ${missing[*]}"
    sudo_cmd=()
    if [[ $(id -u) -ne 0 ]]; then
        sudo_cmd=(sudo)
    fi
    "${sudo_cmd[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends \
        "${missing[@]}"
fi

if ((install_only)); then
    exit 0
fi
if [[ ! -f "$build_dir/build.ninja" ]]; then
    cmake -S "$here" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
cmake --build "$build_dir"
