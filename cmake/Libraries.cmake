# Two libraries of the core's objects: the shared one, which exports its public names alone, and the static
# one, for hosts that carry the library inside them, for the monitor and for the tests. On a Mac the
# framework is in the place of the shared one.
include(CheckCXXSymbolExists)
check_cxx_symbol_exists(_LIBCPP_VERSION version HALVERMONTE_LIBCXX)
set(definitions HALVERMONTE_BUILT_WITH_LIBSTDCXX)
if(HALVERMONTE_LIBCXX)
  set(definitions HALVERMONTE_BUILT_WITH_LIBCXX)
endif()

# What a host needs to include the public headers. Those of HIDSensors.h include CoreFoundation's.
function(halvermonte_public_face target)
  target_include_directories(${target} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/platform/portable/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/halvermonte/portable>)
  target_compile_definitions(${target} INTERFACE ${definitions})
  target_compile_features(${target} PUBLIC cxx_std_20)
endfunction()

if(NOT APPLE)
  add_library(halvermonte SHARED)
  add_library(halvermonte::halvermonte ALIAS halvermonte)
  halvermonte_public_face(halvermonte)
  target_link_libraries(halvermonte PRIVATE ${core})
  set_target_properties(halvermonte PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})

  set(exports ${CMAKE_CURRENT_LIST_DIR}/exports.map)
  target_link_options(halvermonte PRIVATE LINKER:--version-script=${exports}
    # A host may have functions of its own under the same names: the library calls its own.
    LINKER:-Bsymbolic-functions
    # A thread may still hang in a sensor's driver when the host unloads the library, so it stays loaded.
    LINKER:-z,nodelete
    # clang leaves the functions of its sanitizers to the program.
    $<$<CXX_COMPILER_ID:GNU>:LINKER:--no-undefined>)
  set_property(TARGET halvermonte PROPERTY LINK_DEPENDS ${exports})
endif()

add_library(halvermonte_static STATIC)
add_library(halvermonte::halvermonte_static ALIAS halvermonte_static)
halvermonte_public_face(halvermonte_static)
target_sources(halvermonte_static PRIVATE $<TARGET_OBJECTS:${core}>)
target_link_libraries(halvermonte_static PRIVATE PkgConfig::LIBPLIST)
set_target_properties(halvermonte_static PROPERTIES
  OUTPUT_NAME halvermonte
  EXCLUDE_FROM_ALL $<NOT:$<BOOL:${HALVERMONTE_INSTALL}>>)
if(APPLE)
  target_link_libraries(halvermonte_static PRIVATE halvermonte_mac)
endif()

# The static library with the headers of its sources in reach, for the monitor and the tests.
add_library(halvermonte_inside INTERFACE)
target_link_libraries(halvermonte_inside INTERFACE halvermonte_static)
target_include_directories(halvermonte_inside INTERFACE
  $<TARGET_PROPERTY:${core},INTERFACE_INCLUDE_DIRECTORIES>)
target_compile_definitions(halvermonte_inside INTERFACE
  $<TARGET_PROPERTY:${core},INTERFACE_COMPILE_DEFINITIONS>)
