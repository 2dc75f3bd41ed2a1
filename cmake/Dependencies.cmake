# Boost, zlib, orvo_spng, GoogleTest, and the header-only libraries: orvo_cli11, orvo_json, orvo_spdlog, orvo_stb.
if(WIN32)
    # Debian has no Boost for mingw; scripts/setup.sh builds it.
    list(APPEND CMAKE_FIND_ROOT_PATH "${ORVO_CACHE}/boost-mingw")
    list(APPEND CMAKE_PREFIX_PATH "${ORVO_CACHE}/boost-mingw")
endif()
foreach(component filesystem system)
    find_package(boost_${component} 1.81.0 EXACT CONFIG REQUIRED)
endforeach()
find_package(Threads REQUIRED)
set(ZLIB_USE_STATIC_LIBS ${WIN32})   # the product imports DLLs of the system alone
find_package(ZLIB REQUIRED)

# The system's include folder would shadow mingw's own headers, so for Windows a folder with links to
# these few libraries stands in its place.
set(headerFolder /usr/include)
if(WIN32)
    set(headerFolder "${PROJECT_BINARY_DIR}/headers")
    file(MAKE_DIRECTORY "${headerFolder}")
    foreach(library CLI fmt nlohmann spdlog stb)
        file(CREATE_LINK "/usr/include/${library}" "${headerFolder}/${library}" SYMBOLIC)
    endforeach()
endif()

# orvo_header_only(<target> <header>): fails the configuration where the header is missing.
function(orvo_header_only target header)
    if(NOT EXISTS "${headerFolder}/${header}")
        message(FATAL_ERROR "${headerFolder}/${header} is missing; scripts/setup.sh installs it.")
    endif()
    add_library(${target} INTERFACE)
    if(WIN32)
        target_include_directories(${target} SYSTEM INTERFACE "${headerFolder}")
    endif()
endfunction()
orvo_header_only(orvo_cli11 CLI/CLI.hpp)
orvo_header_only(orvo_json nlohmann/json.hpp)
orvo_header_only(orvo_spdlog spdlog/spdlog.h)
target_compile_definitions(orvo_spdlog INTERFACE SPDLOG_FMT_EXTERNAL FMT_HEADER_ONLY)
target_link_libraries(orvo_spdlog INTERFACE Threads::Threads)
if(ORVO_SANITIZERS)
    # The thread sanitizer takes the size of a loaded library's thread-local memory from the wrong place, and now
    # and then ends the process.
    target_compile_definitions(orvo_spdlog INTERFACE SPDLOG_NO_TLS)
endif()

# stb's headers hold their own implementations: compiled here once, so that nobody else defines them.
orvo_header_only(orvo_stb_headers stb/stb_image.h)
add_library(orvo_stb STATIC EXCLUDE_FROM_ALL)
foreach(header stb_image stb_image_resize stb_image_write)
    string(TOUPPER ${header} name)
    file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/stb/${header}.c"
        CONTENT "#define ${name}_IMPLEMENTATION\n#include <stb/${header}.h>\n")
    target_sources(orvo_stb PRIVATE "${PROJECT_BINARY_DIR}/stb/${header}.c")
endforeach()
target_link_libraries(orvo_stb PUBLIC orvo_stb_headers)
if(ORVO_SANITIZERS)
    # stb shifts into sign bits; that is not ours to report.
    target_compile_options(orvo_stb PRIVATE -fno-sanitize=undefined)
endif()
set_target_properties(orvo_stb PROPERTIES POSITION_INDEPENDENT_CODE ON C_VISIBILITY_PRESET hidden)

add_library(orvo_spng STATIC EXCLUDE_FROM_ALL "${ORVO_CACHE}/spng/spng.c")
target_include_directories(orvo_spng SYSTEM PUBLIC "${ORVO_CACHE}/spng")
target_compile_definitions(orvo_spng PUBLIC SPNG_STATIC)
target_link_libraries(orvo_spng PUBLIC ZLIB::ZLIB)
set_target_properties(orvo_spng PROPERTIES UNITY_BUILD OFF)

# From source in every preset: mingw has none, and a sanitizer wants to see all of the program.
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
foreach(library gtest gmock gmock_main)
    target_compile_options(${library} PRIVATE -O0 -g1)
endforeach()
include(GoogleTest)
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
