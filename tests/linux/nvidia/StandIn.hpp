// What stands in for NVIDIA's management library: a library of the same functions whose answers a
// test decides. The numbers of codes and flags are those of NVIDIA's reference.
#pragma once

#include <array>
#include <atomic>

namespace halvermonte::test {

struct StandInDevice {
  const char* address = "";
  unsigned degrees = 0;
  unsigned turnsPerMinute = 0;
  int temperatureCode = 0;
  int fanCode = 0;
  std::atomic<int> attached = 0;  ///< how often it was initialised
};

/// Lives in the library, as long as that is loaded.
struct StandIn {
  std::array<StandInDevice, 2> devices;
  int initialiseCode = 0;
  std::atomic<unsigned> flags = 0;  ///< of the latest initialisation
  std::atomic<int> initialised = 0, shutDowns = 0;
  void (*onTemperature)(void*) = nullptr;  ///< called while a temperature is read
  void* context = nullptr;
};

/// The name of the function that returns it.
inline constexpr const char* kStandInFunction = "halvermonteStandIn";
using StandInFunction = StandIn*();

}  // namespace halvermonte::test
