# What every target is compiled and linked with, and orvo_warnings for our own.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(orvo_warnings INTERFACE)
target_compile_options(orvo_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wthread-safety>)

# Two builds of one commit in two folders give the same bytes: no path of the machine reaches a file. GCC
# applies the last map that fits, so the build folder, inside the source folder, comes after it.
add_compile_options(
    "-ffile-prefix-map=${ORVO_CACHE}=cache"
    "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=."
    "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build")

set(ORVO_SANITIZERS "" CACHE STRING "Sanitizers, as -fsanitize takes them")
if(ORVO_SANITIZERS)
    # Readable reports, and programs that are fast enough and quickly built.
    set(CMAKE_C_FLAGS_RELWITHDEBINFO "-O1 -gline-tables-only -DNDEBUG")
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "${CMAKE_C_FLAGS_RELWITHDEBINFO}")
    # Both sides of a closed library's interface declare its records on their own, as they must: pointers to the
    # two are different types to `function`, and one to the binary interface.
    add_compile_options(
        -fsanitize=${ORVO_SANITIZERS} -fno-sanitize=function -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ORVO_SANITIZERS})
endif()

# All libraries and programs land side by side, as in an installation.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/stage/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/stage/bin")
set(CMAKE_SHARED_LIBRARY_PREFIX "")
set(CMAKE_SHARED_MODULE_PREFIX "")

if(WIN32)
    # -static takes in the compiler's run-time libraries, so that only DLLs of the system are imported.
    add_link_options(-static -Wl,--dynamicbase,--high-entropy-va,--nxcompat -Wl,--no-insert-timestamp)
    set(CMAKE_CROSSCOMPILING_EMULATOR
        env "ORVO_CACHE=${ORVO_CACHE}" "${PROJECT_SOURCE_DIR}/scripts/wine.sh")
else()
    set(CMAKE_BUILD_RPATH "$ORIGIN")
    set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
endif()
