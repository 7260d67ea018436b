# find_package(quorin COMPONENTS ioshare strings ...) for other projects.
include(CMakePackageConfigHelpers)
set(quorin_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/quorin)
configure_package_config_file(cmake/quorinConfig.cmake.in ${PROJECT_BINARY_DIR}/quorinConfig.cmake
                              INSTALL_DESTINATION ${quorin_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/quorinConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quorinConfig.cmake ${PROJECT_BINARY_DIR}/quorinConfigVersion.cmake
              cmake/quorin_fltk.cmake
        DESTINATION ${quorin_package_dir})

install(FILES docs/man/quorin.1 docs/man/zk4sim.1 docs/man/quorin-io.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
