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

SensorName readPair(const JsonPlace& place, std::set<std::string>& before) {
  constexpr std::string_view expectation = "an array of a key and its name";
  const auto pair = place.elements(expectation);
  if (pair.size() != 2) place.refuse(expectation);
  SensorName name{.key = pair[0].text(kKeyShape), .name = pair[1].text(kNameShape)};
  expectThat(pair[0], unmetByKey(name.key, before));
  expectThat(pair[1], unmetByName(name.name));
  before.insert(name.key);
  return name;
}

}  // namespace

std::vector<SensorName> readSensorNames(const JsonPlace& place) {
  std::vector<SensorName> names;
  std::set<std::string> keys;
  for (const JsonPlace& pair : place.elements("an array of keys, each with its name")) {
    names.push_back(readPair(pair, keys));
  }
  return names;
}

std::string_view unmetByKey(const std::string& key, const std::set<std::string>& before) {
  if (key.size() != 4 || !std::ranges::all_of(key, isPrintable)) return kKeyShape;
  if (isBuiltInKey(key)) return "a key that is not in the built-in catalogue";
  return before.contains(key) ? "a key that no earlier name has" : "";
}

std::string_view unmetByName(std::string_view name) {
  return name.empty() || name.find('\n') != name.npos ? kNameShape : std::string_view();
}

}  // namespace halvermonte
