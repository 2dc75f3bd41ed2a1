#!/bin/bash
# Runs clang-tidy, two at a time: check-tidy.sh <build folder with unity sources> <build folder without>. Nearly
# all checks walk the whole of what a source includes, so they read the unity sources, where sixteen sources share
# one walk. The analyzer and the checks that look at no included file read each source of the product by itself.
# The cache folder remembers what was clean, by content.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

alone='clang-analyzer-*,-clang-analyzer-optin.performance.Padding,misc-unused-using-decls,misc-unused-alias-decls'
export clean=$cache/tidy
mkdir -p "$clean"

# What a build folder compiles of ours: <object> <source>, where the source's path below the root or below the
# build folder begins with one of the folders.
compiled() {
    awk -F'"' '$2 == "command" { object = $0; sub(/^.* -o /, "", object); sub(/ .*/, "", object) }
               $2 == "file" { print object, $4 }' compile_commands.json | grep -E "^[^ ]+ $1/($2)/"
}

# The files that each object depends on, without the system's headers: <object> <file>.
dependencies() {
    ninja -t deps | awk '/^[^ ]/ { object = $1; sub(/:$/, "", object) }
                         /^    / && $1 !~ /^\/usr\// { sub(/^ */, ""); print object, $0 }'
}

examine() {
    local checks=$1 source=$2 key=$3 said
    if said=$(clang-tidy-16 -p . --quiet --checks="$checks" "$source" 2>/dev/null); then
        touch "$clean/$key"
    else
        echo "$said"
        return 1
    fi
}
export -f examine

# check <build folder> <checks> <root of the sources> <folders>
check() {
    local checks=$2 object file source key files
    cd "$1"
    local -A madeFrom=()
    while read -r object file; do
        madeFrom[$object]+="$(realpath "$file")"$'\n'
    done < <(dependencies)
    compiled "$3" "$4" | while read -r object source; do
        mapfile -t files <<<"${madeFrom[$object]-}$source"
        key=$(
            { echo "$checks $compilers ${source#"$repository"}"
              sed "s|$repository||g" "$repository/.clang-tidy" "$repository/tests/.clang-tidy" "${files[@]}"
            } | sha256sum | cut -d' ' -f1)
        [[ -e $clean/$key ]] || printf '%s\0' "$checks" "$source" "$key"
    done | xargs -0 -r -n 3 -P 2 bash -c 'examine "$@"' examine
}

compilers=$(clang-tidy-16 --version | sha256sum)
status=0
(check "$1" '-clang-analyzer-*,-bugprone-suspicious-include' "$PWD/$1" 'os|src|sim|aikctl|bench|tests|examples') || status=1
(check "$2" "-*,$alone" "$repository" 'os|src|sim|aikctl') || status=1
exit $status
