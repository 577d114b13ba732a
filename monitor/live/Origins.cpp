#include "monitor/live/Origins.hpp"

#include <cstddef>
#include <utility>
#include <vector>

#include "halvermonte/SensorSources.hpp"

namespace halvermonte {
namespace {

Origin originOf(const SensorSource& sensor) {
  if (sensor.key.empty()) return {"", "HID service \"" + sensor.label + "\""};
  std::string text = "key " + sensor.key;
  if (sensor.driver.empty()) return {"", text};
  text += ", " + sensor.source;
  if (!sensor.label.empty()) text += " \"" + sensor.label + "\"";
  return {sensor.driver, std::move(text)};
}

/// Adds what one more sensor of the same name comes from.
void addTo(Origins& origins, const Track& track, const Origin& origin) {
  const auto [it, isNew] = origins.try_emplace(track, origin);
  if (!isNew) it->second.text += "; " + origin.text;
}

/// The fans of the list are those of the keys in order, unless one is left out.
void addFans(const std::vector<const SensorSource*>& fans, const PassView& view, Origins& origins) {
  if (fans.size() != view.fans.size()) return;
  for (size_t i = 0; i < fans.size(); ++i) {
    origins[{Quantity::fan, view.fans[i].identity}] = originOf(*fans[i]);
  }
}

}  // namespace

Origins findOrigins(const HalvermonteSensorsEngine& engine, Machine& machine,
                    const PassView& view) {
  Origins origins;
  std::vector<const SensorSource*> fans;
  const std::vector<SensorSource> sources = sensorSources(engine, machine);
  for (const SensorSource& sensor : sources) {
    if (sensor.shownIn == ShownIn::fullList) {
      addTo(origins, {Quantity::temperature, sensor.name}, originOf(sensor));
    }
    if (sensor.shownIn == ShownIn::fans) fans.push_back(&sensor);
  }
  for (const SensorSource& sensor : sources) {
    if (sensor.shownIn != ShownIn::shortList) continue;
    origins.try_emplace({Quantity::temperature, sensor.name}, originOf(sensor));
  }
  addFans(fans, view, origins);
  return origins;
}

}  // namespace halvermonte
