# The Debian packages, of the components of Install.cmake: the library, what it takes to build programs with it, the library
# with all checks, the documentation, and the debug information of the first. scripts/packages makes them.
get_target_property(abi CorvexMaths SOVERSION)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libcorvexmaths${abi})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libcorvexmaths-dev)
set(CPACK_DEBIAN_CHECKED_PACKAGE_NAME libcorvexmaths-debug)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME libcorvexmaths-doc)

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# The files are laid out under the final prefix, whose name gdb's file bears.
set(CPACK_SET_DESTDIR ON)
# Strips the library, and makes a package of what it stripped.
set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
# CPack strips no archive; what debug information it holds is of no use without the sources.
install(CODE [[
    file(GLOB archives "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/lib*/libCorvexMaths.a"
         "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/lib*/*/libCorvexMaths.a")
    if(archives)
        execute_process(COMMAND strip --strip-debug ${archives} COMMAND_ERROR_IS_FATAL ANY)
    endif()
]] COMPONENT Development)

set(CPACK_PACKAGE_VENDOR "CorvexMaths authors")
set(CPACK_PACKAGE_CONTACT "CorvexMaths authors <corvexmaths@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
string(CONCAT description
    "Vectors, dense and sparse matrices, geometric primitives, point sets, polygons\n"
    "and B-splines, as class templates over float or double.\n"
    "Every operation gives the same bits for the same input.\n")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${description}This package holds the shared library.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "${description}This package holds headers, static library, CMake and pkg-config files.")
set(CPACK_COMPONENT_CHECKED_DESCRIPTION
    "${description}This package holds the library with all checks of preconditions and debug information, which\n"
    "programs take in the configuration Debug of CMake or by pkg-config corvexmaths-debug.")
list(JOIN CPACK_COMPONENT_CHECKED_DESCRIPTION "" CPACK_COMPONENT_CHECKED_DESCRIPTION)
set(CPACK_COMPONENT_DOCUMENTATION_DESCRIPTION
    "${description}This package holds the reference, for any web browser, and the recipes.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})")
if(TARGET CorvexMathsChecked)
    list(APPEND CPACK_COMPONENTS_ALL Checked)
    set(CPACK_DEBIAN_CHECKED_PACKAGE_SECTION debug)
    set(CPACK_DEBIAN_CHECKED_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_CHECKED_PACKAGE_DEPENDS "${CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME} (= ${PROJECT_VERSION})")
endif()
if(EXISTS "${CORVEX_DOCUMENTATION}")
    list(APPEND CPACK_COMPONENTS_ALL Documentation)
    set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
    set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
    set(folder ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME})
    install(DIRECTORY ${CORVEX_DOCUMENTATION} DESTINATION ${folder} COMPONENT Documentation)
    install(DIRECTORY examples/recipes/ DESTINATION ${folder}/examples COMPONENT Documentation FILES_MATCHING PATTERN *.cpp)
endif()
# Debian wants to read in each package who holds the copyright.
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    install(FILES COPYRIGHT DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
        RENAME copyright COMPONENT ${component})
endforeach()

include(CPack)
