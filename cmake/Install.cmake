# The shared library, its headers, and how CMake and pkg-config find them.
include(CMakePackageConfigHelpers)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/halvermonte)
set(generated ${CMAKE_CURRENT_BINARY_DIR}/install)

install(TARGETS halvermonte EXPORT halvermonte
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILE_SET platform_types DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/halvermonte/portable)
install(EXPORT halvermonte NAMESPACE halvermonte:: FILE halvermonteConfig.cmake
  DESTINATION ${package})
write_basic_package_version_file(${generated}/halvermonteConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${generated}/halvermonteConfigVersion.cmake DESTINATION ${package})

# Relative, so that an installed copy may be moved.
file(RELATIVE_PATH prefix_from_pc
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/halvermonte.pc.in ${generated}/halvermonte.pc @ONLY)
install(FILES ${generated}/halvermonte.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
