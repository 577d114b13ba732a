# The processor whose rules the engine follows (x86_64 or arm64): the target's, unless said otherwise.
if(APPLE)
  # Each part of a universal framework follows its own.
  if(DEFINED HALVERMONTE_PROCESSOR)
    message(FATAL_ERROR "HALVERMONTE_PROCESSOR has no effect on macOS: choose processors by "
      "-DCMAKE_OSX_ARCHITECTURES=arm64, x86_64 or \"arm64;x86_64\" (and -UHALVERMONTE_PROCESSOR)")
  endif()
  return()
endif()
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)")
  set(processor arm64)
else()
  set(processor x86_64)
endif()
set(HALVERMONTE_PROCESSOR ${processor} CACHE STRING "The processor's rules: x86_64 or arm64")
set_property(CACHE HALVERMONTE_PROCESSOR PROPERTY STRINGS x86_64 arm64)
if(NOT HALVERMONTE_PROCESSOR MATCHES "^(x86_64|arm64)$")
  message(FATAL_ERROR "HALVERMONTE_PROCESSOR is \"${HALVERMONTE_PROCESSOR}\": expected x86_64 or arm64")
endif()
