# What leaves our libraries: a .def is the list, and the native linker's version script is made from it.

# orvo_names_of(<def file> <variable>): stores the names that the .def lists.
function(orvo_names_of definition variable)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${definition}")
    # Only the names of exports are indented; after one come an ordinal, NONAME or DATA.
    file(STRINGS "${definition}" names REGEX "^[ \t]+[A-Za-z_]")
    if(NOT names)
        message(FATAL_ERROR "${definition} lists no exports")
    endif()
    list(TRANSFORM names REPLACE "^[ \t]+([A-Za-z0-9_]+).*" "\\1")
    set(${variable} "${names}" PARENT_SCOPE)
endfunction()

# orvo_version_script_of(<def file> <variable>): stores the path of a version script with the names that the .def
# lists. Nothing else of the library can be seen from outside.
function(orvo_version_script_of definition variable)
    cmake_path(ABSOLUTE_PATH definition)
    cmake_path(GET definition STEM name)
    orvo_names_of("${definition}" exports)
    list(TRANSFORM exports PREPEND "    ")
    list(JOIN exports ";\n" exports)
    set(script "${CMAKE_CURRENT_BINARY_DIR}/${name}.map")
    file(CONFIGURE OUTPUT "${script}" CONTENT "{\nglobal:\n${exports};\nlocal:\n    *;\n};\n")
    set(${variable} "${script}" PARENT_SCOPE)
endfunction()

# orvo_exports(<target> <header> <variable>): gives the library the exports of the header's list, in which each
# is a row X(name, ordinal), and stores the path of the .def that is made from it.
function(orvo_exports target header variable)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${header}")
    file(READ "${header}" rows)
    string(REGEX MATCHALL "X\\([A-Za-z]+, [0-9]+\\)" rows "${rows}")
    if(NOT rows)
        message(FATAL_ERROR "${header} has no list of exports")
    endif()
    list(TRANSFORM rows REPLACE "X\\((.+), (.+)\\)" "    \\1 @\\2")
    list(JOIN rows "\n" rows)
    set(definition "${CMAKE_CURRENT_BINARY_DIR}/${target}.def")
    file(CONFIGURE OUTPUT "${definition}" CONTENT "LIBRARY ${target}\nEXPORTS\n${rows}\n")
    if(WIN32)
        target_sources(${target} PRIVATE "${definition}")
    else()
        orvo_version_script_of("${definition}" script)
        target_link_options(${target} PRIVATE "-Wl,--version-script=${script}")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
    endif()
    set(${variable} "${definition}" PARENT_SCOPE)
endfunction()
