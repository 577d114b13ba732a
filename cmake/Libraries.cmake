# Two libraries of the same objects: the shared one for hosts, which exports its public names alone, and
# the static one with everything in reach, for the monitor and the tests.
add_library(halvermonte SHARED)
add_library(halvermonte::halvermonte ALIAS halvermonte)
target_link_libraries(halvermonte PRIVATE halvermonte_core)
set_target_properties(halvermonte PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR})

set(exports ${CMAKE_CURRENT_LIST_DIR}/exports.map)
target_link_options(halvermonte PRIVATE LINKER:--no-undefined LINKER:--version-script=${exports})
set_property(TARGET halvermonte PROPERTY LINK_DEPENDS ${exports})

# What hosts include, and the types that HIDSensors.h speaks of.
target_sources(halvermonte PUBLIC
  FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES
    ${PROJECT_SOURCE_DIR}/engine/DiskCounters.h
    ${PROJECT_SOURCE_DIR}/engine/HalvermonteSensorsEngine.hpp
    ${PROJECT_SOURCE_DIR}/engine/Version.h
    ${PROJECT_SOURCE_DIR}/hid/HIDSensors.h
    ${PROJECT_SOURCE_DIR}/platform/Export.h
    ${PROJECT_SOURCE_DIR}/platform/Values.hpp
    ${PROJECT_SOURCE_DIR}/record/Atomic.hpp
    ${PROJECT_SOURCE_DIR}/record/StatisticsData.hpp
    ${PROJECT_SOURCE_DIR}/record/properties.def
    ${PROJECT_SOURCE_DIR}/smc/SMC.h
  FILE_SET platform_types TYPE HEADERS
    BASE_DIRS ${PROJECT_SOURCE_DIR}/platform/portable/include FILES
    ${PROJECT_SOURCE_DIR}/platform/portable/include/CoreFoundation/CoreFoundation.h)

add_library(halvermonte_static STATIC EXCLUDE_FROM_ALL)
target_link_libraries(halvermonte_static PUBLIC halvermonte_core)
