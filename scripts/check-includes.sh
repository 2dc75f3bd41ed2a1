#!/bin/bash
# Checks that folders include only what they may: check-includes.sh [root of a checkout]. A source or header
# belongs to the room with the longest name that its path begins with. Prints each wrong line, and fails if
# there is one. check-includes.sh --self-test shows on small trees that wrong lines are found.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

# The rooms, each tree from top to bottom: a room may include itself and the rows below it. Rooms in the same
# row may not include each other. docs/architecture.md has the same list. The name of a tree by itself means the
# files that lie in its root.
rooms='
    src
    src/channels
    src/camera/eth src/camera/ogc
    src/camera
    src/acquisition
    src/brdlib
    src/acquisition/buffers
    src/features
    src/tools/logging
    src/brdlib/binding
    src/templates/platform
    src/AIKException

    sim/brdlib5 sim/ethlib sim/orvo_genicam sim/dispatcher sim/applet sim/simulator
    sim/cameralib sim/pictures
    sim/call sim/json
    sim/seam
    sim

    aikctl
    aikctl/commands
    aikctl/grab
    aikctl/adapter aikctl/pictures aikctl/console
'

# The trees and other folders, and what they may include besides themselves. A tree means all of its rooms, and
# each of these may include what the row of the tree lists.
folders='
    include
    os
    src             include os
    sim             os
    aikctl          include os
    tests           include os src sim aikctl
    tests/system    include os sim tests
    tests/aikctl    include os sim tests aikctl
    bench           include os src sim
    examples        include
'

# Exceptions: including file, included file, reason.
exceptions='
'

check() {
    cd "$1"
    find . \( -path ./build -o -path ./.git \) -prune -o -type f \
        \( -name '*.h' -o -name '*.hpp' -o -name '*.c' -o -name '*.cpp' -o -name '*.rc' \) -print |
        sed 's|^\./||' | sort |
        awk -v rooms="$rooms" -v folders="$folders" -v exceptions="$exceptions" '
        function complain(text) { print text; wrong = 1 }

        # The longest name that is the path itself, one of its folders, or its stem.
        function longest(path, names,    name, best) {
            best = ""
            for (name in names)
                if (index(path, name) == 1 && substr(path, length(name) + 1, 1) ~ /^[\/.]?$/ &&
                    length(name) > length(best))
                    best = name
            return best
        }

        # A file in the root of a tree belongs to the tree; a folder there needs a room of its own.
        function roomOf(path,    room) {
            room = longest(path, level)
            return room !~ /\// && path ~ /\/.*\// ? "" : room
        }

        function mayInclude(from, to,    above, below, own, other) {
            own = longest(from, mayUse)
            other = longest(to, mayUse)
            if (own != other)
                return (own, other) in allowed || index(other, own "/") == 1
            if (!(own in level))   # no rooms there
                return 1
            above = roomOf(from)
            below = roomOf(to)
            return above == below || level[above] < level[below]
        }

        # The file that an include line names: by its path from src/, from the root or from include/.
        function resolve(name) {
            if (("src/" name) in files) return "src/" name
            if (name in files) return name
            if (("include/" name) in files) return "include/" name
            return ""
        }

        BEGIN {
            count = split(rooms, rows, "\n")
            for (row = 1; row <= count; ++row) {
                size = split(rows[row], names, " ")
                for (i = 1; i <= size; ++i)
                    level[names[i]] = row
            }
            count = split(folders, rows, "\n")
            for (row = 1; row <= count; ++row) {
                size = split(rows[row], names, " ")
                if (size > 0)
                    mayUse[names[1]] = 1
                for (i = 2; i <= size; ++i)
                    allowed[names[1], names[i]] = 1
            }
            count = split(exceptions, rows, "\n")
            for (row = 1; row <= count; ++row)
                if (split(rows[row], names, " ") > 2)
                    excepted[names[1], names[2]] = 1
        }

        { files[$0] = 1; order[++total] = $0 }

        END {
            for (n = 1; n <= total; ++n) {
                file = order[n]
                folder = longest(file, mayUse)
                if (folder == "" || (folder in level && roomOf(file) == "")) {
                    complain(file ": its folder has no row in scripts/check-includes.sh")
                    continue
                }
                line = 0
                while ((getline text < file) > 0) {
                    ++line
                    if (text !~ /^[ \t]*#[ \t]*include[ \t]*["<]/)
                        continue
                    quoted = text ~ /^[^"<]*"/
                    sub(/^[^"<]*["<]/, "", text)
                    sub(/[">].*$/, "", text)
                    target = resolve(text)
                    if (target == "") {
                        if (quoted)
                            complain(file ":" line ": \"" text "\" is not a path from src/, the root or include/")
                    } else if (!mayInclude(file, target) && !((file, target) in excepted)) {
                        complain(file ":" line ": may not include " target)
                    }
                }
                close(file)
            }
            if (total == 0)
                complain("no sources found")
            exit wrong
        }'
}

# expect <number of wrong lines> <file...>: checks a tree of these files, each given as "path=include include".
expect() {
    local wanted=$1 tree file include found
    shift
    tree=$(mktemp -d)
    for file in src/AIKException.h src/brdlib/DmaPort.h include/aik/aik.h os/Os.h sim/brdlib5/control.h "$@"; do
        mkdir -p "$tree/$(dirname "${file%%=*}")"
        : >"$tree/${file%%=*}"
        [[ $file == *=* ]] || continue
        for include in ${file#*=}; do
            echo "#include \"$include\"" >>"$tree/${file%%=*}"
        done
    done
    found=$(check "$tree" | wc -l) || true
    rm -rf "$tree"
    if ((found != wanted)); then
        echo "self-test: $found complaints instead of $wanted about $*" >&2
        return 1
    fi
}

selfTest() {
    expect 0 "src/OrvoCognexAdapter.cpp=brdlib/DmaPort.h os/Os.h aik/aik.h AIKException.h" \
        "src/brdlib/AppletProcess.cpp=brdlib/DmaPort.h acquisition/buffers/Buffer.h" \
        "src/acquisition/buffers/Buffer.h=AIKException.h" "tests/brdlib/DmaPort.cpp=brdlib/DmaPort.h"
    expect 1 "src/brdlib/binding/Functions.cpp=brdlib/DmaPort.h"
    expect 1 "src/acquisition/buffers/Buffer.cpp=brdlib/DmaPort.h"
    expect 2 "src/camera/eth/A.h=camera/ogc/B.h" "src/camera/ogc/B.h=camera/eth/A.h"
    expect 1 "src/brdlib/AppletProcess.cpp=sim/brdlib5/control.h"
    expect 3 "sim/ethlib/A.cpp=brdlib/DmaPort.h" "aikctl/B.cpp=AIKException.h" "os/C.cpp=aik/aik.h"
    expect 1 "tests/system/Session.cpp=brdlib/DmaPort.h os/Os.h sim/brdlib5/control.h"
    expect 3 "src/gadgets/A.h" "sim/gadgets/A.h" "elsewhere/B.h"
    expect 2 "sim/seam/A.h=sim/brdlib5/control.h" "aikctl/console/A.h=aikctl/grab/B.h" "aikctl/grab/B.h=aikctl/console/A.h" "examples/A.c=aik/aik.h"
    expect 1 "src/brdlib/AppletProcess.cpp=DmaPort.h"
}

if [[ ${1-} == --self-test ]]; then
    selfTest
else
    check "${1:-$repository}"
fi
