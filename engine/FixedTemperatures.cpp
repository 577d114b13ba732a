#include "engine/FixedTemperatures.hpp"

#include "halvermonte/SMC.h"
#include "platform/Conversions.hpp"

namespace halvermonte {
namespace {

struct FixedKey {
  const char* key;
  const char* name;
};
constexpr std::array<FixedKey, kFixedReadings> kFixedKeys = {{
    {"TA0P", "Airflow (Fans)"},
    {"TA1P", "Airflow (DC-in)"},
    {"TC0P", "CPU Proximity"},
    {"TC0D", "CPU Diode"},
    {"TG0P", "GPU Proximity"},
    {"TG0D", "GPU Diode"},
    {"TN0D", "North Bridge"},
    {"TM0P", "Memory"},
    {"TB0T", "Battery"},
    {"TH0P", "HDD"},
    {"TB0T", "Enclosure"},
    {"TB1T", "Enclosure 1"},
    {"TB2T", "Enclosure 2"},
    {"TB3T", "Enclosure 3"},
    {"TW0P", "Wi-Fi"},
    {"TI0P", "Thunderbolt 0"},
    {"TI1P", "Thunderbolt 1"},
}};

}  // namespace

FixedReadings readFixedTemperatures(uint32_t conn) {
  FixedReadings readings{};
  for (size_t i = 0; i < kFixedReadings; ++i) {
    readings[i] = SMCGetTemperature(kFixedKeys[i].key, conn);
  }
  return readings;
}

std::string_view fixedTemperatureName(std::string_view key) {
  for (const FixedKey& row : kFixedKeys) {
    if (key == row.key) return row.name;
  }
  return {};
}

void addFixedTemperatures(const FixedReadings& readings, TextPair& mini) {
  for (size_t i = 0; i < kFixedReadings; ++i) {
    const auto degrees = truncated<int32_t>(readings[i]);
    if (degrees >= 1 && degrees <= 109) mini.append(kFixedKeys[i].name, degrees);
  }
}

}  // namespace halvermonte
