#!/usr/bin/env bash
# check and solve must start without Qt: ampora-cli may load the C++ runtime and the C library
# (and the sanitizers' runtimes in such a build), nothing else, directly or through another
# library, and must not hold Qt code of its own. The drawing program of `report` is checked the
# same way to show that the check tells a Qt program apart.
#   cli_libraries_test.sh path/to/ampora-cli [path/to/ampora-cli-report]
set -euo pipefail

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

# The libraries a program loads, by file name, one per line: what it names itself (an empty
# list when it is linked statically) and what ldd resolves through them.
loaded_libraries() {
    {
        readelf -d "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\].*/\1/p'
        ldd "$1" 2>/dev/null | awk '$1 ~ /\.so/ { sub(".*/", "", $1); print $1 }'
    } | LC_ALL=C sort -u
}

# Prints what disqualifies a program; nothing when it is lean.
not_lean() {
    loaded_libraries "$1" |
        grep -Ev '^(linux-vdso|ld-linux[^ ]*|libc|libm|libstdc\+\+|libgcc_s|libasan|libubsan)\.so' |
        sed 's/^/loads /' || true
    if nm -C "$1" 2>/dev/null | grep -Eq ' (QString|QCoreApplication|QGuiApplication)::'; then
        echo "holds Qt code"
    fi
}

cli="$1"
[[ -x "$cli" ]] || fail "$cli is not a program"
problems="$(not_lean "$cli")"
[[ -z "$problems" ]] || fail "ampora-cli must load no more than the C and C++ runtimes, but it:
$problems"
echo "ampora-cli loads: $(loaded_libraries "$cli" | tr '\n' ' ')"

if [[ $# -ge 2 ]]; then
    problems="$(not_lean "$2")"
    grep -q 'loads libQt6Core' <<<"$problems" ||
        fail "the check does not see Qt in $2, which draws with it: '$problems'"
fi
echo "ok"
