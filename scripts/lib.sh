# What the scripts share; sourced, by bash.

repository=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Outlives the build folders; cmake/CacheFolder.cmake has the same default.
cache=${ORVO_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvo-cognex-adapter}

# useWine [prefix]: the project's own Wine prefix, silent, without display, .NET and HTML engine.
useWine() {
    export WINEPREFIX=${1:-$cache/wine} WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
    unset DISPLAY WAYLAND_DISPLAY
}
