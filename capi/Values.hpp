// The values of a snapshot as the C interface hands them out: each is the address of a handle that
// the snapshot keeps.
#pragma once

#include "halvermonte/Values.hpp"
#include "halvermonte/halvermonte.h"

namespace halvermonte::capi {

inline const halvermonte_value* handleOf(const Value& value) {
  return reinterpret_cast<const halvermonte_value*>(&value);
}

}  // namespace halvermonte::capi
