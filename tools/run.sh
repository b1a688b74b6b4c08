#!/usr/bin/env bash
# Sets up, builds and starts DC Ampora.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$here/tools/setup.sh"
exec "${AMPORA_BUILD_DIR:-$here/build}/src/ui/ampora" "$@"
