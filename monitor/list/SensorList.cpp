#include "monitor/list/SensorList.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "engine/EngineState.hpp"
#include "engine/Fans.hpp"
#include "engine/FixedTemperatures.hpp"
#include "engine/HIDTemperatures.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/SMC.h"
#include "halvermonte/Values.hpp"
#include "monitor/Line.hpp"

namespace halvermonte {
namespace {

using Row = std::array<std::string, 4>;  // key, name or reason, source, reading
using Rows = std::vector<Row>;

/// A connection to the machine's controller.
class Controller {
 public:
  Controller() : isOpen_(SMCOpen(&number_) == 0) {}
  ~Controller() {
    if (isOpen_) SMCClose(number_);
  }
  Controller(const Controller&) = delete;
  Controller& operator=(const Controller&) = delete;

  bool isOpen() const { return isOpen_; }
  uint32_t number() const { return number_; }

 private:
  uint32_t number_ = 0;
  bool isOpen_;
};

bool isOfFan(const std::string& key, std::string_view end) {
  return key.size() == 4 && key[0] == 'F' && key[1] >= '0' && key[1] <= '9' && key.ends_with(end);
}

bool isSampled(const std::string& key, const EngineState& engine) {
  return std::ranges::any_of(engine.smcTempKeys,
                             [&](const Value& sampled) { return sampled.asText() == key; });
}

/// The name under which a key's reading is shown, or why it is not.
std::string nameOfKey(const std::string& key, const EngineState& engine,
                      const Controller& controller) {
  if (const Text name = engine.smcKeyHumanReadableNames.find(key).asText()) {
    return name.str() + (isSampled(key, engine) ? "" : " (not sampled)");
  }
  if (const std::string_view name = fixedTemperatureName(key); !name.empty()) {
    return std::string(name) + " (short list)";
  }
  if (key == "FNum") return "(number of fans)";
  if (isOfFan(key, "Ac")) return fanName(key[1] - '0', controller.number()) + " (fan)";
  if (isOfFan(key, "ID")) return "(name of a fan)";
  return "no name on this processor";
}

std::string hex(const uint8_t* bytes, uint32_t size) {
  std::string digits;
  for (uint32_t i = 0; i < std::min<uint32_t>(size, sizeof(SMCValue::bytes)); ++i) {
    char text[4];
    std::snprintf(text, sizeof text, "%02x", static_cast<unsigned>(bytes[i]));
    digits += text;
  }
  return digits;
}

/// The row of a sensor that is known only as a key of the controller.
Row rowOfKey(const std::string& key, const std::string& name, const Controller& controller) {
  SMCValue value;
  const int code = SMCReadKey(key.c_str(), &value, controller.number());
  const bool hasReading = code == 0 && value.dataSize != 0;
  return {key, name, std::string("SMC ") + value.dataType,
          hasReading ? hex(value.bytes, value.dataSize) : "no reading"};
}

/// The file's text, and a remark if it was not simply read.
std::string readingOf(const SensorListing& sensor) {
  if (sensor.raw.empty()) return sensor.state;
  return sensor.state == "read" ? sensor.raw : sensor.raw + ", " + sensor.state;
}

std::string sourceOf(const SensorListing& sensor) {
  const std::string file = sensor.driver + " " + sensor.device + "/" + sensor.file;
  return sensor.label.empty() ? file : file + " \"" + sensor.label + "\"";
}

void addSensors(Machine& machine, const EngineState& engine, Rows& rows) {
  const Controller controller;
  for (const SensorListing& sensor : machine.inventory()) {
    if (sensor.key.empty()) {
      rows.push_back(
          {"-", sensor.quantity + ": " + sensor.reason, sourceOf(sensor), readingOf(sensor)});
      continue;
    }
    const std::string name = nameOfKey(sensor.key, engine, controller);
    if (!sensor.driver.empty()) {
      rows.push_back({sensor.key, name, sourceOf(sensor), readingOf(sensor)});
    } else if (controller.isOpen()) {
      rows.push_back(rowOfKey(sensor.key, name, controller));
    }
  }
}

struct ServiceKind {
  HIDSensorKind kind;
  const char* source;
};
constexpr ServiceKind kServiceKinds[] = {{HIDSensorKind::temperature, "HID temperature"},
                                         {HIDSensorKind::current, "HID current"},
                                         {HIDSensorKind::voltage, "HID voltage"}};

void addServices(Machine& machine, const ServiceKind& kind, Rows& rows) {
  const auto services = machine.hidServices(kind.kind);
  if (services == nullptr) return;
  for (const HIDService& service : *services) {
    const std::string product = service.product.value_or("Unknown");
    const std::string_view name =
        kind.kind == HIDSensorKind::temperature ? hidDisplayName(product) : std::string_view();
    rows.push_back({"-", name.empty() ? "not shown by itself" : std::string(name),
                    std::string(kind.source) + " \"" + product + "\"",
                    service.value ? std::to_string(*service.value) : "no event"});
  }
}

std::string readingOf(const Drive& drive) {
  if (std::holds_alternative<UnreadableDrive>(drive)) return "unreadable";
  const auto* const statistics = std::get_if<DriveStatistics>(&drive);
  if (statistics == nullptr) return "no statistics";
  return std::to_string(statistics->bytesRead.value_or(0)) + " bytes read, " +
         std::to_string(statistics->bytesWritten.value_or(0)) + " written";
}

void addDrives(Machine& machine, Rows& rows) {
  const size_t count = machine.driveCount().value_or(0);
  machine.beginDriveWalk();
  for (size_t i = 0; i < count; ++i) {
    const std::string source = machine.driveSource(i);
    rows.push_back({"-", "Disks",
                    source.empty() ? "drive " + std::to_string(i + 1) : "block " + source,
                    readingOf(machine.drive(i))});
  }
}

std::string aligned(Rows rows) {
  for (Row& row : rows)
    std::ranges::transform(row, row.begin(),
                           [](const std::string& cell) { return printable(cell, true); });
  std::array<size_t, 4> widths{};
  for (const Row& row : rows) {
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], cells(row[i]));
  }
  std::string text;
  for (const Row& row : rows) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
      line += leftAligned(row[i], widths[i]) + "  ";
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace

std::string sensorList(Sampling& sampling) {
  Machine& machine = sampling.machine();
  Rows rows = {{"key", "name", "source", "reading"}};
  addSensors(machine, sampling.engine().state(), rows);
  for (const ServiceKind& kind : kServiceKinds) addServices(machine, kind, rows);
  addDrives(machine, rows);
  return printable(sampling.view().title, true) + "\n\n" + aligned(std::move(rows));
}

}  // namespace halvermonte
