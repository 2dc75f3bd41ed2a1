# Functions that the scripts share. To be sourced by bash.

repository=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# The cache folder. It survives the deletion of build folders. cmake/CacheFolder.cmake has the same default.
cache=$(realpath --canonicalize-missing "${ORVO_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvo-cognex-adapter}")

# run <what> <log file> <command...>: runs the command with its output in the file, prints one line with the
# result and the time, and sets `status`. Do not call it in a condition: bash would then ignore `set -e` inside
# the command.
run() {
    local what=$1 log=$2 begin=$SECONDS
    shift 2
    mkdir -p "$(dirname "$log")"
    set +e
    (set -e && "$@") >"$log" 2>&1 </dev/null 8>&-
    status=$?
    set -e
    if ((status == 0)); then
        echo "$what: $((SECONDS - begin)) s"
    else
        echo "$what: failed after $((SECONDS - begin)) s, see $log" >&2
    fi
}

# build <preset> [target...]: configures and builds a preset.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" -D ORVO_CACHE="$cache"
    cmake --build --preset "$preset" ${1+--target "$@"}
}

# useWine [prefix]: selects the project's own Wine prefix: silent, without display, .NET or HTML engine.
useWine() {
    export WINEPREFIX=${1:-$cache/wine} WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
    unset DISPLAY WAYLAND_DISPLAY
    export LC_ALL=C.UTF-8   # what Wine takes the code page of file names from
}

# Starts the services of the prefix unless they run. If the first program started them instead, they would keep
# its output open, and whoever reads that output would wait for them.
startWine() {
    wineserver --kill=0 || wineboot </dev/null >/dev/null 2>&1 8>&- || true
}

# Keeps the server of the prefix running while this script runs, because starting it takes longer than most
# tests. The last script to leave the prefix ends it.
enterWine() {
    useWine
    exec 8>"$cache/wine.lock"
    flock --shared 8
    trap leaveWine EXIT
    wineserver --persistent 8>&- || true   # fails if a server runs already, which is fine
    wineboot </dev/null >/dev/null 2>&1 8>&-
}

leaveWine() {
    if flock --nonblock 8; then
        wineserver --kill 8>&- || true
        flock --unlock 8
    fi
}
