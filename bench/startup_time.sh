#!/bin/bash
# Time from launching the program to its first painted main window, under Xvfb.
# Usage: bench/startup_time.sh [path/to/ampora] [runs]   (default build/src/ui/ampora, 9 runs)
# Prints each run and the median in milliseconds.
set -euo pipefail
program=${1:-build/src/ui/ampora}
runs=${2:-9}
settings=$(mktemp -d)
trap 'rm -rf "$settings"' EXIT

measure() {
    local times=()
    for _ in $(seq "$runs"); do
        local start end
        start=$(date +%s%3N)
        end=$(XDG_CONFIG_HOME="$settings" AMPORA_QUIT_AFTER_FIRST_PAINT=1 "$program" 2>/dev/null |
            sed -n 's/^first-paint-ms //p')
        times+=($((end - start)))
    done
    echo "runs (ms): ${times[*]}"
    printf '%s\n' "${times[@]}" | sort -n | awk '{a[NR]=$1} END {print "median (ms): " a[int((NR+1)/2)]}'
}

if [ -n "${AMPORA_UNDER_XVFB:-}" ]; then
    measure
else
    AMPORA_UNDER_XVFB=1 xvfb-run -a -s "-screen 0 1280x1024x24" "$0" "$program" "$runs"
fi
