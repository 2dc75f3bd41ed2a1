# What the scripts share; sourced, by bash.

repository=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Outlives the build folders; cmake/CacheFolder.cmake has the same default.
cache=$(realpath --canonicalize-missing "${ORVO_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvo-cognex-adapter}")

# run <what> <log file> <command...>: runs it with its output in the file, says in a line how it went and
# how long it took, and leaves the result in `status`. Never in a condition: there bash would ignore
# `set -e` in all that the command runs.
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
        echo "$what: failed after $((SECONDS - begin)) s; what it said is in $log" >&2
    fi
}

# build <preset> [target...]: configures and builds it.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" -D ORVO_CACHE="$cache"
    cmake --build --preset "$preset" ${1+--target "$@"}
}

# useWine [prefix]: the project's own Wine prefix, silent, without display, .NET and HTML engine.
useWine() {
    export WINEPREFIX=${1:-$cache/wine} WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
    unset DISPLAY WAYLAND_DISPLAY
}

# Starts the prefix's own services unless they run. They would keep open the output of the program that
# they start with, and whoever reads it would wait for them.
startWine() {
    wineserver --kill=0 || wineboot </dev/null >/dev/null 2>&1 8>&- || true
}

# Keeps the prefix's server up while this script runs: starting it takes longer than most tests. The last
# script to leave the prefix ends it.
enterWine() {
    useWine
    exec 8>"$cache/wine.lock"
    flock --shared 8
    trap leaveWine EXIT
    wineserver --persistent 8>&- || true   # refuses where one runs already, and that one will do
    wineboot </dev/null >/dev/null 2>&1 8>&-
}

leaveWine() {
    if flock --nonblock 8; then
        wineserver --kill 8>&- || true
        flock --unlock 8
    fi
}
