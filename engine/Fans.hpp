// The fans of one pass.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/TemperatureLists.hpp"

namespace halvermonte {

/// Each fan's name and whole revolutions per minute; a stopped fan is listed with 0, one with a
/// negative speed is left out. Where none is listed the names are "n/a", without a line end. More
/// than ten fans end the process.
TextPair readFans(uint32_t conn);

/// The name under which the fan (0 to 9) is listed. Any other index ends the process.
std::string fanName(int fan, uint32_t conn);

/// Characters in the NEXTSTEP encoding, which fan names have, as UTF-8.
std::string decodedNextStep(std::string_view characters);

}  // namespace halvermonte
