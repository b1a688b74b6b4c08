#!/usr/bin/env bash
# Fails when a C++ file of the repository is not laid out as .clang-format says; the list of
# files comes from git where the sources are a checkout, else from the folders that hold code.
set -euo pipefail
cd "$1"
if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    mapfile -t files < <(git ls-files -- '*.cpp' '*.h')
else
    mapfile -t files < <(find src tests bench fuzz -name '*.cpp' -o -name '*.h')
fi
if ! clang-format --dry-run --Werror "${files[@]}"; then
    echo "Some files are not formatted: run clang-format -i on them." >&2
    exit 1
fi
echo "${#files[@]} files formatted as .clang-format says"
