#include "monitor/ReadMarks.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>

#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/SMC.h"
#include "halvermonte/SensorSources.hpp"

namespace halvermonte {
namespace {

/// A connection to the current machine's controller.
class Connection {
 public:
  Connection() { SMCOpen(&number_); }
  ~Connection() { SMCClose(number_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  uint32_t number() const { return number_; }

 private:
  uint32_t number_ = 0;
};

/// Cut to a whole number, as the engine does; absent for what is no temperature.
std::optional<int32_t> wholeDegrees(double degrees) {
  constexpr double kFarOff = 1e6;
  if (!(degrees > -kFarOff && degrees < kFarOff)) return std::nullopt;
  return static_cast<int32_t>(degrees);
}

void setReading(SensorView& sensor, std::optional<int32_t> reading) {
  if (reading != sensor.number) sensor.reading = reading;
}

}  // namespace

ReadMarks::ReadMarks(const HalvermonteSensorsEngine& engine) {
  for (const auto& [key, name] : sampledKeys(engine)) keys_[name].push_back(key);
}

void ReadMarks::mark(const PassWatch& watch, PassView& view) const {
  const std::unique_ptr<Machine> replay = watch.replay();
  const ScopedMachine scope(*replay);
  const Connection controller;
  markKeys(watch, controller.number(), view);
  if (watch.temperatureServices() != nullptr) markServices(*watch.temperatureServices(), view);
  markFans(watch, controller.number(), view);
}

void ReadMarks::markKeys(const PassWatch& watch, uint32_t conn, PassView& view) const {
  for (SensorView& sensor : view.temperatures) {
    const auto keys = keys_.find(sensor.name);
    // The fixed keys have no memory: what the short list alone has was read.
    if (keys == keys_.end() || sensor.lists == InLists::shortAlone) continue;
    std::optional<int32_t> highest;
    sensor.isRead = false;
    for (const std::string& key : keys->second) {
      if (!watch.hasRead(fourCharacterCode(key))) continue;
      sensor.isRead = true;
      highest = std::max(highest, wholeDegrees(SMCGetTemperature(key.c_str(), conn)));
    }
    setReading(sensor, highest);
  }
}

void ReadMarks::markServices(const HIDServices& services, PassView& view) {
  for (SensorView& sensor : view.temperatures) {
    const HIDService* first = nullptr;
    size_t members = 0;
    bool isAnyRead = false;
    for (const HIDService& service : services) {
      if (listedNameOfService(service.product.value_or("")) != sensor.name) continue;
      if (members++ == 0) first = &service;
      isAnyRead = isAnyRead || service.value.has_value();
    }
    if (members == 0) continue;
    sensor.isRead = isAnyRead;
    if (members == 1 && first->value) setReading(sensor, wholeDegrees(*first->value));
  }
}

void ReadMarks::markFans(const PassWatch& watch, uint32_t conn, PassView& view) {
  constexpr int kMostFans = 10;
  auto fan = view.fans.begin();
  for (int i = 0; i < kMostFans && fan != view.fans.end(); ++i) {
    const uint32_t key = fourCharacterCode("F" + std::to_string(i) + "Ac");
    if (!watch.wasAsked(key)) continue;
    if (SMCGetFanSpeed(i, conn) <= -1) continue;  // the engine leaves it out
    fan->isRead = watch.hasRead(key);
    ++fan;
  }
}

}  // namespace halvermonte
