# The Debian packages, of the components of Install.cmake: the library, and what it takes to build programs with it.
# scripts/packages makes them.
get_target_property(abi CorvexMaths SOVERSION)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libcorvexmaths${abi})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libcorvexmaths-dev)

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_STRIP_FILES ON)
# The files are laid out under the final prefix, whose name gdb's file bears.
set(CPACK_SET_DESTDIR ON)

set(CPACK_PACKAGE_VENDOR "CorvexMaths developers")
set(CPACK_PACKAGE_CONTACT "CorvexMaths developers <corvexmaths@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
string(CONCAT description
    "Vectors, dense and sparse matrices, geometric primitives, point sets, polygons\n"
    "and B-splines, as class templates over float or double.\n"
    "Every operation gives the same bits for the same input.\n")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${description}This package holds the shared library.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "${description}This package holds headers, static library, CMake and pkg-config files.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})")

include(CPack)
