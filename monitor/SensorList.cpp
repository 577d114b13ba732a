#include "monitor/SensorList.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <vector>

#include "engine/CatalogueTables.hpp"
#include "engine/EngineState.hpp"
#include "engine/Fans.hpp"
#include "engine/FixedTemperatures.hpp"
#include "engine/HIDTemperatures.hpp"
#include "engine/HalvermonteSensorsEngine.hpp"
#include "monitor/Line.hpp"
#include "platform/linux/LinuxMachine.hpp"
#include "smc/SMC.h"

namespace halvermonte {
namespace {

using Row = std::array<std::string, 4>;  // key, name or reason, source, reading
using Rows = std::vector<Row>;

std::string nameOfFan(int fan) {
  uint32_t conn = 0;
  if (SMCOpen(&conn) != 0) return "";
  std::string name = fanName(fan, conn);
  SMCClose(conn);
  return name;
}

bool isOfFan(const std::string& key, std::string_view end) {
  return key.size() == 4 && key[0] == 'F' && key[1] >= '0' && key[1] <= '9' && key.ends_with(end);
}

/// The name under which a key's reading is shown, or why it is not.
std::string nameOfKey(const std::string& key, const EngineState& engine) {
  if (const Text name = engine.smcKeyHumanReadableNames.find(key).asText()) {
    const bool isSampled = std::find(std::begin(kTemperatureKeys), std::end(kTemperatureKeys),
                                     key) != std::end(kTemperatureKeys);
    return std::string(name.view()) + (isSampled ? "" : " (not sampled)");
  }
  if (const std::string_view name = fixedTemperatureName(key); !name.empty()) {
    return std::string(name) + " (short list)";
  }
  if (key == "FNum") return "(number of fans)";
  if (isOfFan(key, "Ac")) return nameOfFan(key[1] - '0') + " (fan)";
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

/// The file's text, and what there is to say about it.
std::string readingOf(const SensorListing& sensor) {
  if (sensor.raw.empty()) return sensor.state;
  return sensor.state == "read" ? sensor.raw : sensor.raw + ", " + sensor.state;
}

Rows rowsOf(LinuxMachine& machine, const EngineState& engine) {
  Rows rows;
  for (const SensorListing& sensor : machine.inventory()) {
    const std::string name =
        sensor.key.empty() ? sensor.quantity + ": " + sensor.reason : nameOfKey(sensor.key, engine);
    std::string source = sensor.driver + " " + sensor.device + "/" + sensor.file;
    if (!sensor.label.empty()) source += " \"" + sensor.label + "\"";
    rows.push_back({sensor.key.empty() ? "-" : sensor.key, name, source, readingOf(sensor)});
  }
  return rows;
}

void addKeys(SimulatedMachine& machine, const EngineState& engine, Rows& rows) {
  uint32_t conn = 0;
  if (SMCOpen(&conn) != 0) return;
  for (const uint32_t code : machine.answeredKeys()) {
    char key[5];
    _ultostr(key, code);
    SMCValue value;
    const int answer = SMCReadKey(key, &value, conn);
    const bool read = answer == 0 && value.dataSize != 0;
    rows.push_back({key, nameOfKey(key, engine), std::string("SMC ") + value.dataType,
                    read ? hex(value.bytes, value.dataSize) : "no reading"});
  }
  SMCClose(conn);
}

void addServices(Machine& machine, HIDSensorKind kind, const char* source, Rows& rows) {
  const auto services = machine.hidServices(kind);
  if (services == nullptr) return;
  for (const HIDService& service : *services) {
    const std::string product = service.product.value_or("Unknown");
    const std::string_view name =
        kind == HIDSensorKind::temperature ? hidDisplayName(product) : std::string_view();
    rows.push_back({"-", name.empty() ? "not shown by itself" : std::string(name),
                    std::string(source) + " \"" + product + "\"",
                    service.value ? std::to_string(*service.value) : "no event"});
  }
}

Rows rowsOf(SimulatedMachine& machine, const EngineState& engine) {
  Rows rows;
  addKeys(machine, engine, rows);
  addServices(machine, HIDSensorKind::temperature, "HID temperature", rows);
  addServices(machine, HIDSensorKind::current, "HID current", rows);
  addServices(machine, HIDSensorKind::voltage, "HID voltage", rows);
  return rows;
}

std::string readingOf(const Drive& drive) {
  if (std::holds_alternative<UnreadableDrive>(drive)) return "unreadable";
  const auto* const statistics = std::get_if<DriveStatistics>(&drive);
  if (statistics == nullptr) return "no statistics";
  return std::to_string(statistics->bytesRead.value_or(0)) + " bytes read, " +
         std::to_string(statistics->bytesWritten.value_or(0)) + " written";
}

void addDrives(Machine& machine, Rows& rows) {
  auto* const computer = dynamic_cast<LinuxMachine*>(&machine);
  const size_t count = machine.driveCount().value_or(0);
  machine.beginDriveWalk();
  for (size_t i = 0; i < count; ++i) {
    const std::string source = computer != nullptr ? "block " + computer->driveSource(i)
                                                   : "drive " + std::to_string(i + 1);
    rows.push_back({"-", "Disks", source, readingOf(machine.drive(i))});
  }
}

std::string aligned(const Rows& rows) {
  std::array<size_t, 4> widths{};
  for (const Row& row : rows) {
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], cells(row[i]));
  }
  std::string text;
  for (const Row& row : rows) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
      line += leftAligned(printable(row[i], true), widths[i]) + "  ";
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace

std::string sensorList(ChosenMachine& machine) {
  const ScopedMachine scope(*machine.machine);
  const HalvermonteSensorsEngine engine;
  Rows rows = {{"key", "name", "source", "reading"}};
  const Rows found = machine.simulated != nullptr
                         ? rowsOf(*machine.simulated, engine.state())
                         : rowsOf(dynamic_cast<LinuxMachine&>(*machine.machine), engine.state());
  rows.insert(rows.end(), found.begin(), found.end());
  addDrives(*machine.machine, rows);
  return machine.title + "\n\n" + aligned(rows);
}

}  // namespace halvermonte
