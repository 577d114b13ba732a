// The catalogue as people wrote it down: a list of its own, which says what a key ends up with and
// not how it gets there.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace halvermonte::test {

/// The chips whose cores stand on different keys.
enum class Chip { m1, m2, m3, m4Large, other };

std::vector<std::string> expectedTemperatureKeys();
std::vector<std::string> expectedVoltageKeys();
std::vector<std::string> expectedCurrentKeys();
std::vector<std::string> expectedPowerKeys();

/// The name of every key that has one.
std::map<std::string, std::string> expectedNames(Chip chip, int32_t cores);

}  // namespace halvermonte::test
