# Two libraries of the same objects: the shared one for hosts, which exports its public names alone, and
# the static one with everything in reach, for the monitor and the tests.
add_library(halvermonte SHARED)
add_library(halvermonte::halvermonte ALIAS halvermonte)
target_link_libraries(halvermonte PRIVATE halvermonte_core)
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

# What hosts include, and the types that HIDSensors.h needs.
set(public ${PROJECT_SOURCE_DIR}/include)
set(portable ${PROJECT_SOURCE_DIR}/platform/portable/include)
target_sources(halvermonte PUBLIC
  FILE_SET HEADERS BASE_DIRS ${public} FILES
    ${public}/halvermonte/Atomic.hpp
    ${public}/halvermonte/DiskCounters.h
    ${public}/halvermonte/Exceptions.hpp
    ${public}/halvermonte/Export.h
    ${public}/halvermonte/HIDSensors.h
    ${public}/halvermonte/HalvermonteSensorsEngine.hpp
    ${public}/halvermonte/SMC.h
    ${public}/halvermonte/StatisticsData.hpp
    ${public}/halvermonte/Values.hpp
    ${public}/halvermonte/Version.h
    ${public}/halvermonte/properties.def
  FILE_SET platform_types TYPE HEADERS BASE_DIRS ${portable} FILES
    ${portable}/CoreFoundation/CoreFoundation.h)

add_library(halvermonte_static STATIC EXCLUDE_FROM_ALL)
target_link_libraries(halvermonte_static PUBLIC halvermonte_core)
