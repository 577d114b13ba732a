// A machine that lists its keys, as a Mac's controller does.
#pragma once

#include <string>
#include <vector>

#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {

struct ListingMachine : TestMachine {
  SensorInventory inventory() override {
    SensorInventory all;
    for (const auto& [key, answer] : keys) {
      SensorListing sensor;
      sensor.key = key;
      all.push_back(sensor);
    }
    return all;
  }
};

/// The keys that the machine lists, in its order.
inline std::vector<std::string> keysOf(Machine& machine) {
  std::vector<std::string> keys;
  for (const SensorListing& sensor : machine.inventory()) keys.push_back(sensor.key);
  return keys;
}

}  // namespace halvermonte::test
