// The NEXTSTEP encoding, in which the controller names its fans.
#pragma once

#include <string>
#include <string_view>

namespace halvermonte {

/// The characters as UTF-8.
std::string decodedNextStep(std::string_view characters);

}  // namespace halvermonte
