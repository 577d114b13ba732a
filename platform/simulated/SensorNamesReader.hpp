// Reads the `names` of a machine file.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/SensorNames.hpp"
#include "platform/simulated/JsonPlace.hpp"

namespace halvermonte {

/// Throws MachineFileError if the place does not follow the format.
std::vector<SensorName> readSensorNames(const JsonPlace& place);

/// What the format expects of a key that follows those keys, or of a name, and does not find; "" if
/// it has everything.
std::string_view unmetByKey(const std::string& key, const std::set<std::string>& before);
std::string_view unmetByName(std::string_view name);

}  // namespace halvermonte
