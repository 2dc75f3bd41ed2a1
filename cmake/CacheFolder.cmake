# ORVO_CACHE: what scripts/setup.sh has made for this machine (Boost for Windows, the Wine prefix). It
# outlives the build folders, and the scripts use the same default.
if(DEFINED ENV{ORVO_CACHE})
    set(default "$ENV{ORVO_CACHE}")
elseif(DEFINED ENV{XDG_CACHE_HOME})
    set(default "$ENV{XDG_CACHE_HOME}/orvo-cognex-adapter")
else()
    set(default "$ENV{HOME}/.cache/orvo-cognex-adapter")
endif()
set(ORVO_CACHE "${default}" CACHE PATH "The machine's cache folder, filled by scripts/setup.sh")
unset(default)
