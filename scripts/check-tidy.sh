#!/bin/bash
# Runs clang-tidy on the sources that a build folder compiles, two at a time: check-tidy.sh <build folder>.
# Skips a source that was clean if neither it nor its headers have changed since.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
cd "$1"
mkdir -p tidy

# Our own sources: <object> <source>.
compiled() {
    awk -F'"' '$2 == "command" { object = $0; sub(/^.* -o /, "", object); sub(/ .*/, "", object) }
               $2 == "file" { print object, $4 }' compile_commands.json |
        grep -E "^[^ ]+ $repository/(os|src|sim|aikctl|tests|bench)/"
}

# The files that each object depends on, without the system's headers: <object> <file>.
dependencies() {
    ninja -t deps | awk '/^[^ ]/ { object = $1; sub(/:$/, "", object) }
                         /^    / && $1 !~ /^\/usr\// { sub(/^ */, ""); print object, $0 }'
}

examine() {
    local source=$1 stamp=$2 said
    if said=$(clang-tidy-16 -p . --quiet "$source" 2>/dev/null); then
        touch "$stamp"
    else
        echo "$said"
        return 1
    fi
}
export -f examine

declare -A madeFrom
while read -r object file; do
    madeFrom[$object]+="$file"$'\n'
done < <(dependencies)

compiled | while read -r object source; do
    stamp=tidy/${object//\//.}
    mapfile -t files <<<"${madeFrom[$object]-}$source"
    if [[ -n $(find "$repository/.clang-tidy" "$repository/tests/.clang-tidy" "${files[@]}" -newer "$stamp" -print -quit 2>&1) ]]; then
        printf '%s\0%s\0' "$source" "$stamp"
    fi
done | xargs -0 -r -n 2 -P 2 bash -c 'examine "$@"' examine
