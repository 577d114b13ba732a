#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvermonte/Machine.hpp"
#include "halvermonte/SensorSources.hpp"
#include "monitor/JsonText.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/SensorGroups.hpp"
#include "monitor/list/Drives.hpp"
#include "monitor/list/Group.hpp"
#include "monitor/list/SensorList.hpp"

namespace halvermonte {
namespace {

std::string_view nameOf(ShownIn list) {
  switch (list) {
    case ShownIn::nothing:
      return "nothing";
    case ShownIn::fullList:
      return "fullList";
    case ShownIn::shortList:
      return "shortList";
    case ShownIn::fans:
      return "fans";
  }
  return "";
}

void addText(JsonText& json, std::string_view begin, std::string_view text) {
  json.raw(begin);
  json.text(text);
}

template <class Number>
void addNumber(JsonText& json, std::string_view begin, const std::optional<Number>& number) {
  json.raw(begin);
  if (!number) return json.raw("null");
  json.finite(*number);
}

void addSensor(JsonText& json, const SensorSource& sensor) {
  addText(json, "{\"name\":", sensor.name);
  addText(json, ",\"shownIn\":", nameOf(sensor.shownIn));
  addText(json, ",\"group\":", groupNameOf(sensor));
  addText(json, ",\"key\":", sensor.key);
  addText(json, ",\"driver\":", sensor.driver);
  addText(json, ",\"source\":", sensor.source);
  addText(json, ",\"label\":", sensor.label);
  addText(json, ",\"quantity\":", sensor.quantity);
  addNumber(json, ",\"number\":", sensor.number);
  addText(json, ",\"unit\":", sensor.unit);
  addText(json, ",\"raw\":", sensor.raw);
  addText(json, ",\"reason\":", sensor.reason);
  json.raw("}");
}

void addDrive(JsonText& json, const ListedDrive& drive) {
  addText(json, "{\"source\":", drive.source);
  addNumber(json, ",\"bytesRead\":", drive.bytesRead);
  addNumber(json, ",\"bytesWritten\":", drive.bytesWritten);
  addText(json, ",\"reason\":", drive.reason);
  json.raw("}");
}

template <class Element>
void addArray(JsonText& json, const std::vector<Element>& elements,
              void (*add)(JsonText&, const Element&)) {
  std::string_view separator = "[";
  for (const Element& element : elements) {
    json.raw(std::exchange(separator, ","));
    add(json, element);
  }
  json.raw(elements.empty() ? "[]" : "]");
}

}  // namespace

std::string sensorListJson(Sampling& sampling) {
  Machine& machine = sampling.machine();
  JsonText json;
  addText(json, "{\"machine\":", sampling.view().title);
  json.raw(",\"sensors\":");
  addArray(json, sensorSources(sampling.engine(), machine), addSensor);
  json.raw(",\"drives\":");
  addArray(json, listedDrives(machine), addDrive);
  json.raw("}\n");
  return json.take();
}

}  // namespace halvermonte
