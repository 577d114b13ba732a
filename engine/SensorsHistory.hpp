// What was last reported for each sensor, to damp sudden falls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace halvermonte {

/// By SMC key for catalogue sensors, by display name for HID sensors: one map, so that two sensors
/// of one name share an entry. Entries are never removed.
class SensorsHistory {
 public:
  /// The value to report: the reading itself, but after a fall of more than 25 degrees one degree
  /// below the last reported value. It is remembered under the sensor's name.
  int32_t clamped(std::string_view sensor, int32_t reading);

  size_t size() const noexcept { return reported_.size(); }

 private:
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  std::unordered_map<std::string, int32_t, Hash, std::equal_to<>> reported_;
};

}  // namespace halvermonte
