# Both libraries, their headers, and how CMake and pkg-config find them.
include(CMakePackageConfigHelpers)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/halvermonte)
set(generated ${CMAKE_CURRENT_BINARY_DIR}/install)

install(DIRECTORY include/halvermonte DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY platform/portable/include/CoreFoundation
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/halvermonte/portable)

# Apart, so that a host of the shared library does not need what the static one links.
foreach(library halvermonte halvermonte_static)
  install(TARGETS ${library} EXPORT ${library} DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(EXPORT ${library} NAMESPACE halvermonte:: FILE ${library}-targets.cmake DESTINATION ${package})
endforeach()

configure_package_config_file(cmake/halvermonteConfig.cmake.in ${generated}/halvermonteConfig.cmake
  INSTALL_DESTINATION ${package} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${generated}/halvermonteConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${generated}/halvermonteConfig.cmake ${generated}/halvermonteConfigVersion.cmake
  DESTINATION ${package})

# Relative, so that an installed copy may be moved.
file(RELATIVE_PATH prefix_from_pc
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
foreach(name halvermonte halvermonte-c halvermonte-static)
  configure_file(cmake/${name}.pc.in ${generated}/${name}.pc @ONLY)
  install(FILES ${generated}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
