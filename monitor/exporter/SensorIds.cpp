#include "monitor/exporter/SensorIds.hpp"

#include <set>
#include <string_view>
#include <utility>

#include "monitor/Line.hpp"

namespace halvermonte {
namespace {

/// The words of a name in lower case, with hyphens between them. Letters beyond ASCII stay.
std::string words(std::string_view name) {
  std::string result;
  for (char c : printable(name, true)) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    const bool isInWord = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || (c & 0x80) != 0;
    if (isInWord) {
      result += c;
    } else if (!result.empty() && result.back() != '-') {
      result += '-';
    }
  }
  if (!result.empty() && result.back() == '-') result.pop_back();
  return result;
}

class Identifiers {
 public:
  std::string add(const std::string& wanted) {
    std::string identifier = wanted;
    for (int count = 2; !taken_.insert(identifier).second; ++count) {
      identifier = wanted + "-" + std::to_string(count);
    }
    return identifier;
  }

 private:
  std::set<std::string> taken_;
};

}  // namespace

SensorIds sensorIds(const PassView& view) {
  Identifiers identifiers;
  SensorIds ids;
  for (const SensorView& sensor : view.temperatures) {
    const std::string name = words(sensor.name);
    ids.temperatures.push_back(identifiers.add(name.empty() ? "temperature" : name));
  }
  for (const SensorView& fan : view.fans) {
    const std::string name = words(fan.name);
    ids.fans.push_back(identifiers.add(name.empty() ? "fan" : "fan-" + name));
  }
  return ids;
}

}  // namespace halvermonte
