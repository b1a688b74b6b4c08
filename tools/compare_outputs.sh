#!/usr/bin/env bash
# Runs `ampora-cli solve` of two builds over the same circuits and reports every output that
# differs, to the byte: the way to check that a change to the analysis leaves its results
# alone. The circuits are the examples, the fuzzers' seeds and regressions, and those
# tools/compare_circuits.py writes (random lattices, ladders, scribbles, damaged files).
#
# usage: tools/compare_outputs.sh OLD_CLI NEW_CLI [WORK_DIR]
# Exit status 0 when every output (stdout, stderr and exit status, four modes) agrees.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
old="$(realpath "$1")"
new="$(realpath "$2")"
work="${3:-$(mktemp -d)}"
mkdir -p "$work/circuits"

python3 "$here/tools/compare_circuits.py" "$work/circuits" "$here"/examples/*.amq \
    "$here"/fuzz/regressions/amq_analysis/*.amq
circuits=("$here"/examples/*.amq "$here"/fuzz/regressions/amq_analysis/*.amq
    "$here"/fuzz/seeds/*/* "$work"/circuits/*.amq)

modes=("" "--autoname" "--autoname=3 --sigfigs 6" "--autoname=2 --sigfigs 2 --text")
run() { # binary, mode, file, output
    # shellcheck disable=SC2086 # the mode is a list of options
    "$1" solve $2 "$3" >"$4" 2>&1 && echo "exit 0" >>"$4" || echo "exit $?" >>"$4"
}

differ=0
compared=0
for file in "${circuits[@]}"; do
    for mode in "${modes[@]}"; do
        run "$old" "$mode" "$file" "$work/old.out"
        run "$new" "$mode" "$file" "$work/new.out"
        compared=$((compared + 1))
        if ! cmp -s "$work/old.out" "$work/new.out"; then
            differ=$((differ + 1))
            echo "differs: solve $mode $file"
            diff "$work/old.out" "$work/new.out" | head -n 10
        fi
    done
done
echo "${#circuits[@]} circuits, $compared runs, $differ differ"
[[ $differ -eq 0 ]]
