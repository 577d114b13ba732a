#include "platform/simulated/SensorNamesReader.hpp"

#include <algorithm>
#include <string>

#include "catalogue/BuiltInNames.hpp"
#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte {
namespace {

constexpr std::string_view kKeyShape = "a key of 4 printable ASCII characters";
constexpr std::string_view kNameShape = "a text of one line that is not empty";

bool isPrintable(char character) { return character >= ' ' && character <= '~'; }

void expectThat(const JsonPlace& place, std::string_view unmet) {
  if (!unmet.empty()) place.refuse(unmet);
}

SensorName readPair(const JsonPlace& place, const std::vector<SensorName>& before) {
  constexpr std::string_view expectation = "an array of a key and its name";
  const std::vector<JsonPlace> pair = place.elements(expectation);
  if (pair.size() != 2) place.refuse(expectation);
  SensorName name{.key = pair[0].text(kKeyShape), .name = pair[1].text(kNameShape)};
  expectThat(pair[0], unmetByKey(name.key, before));
  expectThat(pair[1], unmetByName(name.name));
  return name;
}

}  // namespace

std::vector<SensorName> readSensorNames(const JsonPlace& place) {
  std::vector<SensorName> names;
  for (const JsonPlace& pair : place.elements("an array of keys, each with its name")) {
    names.push_back(readPair(pair, names));
  }
  return names;
}

std::string_view unmetByKey(std::string_view key, const std::vector<SensorName>& before) {
  if (key.size() != 4 || !std::ranges::all_of(key, isPrintable)) return kKeyShape;
  if (isBuiltInKey(key)) return "a key that is not in the built-in catalogue";
  const bool isGiven = std::ranges::count(before, key, &SensorName::key) > 0;
  return isGiven ? "a key that no earlier name has" : "";
}

std::string_view unmetByName(std::string_view name) {
  return name.empty() || name.find('\n') != name.npos ? kNameShape : std::string_view();
}

}  // namespace halvermonte
