#include "halvermonte/SensorSources.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "engine/EngineState.hpp"
#include "engine/Fans.hpp"
#include "engine/FixedTemperatures.hpp"
#include "engine/HIDTemperatures.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/SMC.h"
#include "halvermonte/Values.hpp"
#include "platform/portable/HexText.hpp"

namespace halvermonte {
namespace {

struct QuantityUnit {
  std::string_view quantity, unit;
};
constexpr QuantityUnit kUnits[] = {{"temperature", "°C"}, {"fan", "rpm"},     {"voltage", "V"},
                                   {"current", "A"},      {"power", "W"},     {"energy", "J"},
                                   {"humidity", "%"},     {"frequency", "Hz"}};

std::string_view unitOf(std::string_view quantity) {
  const auto row = std::ranges::find(kUnits, quantity, &QuantityUnit::quantity);
  return row == std::end(kUnits) ? std::string_view() : row->unit;
}

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

int fanOf(const std::string& key) { return key[1] - '0'; }

bool isSampled(const std::string& key, const EngineState& engine) {
  return std::ranges::any_of(engine.smcTempKeys,
                             [&](const Value& sampled) { return sampled.asText() == key; });
}

/// What a key stands for, and the name and list that show it, or why none does.
SensorSource ofKey(const std::string& key, const EngineState& engine, const Controller& smc) {
  if (const Text name = engine.smcKeyHumanReadableNames.find(key).asText()) {
    if (isSampled(key, engine)) {
      return {.name = name.str(), .shownIn = ShownIn::fullList, .quantity = "temperature"};
    }
    return {.quantity = "temperature", .reason = name.str() + " is not sampled"};
  }
  if (const std::string_view name = fixedTemperatureName(key); !name.empty()) {
    return {.name = std::string(name), .shownIn = ShownIn::shortList, .quantity = "temperature"};
  }
  if (isOfFan(key, "Ac")) {
    return {.name = fanName(fanOf(key), smc.number()), .shownIn = ShownIn::fans, .quantity = "fan"};
  }
  if (isOfFan(key, "ID")) return {.reason = "the name of a fan"};
  if (key == "FNum") return {.reason = "the number of fans"};
  return {.reason = "no name on this processor"};
}

void addReason(SensorSource& sensor, std::string_view reason) {
  if (!sensor.reason.empty()) sensor.reason += "; ";
  sensor.reason += reason;
}

/// The reading that a pass gets.
std::optional<double> numberOf(const std::string& key, std::string_view quantity,
                               const Controller& smc) {
  if (quantity == "fan") return SMCGetFanSpeed(fanOf(key), smc.number());
  if (quantity != "temperature") return std::nullopt;
  const double degrees = SMCGetTemperature(key.c_str(), smc.number());
  return degrees == -1 ? std::nullopt : std::optional(degrees);
}

/// Fills in what the controller says of a sensor that is known only as a key.
void readKey(SensorSource& sensor, const Controller& smc) {
  SMCValue value;
  const int code = SMCReadKey(sensor.key.c_str(), &value, smc.number());
  sensor.source = std::string("SMC ") + value.dataType;
  sensor.source.erase(sensor.source.find_last_not_of(' ') + 1);  // as of "flt "
  if (code == 0 && value.dataSize != 0) {
    const size_t size = std::min<size_t>(value.dataSize, sizeof value.bytes);
    sensor.raw = hexOfBytes({reinterpret_cast<const char*>(value.bytes), size});
    sensor.number = numberOf(sensor.key, sensor.quantity, smc);
  }
  const bool isRead = sensor.quantity.empty() ? !sensor.raw.empty() : sensor.number.has_value();
  if (!isRead) addReason(sensor, "no reading");
}

/// Fills in what the machine says of a sensor.
void readListing(SensorSource& sensor, const SensorListing& listing, const Controller& smc) {
  sensor.driver = listing.driver;
  sensor.source = listing.driver + " " + listing.device + "/" + listing.file;
  sensor.label = listing.label;
  sensor.quantity = listing.quantity;
  sensor.raw = listing.raw;
  sensor.number = listing.number;
  if (!sensor.number && !sensor.key.empty() && smc.isOpen()) {
    sensor.number = numberOf(sensor.key, sensor.quantity, smc);
  }
  if (sensor.key.empty()) sensor.reason = listing.reason;
  if (sensor.number) return;
  const bool isExplained = !listing.state.empty() && listing.state != "read";
  addReason(sensor, isExplained ? listing.state : "no reading");
}

void addSensors(Machine& machine, const EngineState& engine, std::vector<SensorSource>& sources) {
  const Controller smc;
  for (const SensorListing& listing : machine.inventory()) {
    const bool isKeyAlone = listing.driver.empty();
    if (isKeyAlone && !smc.isOpen()) continue;
    SensorSource sensor;
    if (!listing.key.empty()) sensor = ofKey(listing.key, engine, smc);
    sensor.key = listing.key;
    if (isKeyAlone) {
      readKey(sensor, smc);
    } else {
      readListing(sensor, listing, smc);
    }
    sensor.unit = unitOf(sensor.quantity);
    sources.push_back(std::move(sensor));
  }
}

struct ServiceKind {
  HIDSensorKind kind;
  const char* quantity;
};
constexpr ServiceKind kServiceKinds[] = {{HIDSensorKind::temperature, "temperature"},
                                         {HIDSensorKind::current, "current"},
                                         {HIDSensorKind::voltage, "voltage"}};

SensorSource ofService(const HIDService& service, const ServiceKind& kind) {
  SensorSource sensor{.source = std::string("HID ") + kind.quantity,
                      .label = service.product.value_or(""),
                      .quantity = kind.quantity,
                      .number = service.value,
                      .unit = unitOf(kind.quantity)};
  if (kind.kind == HIDSensorKind::temperature) sensor.name = hidDisplayName(sensor.label);
  if (sensor.name.empty()) {
    addReason(sensor, "not shown by itself");
  } else {
    sensor.shownIn = ShownIn::fullList;
  }
  if (!service.value) addReason(sensor, "no event");
  return sensor;
}

void addServices(Machine& machine, const ServiceKind& kind, std::vector<SensorSource>& sources) {
  const auto services = machine.hidServices(kind.kind);
  if (services == nullptr) return;
  for (const HIDService& service : *services) sources.push_back(ofService(service, kind));
}

}  // namespace

std::vector<SensorSource> sensorSources(const HalvermonteSensorsEngine& engine, Machine& machine) {
  const ScopedMachine scope(machine);
  std::vector<SensorSource> sources;
  addSensors(machine, engine.state(), sources);
  for (const ServiceKind& kind : kServiceKinds) addServices(machine, kind, sources);
  return sources;
}

std::vector<SampledKey> sampledKeys(const HalvermonteSensorsEngine& engine) {
  const EngineState& state = engine.state();
  std::vector<SampledKey> keys;
  for (const Value& value : state.smcTempKeys) {
    const Text key = value.asText();
    const Text name = state.smcKeyHumanReadableNames.find(key.view()).asText();
    if (name) keys.push_back({key.str(), name.str()});
  }
  return keys;
}

std::string_view listedNameOfService(std::string_view product) { return hidDisplayName(product); }

}  // namespace halvermonte
