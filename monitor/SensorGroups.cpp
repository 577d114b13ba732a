#include "monitor/SensorGroups.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace halvermonte {
namespace {

struct GroupName {
  SensorGroup group;
  std::string_view name;
};
constexpr GroupName kNames[] = {
    {SensorGroup::cpu, "CPU"},       {SensorGroup::gpu, "GPU"},
    {SensorGroup::memory, "Memory"}, {SensorGroup::drives, "Drives"},
    {SensorGroup::power, "Power"},   {SensorGroup::airAndBoard, "Air and board"},
    {SensorGroup::other, "Other"}};

constexpr std::string_view kDriveDrivers[] = {"nvme", "drivetemp"};

/// A name that has a word with this beginning belongs to the group. The first row that fits
/// decides: "GPU Memory" is the GPU's, and "CPU 1 DIMM A1" is memory.
struct WordRule {
  std::string_view beginning;  ///< the case does not matter
  SensorGroup group;
};
constexpr WordRule kWordRules[] = {
    {"Airport", SensorGroup::other},
    {"Wi-Fi", SensorGroup::other},
    {"Airflow", SensorGroup::airAndBoard},
    {"GPU", SensorGroup::gpu},
    {"DIMM", SensorGroup::memory},
    {"SODIMM", SensorGroup::memory},
    {"Mem", SensorGroup::memory},
    {"Batter", SensorGroup::power},
    {"Charg", SensorGroup::power},
    {"Gas Gauge", SensorGroup::power},
    {"Power", SensorGroup::power},
    {"PSU", SensorGroup::power},
    {"VRM", SensorGroup::power},
    {"Disk", SensorGroup::drives},
    {"Drive", SensorGroup::drives},
    {"HDD", SensorGroup::drives},
    {"NVMe", SensorGroup::drives},
    {"Optical", SensorGroup::drives},
    {"SSD", SensorGroup::drives},
    {"Core", SensorGroup::cpu},
    {"CPU", SensorGroup::cpu},
    {"Package", SensorGroup::cpu},
    {"PECI", SensorGroup::cpu},
    {"SOC", SensorGroup::cpu},
    {"Tccd", SensorGroup::cpu},
    {"Tctl", SensorGroup::cpu},
    {"Tdie", SensorGroup::cpu},
    {"Ambient", SensorGroup::airAndBoard},
    {"BLC", SensorGroup::airAndBoard},
    {"Chassis", SensorGroup::airAndBoard},
    {"Chipset", SensorGroup::airAndBoard},
    {"Coolant", SensorGroup::airAndBoard},
    {"Enclosure", SensorGroup::airAndBoard},
    {"Exhaust", SensorGroup::airAndBoard},
    {"Expansion", SensorGroup::airAndBoard},
    {"Heatpipe", SensorGroup::airAndBoard},
    {"Inlet", SensorGroup::airAndBoard},
    {"Intake", SensorGroup::airAndBoard},
    {"LCD", SensorGroup::airAndBoard},
    {"Mainboard", SensorGroup::airAndBoard},
    {"MCH", SensorGroup::airAndBoard},
    {"Motherboard", SensorGroup::airAndBoard},
    {"North", SensorGroup::airAndBoard},
    {"Palm", SensorGroup::airAndBoard},
    {"PCH", SensorGroup::airAndBoard},
    {"PCI", SensorGroup::airAndBoard},
    {"System", SensorGroup::airAndBoard},
    {"SYSTIN", SensorGroup::airAndBoard},
};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool isWordCharacter(char c) {
  return (lower(c) >= 'a' && lower(c) <= 'z') || (c >= '0' && c <= '9');
}

bool begins(std::string_view text, std::string_view beginning) {
  return text.size() >= beginning.size() &&
         std::ranges::equal(text.substr(0, beginning.size()), beginning, {}, lower, lower);
}

bool hasWord(std::string_view name, std::string_view beginning) {
  for (size_t i = 0; i < name.size(); ++i) {
    const bool isStart = i == 0 || !isWordCharacter(name[i - 1]);
    if (isStart && begins(name.substr(i), beginning)) return true;
  }
  return false;
}

}  // namespace

std::string_view nameOf(SensorGroup group) {
  return std::ranges::find(kNames, group, &GroupName::group)->name;
}

SensorGroup groupOf(std::string_view displayName, std::string_view driver) {
  if (std::ranges::find(kDriveDrivers, driver) != std::end(kDriveDrivers)) {
    return SensorGroup::drives;
  }
  const auto rule = std::ranges::find_if(
      kWordRules, [&](const WordRule& row) { return hasWord(displayName, row.beginning); });
  return rule == std::end(kWordRules) ? SensorGroup::other : rule->group;
}

}  // namespace halvermonte
