#!/usr/bin/env bash
# Builds the Debian package from a Release build of its own (build-release beside the sources,
# or $AMPORA_RELEASE_BUILD_DIR), without the tests and benchmarks, and prints the package's path.
# Further arguments go to cmake's configure step, for example -DAMPORA_WARNINGS_AS_ERRORS=OFF
# for a compiler newer than the one the code is tested with.
#   tools/package.sh [CMAKE_ARGS...]
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build_dir="${AMPORA_RELEASE_BUILD_DIR:-$here/build-release}"

cmake -S "$here" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DAMPORA_BUILD_TESTS=OFF -DAMPORA_BUILD_BENCHMARKS=OFF "$@"
cmake --build "$build_dir"
(cd "$build_dir" && cpack -G DEB >/dev/null)
find "$build_dir" -maxdepth 1 -name 'ampora_*.deb' -newer "$build_dir/CPackConfig.cmake"
