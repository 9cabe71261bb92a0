# The installed package: library, header, CMake and pkg-config files.
include(CMakePackageConfigHelpers)

install(TARGETS kavostdlib EXPORT kavostdlib LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES include/kavostdlib.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kavostdlib)
install(EXPORT kavostdlib FILE kavostdlibConfig.cmake NAMESPACE kavostdlib::
        DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kavostdlibConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
# The prefix as seen from the file itself, so that an installed tree can be moved.
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/kavostdlib.pc.in ${PROJECT_BINARY_DIR}/kavostdlib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kavostdlibConfigVersion.cmake DESTINATION ${package_dir})
install(FILES ${PROJECT_BINARY_DIR}/kavostdlib.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
