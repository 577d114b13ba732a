#include "halvermonte/Exceptions.hpp"

namespace halvermonte {

// Here, so that each type is one type in all libraries of a process.
PlatformException::~PlatformException() = default;
RangeException::~RangeException() = default;

}  // namespace halvermonte
