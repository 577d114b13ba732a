# GNUstep's Foundation as the target gnustep, and its languages.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  message(FATAL_ERROR "HALVERMONTE_GNUSTEP: expected g++, whose Objective-C GNUstep is built for")
endif()
set(CMAKE_OBJC_COMPILER ${CMAKE_C_COMPILER})
set(CMAKE_OBJCXX_COMPILER ${CMAKE_CXX_COMPILER})
enable_language(OBJC)
enable_language(OBJCXX)

find_path(GNUSTEP_HEADERS Foundation/Foundation.h PATH_SUFFIXES GNUstep REQUIRED)
find_library(GNUSTEP_BASE gnustep-base REQUIRED)
add_library(gnustep INTERFACE)
target_include_directories(gnustep SYSTEM INTERFACE ${GNUSTEP_HEADERS})
target_compile_definitions(gnustep INTERFACE
  GNUSTEP GNUSTEP_BASE_LIBRARY=1 GNU_RUNTIME=1 _NATIVE_OBJC_EXCEPTIONS)
# The compiler warns of unused parameters in the accessors that it makes. Tools that read the commands do
# not know the folder of its Objective-C headers, so it is named.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=include
  OUTPUT_VARIABLE runtime_headers OUTPUT_STRIP_TRAILING_WHITESPACE)
target_compile_options(gnustep INTERFACE -fexceptions "SHELL:-isystem ${runtime_headers}"
  $<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:-fobjc-exceptions -fconstant-string-class=NSConstantString>
  $<$<COMPILE_LANGUAGE:OBJCXX>:-std=c++20 -Wno-unused-parameter>)
target_link_libraries(gnustep INTERFACE ${GNUSTEP_BASE} objc)
