// What is known of the computer itself, as outputs for people word it.
#pragma once

#include <string>
#include <vector>

#include "monitor/PassView.hpp"

namespace halvermonte {

/// The host's name, processor and cores, uptime, memory and the process that is watched. What is
/// not known is left out.
std::vector<std::string> hostTexts(const PassView& view);

/// "0.8" and "150.2": one decimal.
std::string oneDecimal(double number);

}  // namespace halvermonte
