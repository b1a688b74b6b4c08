#!/usr/bin/env bash
# Runs every fuzz target of the fuzz build for the given number of seconds (default 60),
# seeded from examples/ and the kept regression cases. The growing corpus stays in the
# build folder between runs; a finding is written to build-fuzz/findings/ and fails the run.
# Keep each finding in fuzz/regressions/<target>/ once it is fixed.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
fuzz_dir="${AMPORA_FUZZ_BUILD_DIR:-$here/build-fuzz}"
seconds="${1:-60}"
export ASAN_OPTIONS="${ASAN_OPTIONS:-halt_on_error=1:detect_leaks=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-halt_on_error=1:print_stacktrace=1}"

mkdir -p "$fuzz_dir/findings"
for fuzzer in "$fuzz_dir"/fuzz/*_fuzzer; do
    target="$(basename "$fuzzer" _fuzzer)"
    corpus="$fuzz_dir/corpus/$target"
    mkdir -p "$corpus"
    seeds=("$here/fuzz/regressions/$target")
    if [[ -d "$here/fuzz/seeds/$target" ]]; then
        seeds+=("$here/fuzz/seeds/$target")
    else
        seeds+=("$here/examples")
    fi
    options=()
    if [[ -f "$here/fuzz/$target.dict" ]]; then
        options+=(-dict="$here/fuzz/$target.dict")
    fi
    echo "-- $target: ${seconds} s"
    log="$fuzz_dir/findings/$target.log"
    if ! "$fuzzer" "$corpus" "${seeds[@]}" "${options[@]}" -max_total_time="$seconds" -max_len=8192 \
        -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$fuzz_dir/findings/$target-" >"$log" 2>&1; then
        tail -n 60 "$log" >&2
        echo "$target found a fault; the input is in $fuzz_dir/findings/" >&2
        exit 1
    fi
    grep -E '^(#[0-9]+ *INITED|stat::number_of_executed_units|stat::peak_rss_mb)' "$log" || true
done
