#!/bin/bash
# Checks what the frame path costs without reading a clock: check.sh <linux | windows> <program...>. It counts the
# blocks that the program takes from the heap and, natively, its instructions, and compares them with limits.txt.
set -euo pipefail

limits=$(dirname "${BASH_SOURCE[0]}")/limits.txt
platform=$1
shift
margin=10   # percent: compilers and C libraries differ a little
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

if [[ $platform == linux ]]; then
    command -v valgrind >/dev/null || { echo "valgrind is missing; scripts/setup.sh installs it." >&2; exit 1; }
    # Bound before it starts, so that no look-up of a name counts.
    LD_BIND_NOW=1 valgrind --tool=callgrind --callgrind-out-file="$place/calls" "$@" \
        >"$place/allocations" 2>"$place/log" || { cat "$place/log" >&2; exit 1; }
    # With all that a guarded function calls: "  326,438  <path>/FramePathGuard.cpp:guard_fetch [<program>]".
    callgrind_annotate --inclusive=yes --threshold=100 --show-percs=no --tree=none --auto=no "$place/calls" |
        tr -d , | sed -n 's|^ *\([0-9]*\) .*FramePathGuard.cpp:guard_\([A-Za-z]*\).*|\2 \1|p' >"$place/instructions"
else
    "$@" | tr -d '\r' >"$place/allocations"
    : >"$place/instructions"
fi

awk -v platform="$platform" -v margin="$margin" -v limits="$limits" '
    FILENAME ~ /allocations$/ { steps[$1] = $2; allocations[$1] = $3; next }
    FILENAME ~ /instructions$/ { instructions[$1] = $2; next }
    /^#/ || NF == 0 { next }
    function judge(what, found, limit, percent) {
        printf "%-22s %-12s %8.2f, limit %d\n", $1, what, found, limit
        if (found > limit * (100 + percent) / 100) {
            printf "TOO MUCH: a step of %s takes %.2f %s, %d are recorded. Make it cheaper, or change %s.\n",
                $1, found, what, limit, limits
            wrong = 1
        }
    }
    {
        ++cases
        if (!($1 in allocations)) { print "The program has no case " $1; wrong = 1; next }
        judge("allocations", allocations[$1], platform == "linux" ? $2 : $3, 0)
        if (platform != "linux" || $4 == "-") next
        if (!($1 in instructions)) { print "No instructions were counted for " $1; wrong = 1; next }
        judge("instructions", instructions[$1] / steps[$1], $4, margin)
    }
    END { if (!cases) print "No limits in " limits; exit wrong || !cases }
' "$place/allocations" "$place/instructions" "$limits"
