#!/usr/bin/env bash
# Sets up, builds and runs the whole test suite: one build under AddressSanitizer and
# UndefinedBehaviorSanitizer that runs every test, then each fuzz target for a bounded time.
# A second run rebuilds only what changed.
#
#   tools/test.sh           everything, as CI runs it
#   tools/test.sh --fast    the normal build (build/, as tools/run.sh makes it) and its quick
#                           tests only: a developer's check between changes (the reports drawn
#                           as PDF, the package, the ngspice oracle, the sanitizers and the
#                           fuzzers are left to the full run)
#
#   AMPORA_FUZZ_SECONDS   seconds per fuzz target (default 30; 0 skips fuzzing)
set -euo pipefail
fast=0
if [[ "${1:-}" == "--fast" ]]; then
    fast=1
elif [[ $# -gt 0 ]]; then
    echo "usage: tools/test.sh [--fast]" >&2
    exit 2
fi
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build_dir="${AMPORA_BUILD_DIR:-$here/build}"
sanitize_dir="${AMPORA_SANITIZE_BUILD_DIR:-$here/build-sanitize}"
fuzz_dir="${AMPORA_FUZZ_BUILD_DIR:-$here/build-fuzz}"
fuzz_seconds="${AMPORA_FUZZ_SECONDS:-30}"

# Runs ctest and adds its count to the summary printed at the end.
passed=0
run_ctest() {
    local log
    log="$(mktemp)"
    ctest "$@" 2>&1 | tee "$log"
    local status=${PIPESTATUS[0]}
    local total
    total="$(sed -n 's/.*tests passed, 0 tests failed out of \([0-9]*\).*/\1/p' "$log" | tail -n 1)"
    rm -f "$log"
    ((status == 0)) || exit "$status"
    passed=$((passed + ${total:-0}))
}

if ((fast)); then
    "$here/tools/setup.sh"
    run_ctest --test-dir "$build_dir" --output-on-failure --timeout 600 -j 2 \
        -E '^(install_and_package|ui_report_window_test|CliReportProgram\..*|NgspiceOracle\..*)$'
    echo "tests: ${passed} passed, 0 failed"
    exit 0
fi
"$here/tools/setup.sh" --install-only

# Every finding stops the run at once. LeakSanitizer works here (no ptrace restrictions in
# the Debian runner), so leaks count as findings too.
export ASAN_OPTIONS="halt_on_error=1:detect_leaks=1:abort_on_error=0"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"

# One build runs every test, under both sanitizers: the same code as the normal build, with
# every memory and undefined-behaviour fault a test reaches reported. Unoptimised, with line
# tables: it builds in half the time of -O1, the tests still take well under a minute, and the
# sanitizers' reports name the lines.
echo "== every test under AddressSanitizer and UndefinedBehaviorSanitizer"
if [[ ! -f "$sanitize_dir/build.ninja" ]]; then
    cmake -S "$here" -B "$sanitize_dir" -G Ninja -DCMAKE_BUILD_TYPE=Sanitize \
        -DCMAKE_CXX_FLAGS_SANITIZE="-O0 -g1" -DCMAKE_C_FLAGS_SANITIZE="-O0 -g1" \
        -DAMPORA_SANITIZE=ON
fi
cmake --build "$sanitize_dir" -j 2
run_ctest --test-dir "$sanitize_dir" --output-on-failure --timeout 900 -j 2

if ((fuzz_seconds > 0)); then
    echo "== fuzz targets, ${fuzz_seconds} s each"
    if [[ ! -f "$fuzz_dir/build.ninja" ]]; then
        CC=clang CXX=clang++ cmake -S "$here" -B "$fuzz_dir" -G Ninja \
            -DCMAKE_BUILD_TYPE=Sanitize -DCMAKE_CXX_FLAGS_SANITIZE="-O1 -g1" \
            -DCMAKE_C_FLAGS_SANITIZE="-O1 -g1" -DAMPORA_FUZZ=ON -DAMPORA_SANITIZE=ON \
            -DAMPORA_BUILD_UI=OFF -DAMPORA_BUILD_TESTS=OFF -DAMPORA_BUILD_BENCHMARKS=OFF
    fi
    # The fuzz targets and the libraries they link, nothing else.
    cmake --build "$fuzz_dir" -j 2 --target ampora_fuzzers
    "$here/tools/fuzz.sh" "$fuzz_seconds"
fi

# The runs above stop at the first failure, so reaching this line means none failed.
echo "tests: ${passed} passed, 0 failed"
