// Where readings come from: every sensor that a machine knows, shown or not, with its reading, and
// the reason if it is not shown. For a list of sensors, a detail pane or an exporter. Not on macOS.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/Export.h"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Machine.hpp"

namespace halvermonte {

/// The list of the record that has a sensor's reading.
enum class ShownIn : uint8_t {
  nothing,
  fullList,   ///< of temperatures; averages of HID sensors are in the short list, too
  shortList,  ///< of temperatures
  fans,
};

/// Texts are UTF-8, except those that hardware gives: `label` and `raw` may hold any byte.
struct SensorSource {
  /// Under which it is shown, alone or in an average; "" if it is not shown.
  std::string name = "";
  ShownIn shownIn = ShownIn::nothing;
  /// The controller's; "" if it has none.
  std::string key = "";
  /// The kernel's, "coretemp"; "" if it has none.
  std::string driver = "";
  /// "coretemp platform/coretemp.0/temp1_input", "SMC sp78" or "HID temperature".
  std::string source = "";
  /// The kernel's label or the HID service's product; "" if there is none.
  std::string label = "";
  /// "temperature", "fan", "voltage", "current", "power", "energy", "humidity" or "frequency"; ""
  /// if it is not known.
  std::string quantity = "";
  /// As read now; absent if there is no reading.
  std::optional<double> number = std::nullopt;
  /// The number's: "°C", "rpm", "V", "A", "W", "J", "%" or "Hz"; "" if the quantity is not known.
  /// The characters are constant.
  std::string_view unit = "";
  /// The file's text, or the controller's bytes as hex digits; "" if there is none.
  std::string raw = "";
  /// Why it is not shown or has no reading; "" if neither.
  std::string reason = "";
};

/// Returns the sensors in the machine's order: those that it lists, then its HID sensors. Reads
/// them: on a computer, that may take 0.3 seconds. Call it between two passes of the engine, on
/// their thread. REQUIRES: the engine was made over the machine.
HALVERMONTE_EXPORT std::vector<SensorSource> sensorSources(const HalvermonteSensorsEngine& engine,
                                                           Machine& machine);

/// A key that each pass asks the controller for, and the name of its reading in the full list.
struct SampledKey {
  std::string key;
  std::string name;
};

/// Returns the keys that the engine samples, in its order. Asks the machine nothing.
HALVERMONTE_EXPORT std::vector<SampledKey> sampledKeys(const HalvermonteSensorsEngine& engine);

/// Returns the name under which the full list has a HID temperature service, alone or in an
/// average; "" if it has none for the product. The characters are constant.
HALVERMONTE_EXPORT std::string_view listedNameOfService(std::string_view product);

}  // namespace halvermonte
