#include "monitor/json/JsonWriter.hpp"

#include <string_view>
#include <utility>

#include "halvermonte/StatisticsData.hpp"
#include "halvermonte/Values.hpp"
#include "monitor/JsonText.hpp"

namespace halvermonte {

namespace {

void addProcess(JsonText& json, const ProcessUse& process) {
  json.raw(",\"process\":{\"pid\":");
  json.figure(process.identifier);
  json.raw(",\"cpuPercent\":");
  json.value(process.percentOfOneCore ? Value(Number::ofFloat32(*process.percentOfOneCore))
                                      : Value());
  json.raw(process.hasEnded ? ",\"hasEnded\":true}" : ",\"hasEnded\":false}");
}

void addRecord(JsonText& json, const StatisticsData& record) {
  std::string_view separator = ",\"record\":{";
#define PROPERTY(name, Name, Type, initial, copy, turn) \
  json.raw(std::exchange(separator, ","));              \
  json.raw("\"" #name "\":");                           \
  json.value(record.name());
#include "halvermonte/properties.def"
  json.raw("}");
}

}  // namespace

std::string jsonLine(const PassView& view) {
  JsonText json;
  json.raw("{\"tick\":");
  json.figure(view.number);
  if (view.process) addProcess(json, *view.process);
  if (view.exception) {
    json.raw(",\"exception\":");
    json.text(*view.exception);
  } else {
    addRecord(json, *view.record);
  }
  json.raw("}\n");
  return json.take();
}

}  // namespace halvermonte
