#!/usr/bin/env bash
# Sets up, builds and runs the whole test suite.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$here/tools/setup.sh"
cd "${AMPORA_BUILD_DIR:-$here/build}"
ctest --output-on-failure --timeout 600 -j 2
