// A record in texts, to compare two of them and to see where they differ.
#pragma once

#include <map>
#include <string>

#include "halvermonte/StatisticsData.hpp"

namespace halvermonte::test {

/// A value with its kind; a number with the form it was made from.
std::string described(const Value& value);

/// All properties by name.
std::map<std::string, std::string> described(const StatisticsData& record);

}  // namespace halvermonte::test
