#include "monitor/live/Origins.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/EngineState.hpp"
#include "engine/FixedTemperatures.hpp"
#include "engine/HIDTemperatures.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/Values.hpp"

namespace halvermonte {
namespace {

Origin originOf(const SensorListing& sensor) {
  std::string text = "key " + sensor.key;
  if (sensor.driver.empty()) return {"", text};
  text += ", " + sensor.driver + " " + sensor.device + "/" + sensor.file;
  if (!sensor.label.empty()) text += " \"" + sensor.label + "\"";
  return {sensor.driver, std::move(text)};
}

/// Adds what one more sensor of the same name comes from.
void addTo(Origins& origins, const Track& track, Origin origin) {
  const auto [it, isNew] = origins.try_emplace(track, std::move(origin));
  if (!isNew) it->second.text += "; " + origin.text;
}

bool isFanSpeed(std::string_view key) {
  return key.size() == 4 && key[0] == 'F' && key[1] >= '0' && key[1] <= '9' && key.ends_with("Ac");
}

void addKeys(const EngineState& engine, const SensorInventory& inventory, Origins& origins) {
  for (const SensorListing& sensor : inventory) {
    if (const Text name = engine.smcKeyHumanReadableNames.find(sensor.key).asText()) {
      addTo(origins, {Quantity::temperature, name.str()}, originOf(sensor));
    }
  }
  for (const SensorListing& sensor : inventory) {
    const std::string_view name = fixedTemperatureName(sensor.key);
    if (!name.empty()) {
      origins.try_emplace({Quantity::temperature, std::string(name)}, originOf(sensor));
    }
  }
}

/// The fans of the list are those of the keys in order, unless one is left out.
void addFans(const SensorInventory& inventory, const PassView& view, Origins& origins) {
  std::vector<const SensorListing*> speeds;
  for (const SensorListing& sensor : inventory) {
    if (isFanSpeed(sensor.key)) speeds.push_back(&sensor);
  }
  if (speeds.size() != view.fans.size()) return;
  for (size_t i = 0; i < speeds.size(); ++i) {
    origins[{Quantity::fan, view.fans[i].identity}] = originOf(*speeds[i]);
  }
}

void addServices(const HIDServices& services, Origins& origins) {
  for (const HIDService& service : services) {
    const std::string product = service.product.value_or("");
    const std::string_view name = hidDisplayName(product);
    if (name.empty()) continue;
    addTo(origins, {Quantity::temperature, std::string(name)},
          {"", "HID service \"" + product + "\""});
  }
}

}  // namespace

Origins findOrigins(const HalvermonteSensorsEngine& engine, Machine& machine,
                    const PassView& view) {
  Origins origins;
  const SensorInventory inventory = machine.inventory();
  addKeys(engine.state(), inventory, origins);
  addFans(inventory, view, origins);
  if (const auto services = machine.hidServices(HIDSensorKind::temperature)) {
    addServices(*services, origins);
  }
  return origins;
}

}  // namespace halvermonte
