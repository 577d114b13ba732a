// The fans of one pass.
#pragma once

#include <cstdint>
#include <string>

#include "engine/TemperatureLists.hpp"

namespace halvermonte {

/// Each fan's name and whole revolutions per minute. A stopped fan is listed with 0; one with a
/// negative speed is left out. If none is listed, the names are "n/a", without a line feed. More
/// than ten fans end the process.
TextPair readFans(uint32_t conn);

/// The name under which the fan (0 to 9) is listed. Any other index ends the process.
std::string fanName(int fan, uint32_t conn);

}  // namespace halvermonte
