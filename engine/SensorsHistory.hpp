// What was last reported for each sensor, to damp sudden falls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace halvermonte {

/// Catalogue sensors are found by their SMC key, HID sensors by their display name. Both are in one
/// map, so that two sensors of one name share an entry. Entries are never removed.
class SensorsHistory {
 public:
  /// Returns and remembers the value to report: the reading, or one degree below the last reported
  /// value if the reading is more than 25 degrees below it.
  int32_t clamped(std::string_view sensor, int32_t reading);

  size_t size() const noexcept { return reported_.size(); }

 private:
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  std::unordered_map<std::string, int32_t, Hash, std::equal_to<>> reported_;
};

}  // namespace halvermonte
