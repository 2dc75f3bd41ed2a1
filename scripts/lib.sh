# What the scripts share; sourced, by bash.

repository=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Outlives the build folders; cmake/CacheFolder.cmake has the same default.
cache=${ORVO_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvo-cognex-adapter}

# The project's own Wine prefix, silent, without display, .NET and HTML engine.
useWine() {
    export WINEPREFIX=$cache/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= WINEARCH=win64
    unset DISPLAY WAYLAND_DISPLAY
}
