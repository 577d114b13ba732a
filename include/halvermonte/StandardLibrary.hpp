// Stops the compilation of a host that could not be linked with the library. The CMake package and
// the pkg-config file define which C++ library it was built with; without them, nothing is checked.
#pragma once

#include <version>

#if __cplusplus < 202002L
#error "halvermonte needs C++20 or later"
#endif
#if defined(HALVERMONTE_BUILT_WITH_LIBSTDCXX) && !defined(__GLIBCXX__)
#error "halvermonte was built with libstdc++: compile with it too, or build halvermonte with libc++"
#endif
#if defined(HALVERMONTE_BUILT_WITH_LIBCXX) && !defined(_LIBCPP_VERSION)
#error "halvermonte was built with libc++: compile with it too, or build halvermonte with libstdc++"
#endif
