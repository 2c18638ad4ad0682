# What the library for Windows exports: the members, type information and virtual tables of the classes that are marked
# CORVEX_API, as the shared library for Linux does.
#
# A .def file lists them, which is written from the symbols of the objects before each link. __declspec(dllexport) would
# not do: g++ leaves the inline members of instantiated classes out of what it exports, and programs compiled without
# optimisation call them. Programs need no __declspec(dllimport) either: calls go through the import library, tables
# are imported by the linker, and the same headers and objects serve the static library.

if(NOT CMAKE_SCRIPT_MODE_FILE)
    # Gives a shared library of ours its exports.
    function(corvex_export_classes target)
        set(definition ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
        set(objects ${CMAKE_CURRENT_BINARY_DIR}/${target}.objects)
        file(GENERATE OUTPUT ${objects} CONTENT "$<TARGET_OBJECTS:${target}>")
        add_custom_command(TARGET ${target} PRE_LINK VERBATIM
            COMMAND ${CMAKE_COMMAND} -DNM=${CMAKE_NM} -DOBJECTS=${objects} -DHEADERS=${PROJECT_SOURCE_DIR}/CorvexMaths
                    -DDEFINITION=${definition} -P ${CMAKE_CURRENT_FUNCTION_LIST_FILE})
        target_link_options(${target} PRIVATE ${definition})
    endfunction()
    return()
endif()

# The classes, as mangled names spell them: length and name.
file(GLOB_RECURSE headers ${HEADERS}/*.h)
set(classes "")
foreach(header IN LISTS headers)
    file(STRINGS ${header} lines REGEX "(class|struct) CORVEX_API ")
    foreach(line IN LISTS lines)
        string(REGEX REPLACE ".*CORVEX_API ([A-Za-z0-9]+).*" "\\1" name "${line}")
        string(LENGTH ${name} length)
        list(APPEND classes ${length}${name})
    endforeach()
endforeach()
list(REMOVE_DUPLICATES classes)
list(JOIN classes "|" classes)
set(ours "^_Z(T[VIS])?N[VKRO]*7Halmont5Orrin(11CorvexMaths(6Robust)?|15CorvexUtilities)(${classes})")

file(READ ${OBJECTS} objects)
execute_process(COMMAND ${NM} --defined-only --extern-only --format=posix ${objects}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "_Z[^ \n]+ [A-Z] " symbols "${symbols}")
list(FILTER symbols INCLUDE REGEX "${ours}")
# Virtual tables and type information are data.
list(TRANSFORM symbols REPLACE "^(_ZT[VIS][^ ]+) .*" "\\1 DATA")
list(TRANSFORM symbols REPLACE " [A-Z] $" "")
list(REMOVE_DUPLICATES symbols)
list(SORT symbols)
list(JOIN symbols "\n" symbols)
file(WRITE ${DEFINITION} "EXPORTS\n${symbols}\n")
