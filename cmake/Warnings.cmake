# Our own targets compile without a warning; users of the library keep their own settings. In optimised
# tests, g++ 12 warns of what is not there, so the arm64 build does not turn warnings into errors.
option(HALVERMONTE_WERROR "Treat warnings as errors" ${PROJECT_IS_TOP_LEVEL})

function(halvermonte_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It sees overlaps in "text" + std::string that are not there (GCC bug 105651).
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(HALVERMONTE_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
