# orvo_split_debug(<target>): strips the Windows DLL or program and puts its symbols into a file beside it,
# `<name>.debug`, which debuggers find by the link that stays behind. Nothing to do natively.
function(orvo_split_debug target)
    if(NOT WIN32)
        return()
    endif()
    add_custom_command(TARGET ${target} POST_BUILD VERBATIM
        WORKING_DIRECTORY "$<TARGET_FILE_DIR:${target}>"
        COMMAND ${CMAKE_OBJCOPY} --only-keep-debug
            $<TARGET_FILE_NAME:${target}> $<TARGET_FILE_NAME:${target}>.debug
        COMMAND ${CMAKE_STRIP} --strip-all $<TARGET_FILE_NAME:${target}>
        COMMAND ${CMAKE_OBJCOPY} --add-gnu-debuglink=$<TARGET_FILE_NAME:${target}>.debug
            $<TARGET_FILE_NAME:${target}>)
endfunction()

find_program(CMAKE_DLLTOOL NAMES x86_64-w64-mingw32-dlltool)

# orvo_import_library(<target> <def file>): an imported library of what the .def lists. An export that
# stands there as `name @ordinal NONAME` is imported by its ordinal, and its name stays out of the program.
function(orvo_import_library target definition)
    cmake_path(ABSOLUTE_PATH definition)
    cmake_path(GET definition STEM name)
    set(library "${CMAKE_CURRENT_BINARY_DIR}/${name}.imports.a")
    add_custom_command(OUTPUT "${library}" DEPENDS "${definition}" VERBATIM
        # dlltool names its temporary files, and so the archive's members, after its process id unless told.
        COMMAND ${CMAKE_DLLTOOL} --deterministic-libraries --temp-prefix ${name}
            --input-def "${definition}" --output-lib "${library}"
        WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}")
    add_custom_target(${target}_file DEPENDS "${library}")
    add_library(${target} STATIC IMPORTED GLOBAL)
    set_target_properties(${target} PROPERTIES IMPORTED_LOCATION "${library}")
    add_dependencies(${target} ${target}_file)
endfunction()
