# orvo_split_debug(<target>): strips the Windows DLL or program and puts its symbols into a file beside it,
# `<name>.debug`, which debuggers find by the link that stays behind. Nothing to do natively.
function(orvo_split_debug target)
    if(NOT WIN32)
        return()
    endif()
    # Without --preserve-dates the tools write the time of day into the header.
    add_custom_command(TARGET ${target} POST_BUILD VERBATIM
        WORKING_DIRECTORY "$<TARGET_FILE_DIR:${target}>"
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates --only-keep-debug
            $<TARGET_FILE_NAME:${target}> $<TARGET_FILE_NAME:${target}>.debug
        COMMAND ${CMAKE_STRIP} --preserve-dates --strip-all $<TARGET_FILE_NAME:${target}>
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates
            --add-gnu-debuglink=$<TARGET_FILE_NAME:${target}>.debug $<TARGET_FILE_NAME:${target}>)
endfunction()

# orvo_import_library(<target> <def file>): an imported library of what the .def lists. An export that
# stands there as `name @ordinal NONAME` is imported by its ordinal, and its name stays out of the program.
# For Windows only: natively one links against the library itself.
function(orvo_import_library target definition)
    cmake_path(ABSOLUTE_PATH definition)
    cmake_path(GET definition STEM name)
    set(library "${name}.imports.a")
    # The names of symbols and members come from the path of the library and from the process id, if not
    # from these arguments: hence the relative path, and the prefix.
    add_custom_command(OUTPUT "${library}" DEPENDS "${definition}" VERBATIM
        WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
        COMMAND ${CMAKE_DLLTOOL} --deterministic-libraries --temp-prefix ${name}
            --input-def "${definition}" --output-lib "${library}")
    add_custom_target(${target}_file DEPENDS "${CMAKE_CURRENT_BINARY_DIR}/${library}")
    add_library(${target} STATIC IMPORTED GLOBAL)
    set_target_properties(${target} PROPERTIES IMPORTED_LOCATION "${CMAKE_CURRENT_BINARY_DIR}/${library}")
    add_dependencies(${target} ${target}_file)
endfunction()
