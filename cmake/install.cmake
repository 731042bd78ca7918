# `cmake --install` puts library, program, headers, manual pages, a pkg-config file and a
# CMake package in place; `cpack` makes a Debian package of the same. The tree can
# be moved: what looks for the prefix starts from where it stands itself.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS qorkes_a6 EXPORT qorkes-targets)
file(RELATIVE_PATH to_libraries /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(qorkes PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
install(TARGETS qorkes)
install(DIRECTORY include/qorkes DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES docs/man/qorkes.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES docs/man/qorkes.7 DESTINATION ${CMAKE_INSTALL_MANDIR}/man7)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

file(RELATIVE_PATH to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
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

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The Qorkes authors")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${QORKES_DEBIAN_ARCHITECTURE})
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= 2.36), libgcc-s1, libstdc++6 (>= 12)")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS gnuplot-nox)
include(CPack)
