# What is installed and where: to run programs the component Runtime, to build them also Development; Checked is the
# library with all checks, Documentation the pages and recipes.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/CorvexMaths)

install(TARGETS CorvexMaths EXPORT CorvexMathsTargets
    RUNTIME COMPONENT Runtime
    LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
    ARCHIVE COMPONENT Development
    FILE_SET HEADERS COMPONENT Development)
if(TARGET CorvexMathsArchive)
    install(TARGETS CorvexMathsArchive EXPORT CorvexMathsTargets ARCHIVE COMPONENT Development)
endif()

if(TARGET CorvexMathsChecked)
    install(TARGETS CorvexMathsChecked RUNTIME COMPONENT Checked LIBRARY COMPONENT Checked ARCHIVE COMPONENT Checked)
endif()

# Before 1.0 a minor version may change the interface or the bits.
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/CorvexMathsConfig.cmake.in CorvexMathsConfig.cmake
    INSTALL_DESTINATION ${package_dir}
    PATH_VARS CMAKE_INSTALL_LIBDIR)
write_basic_package_version_file(CorvexMathsConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(EXPORT CorvexMathsTargets NAMESPACE CorvexMaths:: DESTINATION ${package_dir} COMPONENT Development)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/CorvexMathsConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/CorvexMathsConfigVersion.cmake
    ${CMAKE_CURRENT_LIST_DIR}/KeepBits.cmake
    DESTINATION ${package_dir} COMPONENT Development)

# The library made static takes what it rests on along.
set(CORVEX_PC_LIBS "-lCorvexMaths")
set(CORVEX_PC_LIBS_PRIVATE "")
if(CORVEX_THREADING_RUNTIME)
    set(CORVEX_PC_LIBS_PRIVATE "-l${CORVEX_THREADING_RUNTIME}")
endif()
if(NOT BUILD_SHARED_LIBS)
    string(APPEND CORVEX_PC_LIBS " ${CORVEX_PC_LIBS_PRIVATE}")
    set(CORVEX_PC_LIBS_PRIVATE "")
endif()
# pkg-config does not know the compiler, and each takes the flags of the other.
list(JOIN CORVEX_CONTRACTION_FLAGS " " CORVEX_PC_KEEP_BITS)
list(JOIN CORVEX_INSTRUCTION_FLAGS " " instruction_flags)
string(APPEND CORVEX_PC_KEEP_BITS " ${instruction_flags}")
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
    OUTPUT_VARIABLE CORVEX_PC_PREFIX)
foreach(dir LIBDIR INCLUDEDIR)
    set(CORVEX_PC_${dir} "\${prefix}")
    cmake_path(APPEND CORVEX_PC_${dir} ${CMAKE_INSTALL_${dir}}) # an absolute one stays as it is
endforeach()
set(CORVEX_PC_NAME ${PROJECT_NAME})
set(CORVEX_PC_DEFINITION "")
configure_file(${CMAKE_CURRENT_LIST_DIR}/corvexmaths.pc.in corvexmaths.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/corvexmaths.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
if(TARGET CorvexMathsChecked)
    # The program's inline code checks too, whatever its own NDEBUG.
    set(CORVEX_PC_NAME "${PROJECT_NAME}, with checks of preconditions")
    set(CORVEX_PC_DEFINITION " -DCORVEX_CHECK_PRECONDITIONS=1")
    set(CORVEX_PC_LIBS "-lCorvexMaths_debug")
    set(CORVEX_PC_LIBS_PRIVATE "")
    configure_file(${CMAKE_CURRENT_LIST_DIR}/corvexmaths.pc.in corvexmaths-debug.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/corvexmaths-debug.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Checked)
endif()

# What debuggers need to show values. gdb looks for its part under the name of the library's file and its whole path, so
# the prefix is that of the installation.
set(data_dir ${CMAKE_INSTALL_DATADIR})
install(FILES debuggers/CorvexMaths.natvis DESTINATION ${data_dir}/CorvexMaths COMPONENT Development)
if(TARGET corvex_debugger_types AND BUILD_SHARED_LIBS)
    install(FILES $<TARGET_OBJECTS:corvex_debugger_types> DESTINATION ${CMAKE_INSTALL_LIBDIR}/CorvexMaths
        RENAME types.debug COMPONENT Development)
    install(FILES debuggers/corvexmaths_gdb.py
        DESTINATION ${data_dir}/gdb/auto-load\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}
        RENAME libCorvexMaths.so.${PROJECT_VERSION}-gdb.py COMPONENT Development)
endif()

if(PROJECT_IS_TOP_LEVEL)
    install(FILES README.md CHANGELOG.md COPYRIGHT DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Development)
    if(BUILD_SHARED_LIBS AND UNIX AND NOT APPLE)
        include(${CMAKE_CURRENT_LIST_DIR}/Packages.cmake)
    endif()
endif()
