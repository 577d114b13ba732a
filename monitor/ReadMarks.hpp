// Marks the sensors of a pass that the machine does not give, or gives otherwise than shown.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "monitor/PassView.hpp"
#include "monitor/PassWatch.hpp"

namespace halvermonte {

/// The engine lets a sensor that no longer answers fall by one degree a pass, as if it were
/// getting cool, and shows a fan without an answer as stopped. What the machine answered tells the
/// difference.
class ReadMarks {
 public:
  /// Notes which keys of the controller have which name.
  explicit ReadMarks(const HalvermonteSensorsEngine& engine);

  /// Sets `isRead` and `reading` of the sensors, by the answers in the pass that the view shows.
  void mark(const PassWatch& watch, PassView& view) const;

 private:
  void markKeys(const PassWatch& watch, uint32_t conn, PassView& view) const;
  static void markServices(const HIDServices& services, PassView& view);
  static void markFans(const PassWatch& watch, uint32_t conn, PassView& view);

  std::map<std::string, std::vector<std::string>, std::less<>> keys_;  ///< by name
};

}  // namespace halvermonte
