#!/usr/bin/env bash
# Runs the ngspice oracle on many more random circuits than the test suite does, and on
# practice circuits of every shape from seeds 1 to CIRCUITS / 100.
#   tools/oracle.sh [CIRCUITS] [SEED]     (defaults: 5000 circuits, a seed from the clock)
# The seed is printed, so that a failing run can be repeated exactly.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build_dir="${AMPORA_BUILD_DIR:-$here/build}"
circuits="${1:-5000}"
seed="${2:-$(date +%s)}"
cmake --build "$build_dir" --target ampora_core_tests >/dev/null
echo "oracle: $circuits circuits from seed $seed"
LC_ALL=C.UTF-8 AMPORA_ORACLE_CIRCUITS="$circuits" AMPORA_ORACLE_SEED="$seed" \
    "$build_dir/tests/ampora_core_tests" --gtest_filter='NgspiceOracle.*'
echo "oracle: practice circuits of every shape from seeds 1 to $((circuits / 100))"
LC_ALL=C.UTF-8 AMPORA_PRACTICE_SEEDS="$((circuits / 100))" \
    "$build_dir/tests/ampora_core_tests" --gtest_filter='PracticeCircuit.*'
