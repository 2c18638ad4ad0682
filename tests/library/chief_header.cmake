# CorvexMaths.h brings every public header but two, which no other includes, and what a public header includes of the
# library is public too.
#
#   cmake -DFOLDER=... -DHEADERS=a.h,b.h -P chief_header.cmake
cmake_minimum_required(VERSION 3.25)
string(REPLACE "," ";" headers "${HEADERS}")

set(apart Stream.h Aliases.h)

set(waiting CorvexMaths.h)
set(reached "")
while(waiting)
    list(POP_FRONT waiting header)
    if(header IN_LIST reached)
        continue()
    endif()
    list(APPEND reached ${header})
    if(NOT header IN_LIST headers)
        message(SEND_ERROR "${header} is included by a public header, but is not in the list of public headers")
    endif()
    file(STRINGS "${FOLDER}/${header}" lines REGEX "^#include <CorvexMaths/")
    list(TRANSFORM lines REPLACE "#include <CorvexMaths/([^>]*)>.*" "\\1")
    list(APPEND waiting ${lines})
endwhile()

foreach(header IN LISTS headers)
    if(header IN_LIST apart AND header IN_LIST reached)
        message(SEND_ERROR "${header} comes with CorvexMaths.h")
    elseif(NOT header IN_LIST apart AND NOT header IN_LIST reached)
        message(SEND_ERROR "CorvexMaths.h does not bring ${header}")
    endif()
endforeach()
