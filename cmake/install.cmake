# `cmake --install` puts library, program, headers, a pkg-config file and a CMake
# package in place.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS qorkes_a6 EXPORT qorkes-targets)
install(TARGETS qorkes)
install(DIRECTORY include/qorkes DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

configure_file(cmake/qorkes.pc.in qorkes.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/qorkes.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qorkes)
install(EXPORT qorkes-targets NAMESPACE qorkes:: FILE qorkes-config.cmake
        DESTINATION ${package_dir})
write_basic_package_version_file(qorkes-config-version.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/qorkes-config-version.cmake
        DESTINATION ${package_dir})
