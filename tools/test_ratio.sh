#!/usr/bin/env bash
# Non-blank lines of C++ under tests/ against those under src/, the measure the project keeps
# its test suite lean by (aim: about a third, at most 0.40).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
count() { git ls-files -- "$1" | grep -E '\.(cpp|h)$' | xargs -r cat | grep -c -v '^[[:space:]]*$'; }
tests=$(count tests)
code=$(count src)
awk -v t="$tests" -v c="$code" 'BEGIN { printf "tests %d, code %d, ratio %.2f\n", t, c, t / c }'
