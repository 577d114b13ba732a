#include "monitor/exporter/ReadingsJson.hpp"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "monitor/IsoDate.hpp"
#include "monitor/JsonText.hpp"
#include "monitor/SensorGroups.hpp"

namespace halvermonte {
namespace {

void addText(JsonText& json, std::string_view begin, std::string_view text) {
  json.raw(begin);
  json.text(text);
}

template <class Number>
void addNumber(JsonText& json, std::string_view begin, Number number) {
  json.raw(begin);
  json.finite(number);
}

void addFlag(JsonText& json, std::string_view begin, bool flag) {
  json.raw(begin);
  json.raw(flag ? "true" : "false");
}

/// Calls `add` for each element, with what separates it from the one before, and closes the array.
template <class Elements, class Add>
void addArray(JsonText& json, const Elements& elements, Add add) {
  std::string_view separator = "[";
  for (size_t i = 0; i < elements.size(); ++i) {
    json.raw(std::exchange(separator, ","));
    add(i);
  }
  json.raw(elements.empty() ? "[]" : "]");
}

void addTemperatures(JsonText& json, const PassView& view, const SensorIds& ids) {
  json.raw(",\"temperatures\":");
  addArray(json, view.temperatures, [&](size_t i) {
    const SensorView& sensor = view.temperatures[i];
    addText(json, "{\"id\":", ids.temperatures[i]);
    addText(json, ",\"name\":", sensor.name);
    addText(json, ",\"group\":", nameOf(groupOf(sensor.name)));
    addNumber(json, ",\"celsius\":", sensor.number);
    addFlag(json, ",\"short\":", sensor.lists != InLists::full);
    addFlag(json, ",\"read\":", sensor.isRead);
    json.raw("}");
  });
}

void addFans(JsonText& json, const PassView& view, const SensorIds& ids) {
  json.raw(",\"fans\":");
  addArray(json, view.fans, [&](size_t i) {
    const SensorView& fan = view.fans[i];
    addText(json, "{\"id\":", ids.fans[i]);
    addText(json, ",\"name\":", fan.name);
    addNumber(json, ",\"rpm\":", fan.number);
    addFlag(json, ",\"read\":", fan.isRead);
    json.raw("}");
  });
}

void addTraffic(JsonText& json, std::string_view begin, const DiskTraffic& moved) {
  json.raw(begin);
  addNumber(json, "{\"rate\":", moved.rate);
  addNumber(json, ",\"total\":", moved.total);
  json.raw(",\"history\":");
  addArray(json, moved.history, [&](size_t i) { json.finite(moved.history[i]); });
  json.raw("}");
}

void addDisks(JsonText& json, const DisksView& disks) {
  addTraffic(json, ",\"disks\":{\"read\":", disks.read);
  addTraffic(json, ",\"write\":", disks.written);
  addNumber(json, ",\"scale\":", disks.historyScale);
  addText(json, ",\"scaleText\":", disks.historyScaleText);
  json.raw("}");
}

void addComputer(JsonText& json, const PassView& view) {
  addText(json, "{\"machine\":", view.name);
  addFlag(json, ",\"simulated\":", view.isSimulated);
  addText(json, ",\"processor\":", view.processor);
  addNumber(json, ",\"cores\":", view.cores);
  addText(json, ",\"host\":", view.hostName);
  addText(json, ",\"uptime\":", view.uptime);
  addText(json, ",\"memoryUsed\":", view.memoryUsed);
  addText(json, ",\"memoryTotal\":", view.memoryTotal);
}

void addPass(JsonText& json, const PassView& view, std::chrono::duration<double> interval) {
  addNumber(json, ",\"pass\":", view.number);
  addText(json, ",\"time\":", isoDate(view.time));
  addNumber(json, ",\"interval\":", interval.count());
  addNumber(json, ",\"cost\":", std::chrono::duration<double>(view.cost).count());
  json.raw(",\"exception\":");
  if (view.exception) {
    json.text(*view.exception);
  } else {
    json.raw("null");
  }
}

}  // namespace

std::string readingsJson(const PassView& view, const SensorIds& ids,
                         std::chrono::duration<double> interval) {
  JsonText json;
  addComputer(json, view);
  addPass(json, view, interval);
  addTemperatures(json, view, ids);
  addFans(json, view, ids);
  addDisks(json, view.disks);
  json.raw("}\n");
  return json.take();
}

}  // namespace halvermonte
