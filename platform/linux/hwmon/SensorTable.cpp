#include "platform/linux/hwmon/SensorTable.hpp"

#include <array>
#include <cstddef>

namespace halvermonte::linuxos {
namespace {

constexpr std::string_view kPackages = "TC0D TC1D";
constexpr std::string_view kCores = "TC1C TC2C TC3C TC4C TC5C TC6C TC7C TC8C";
constexpr std::string_view kMemory =
    "TM0P TM1P TM8P TM9P TM0S TM1S TM8S TM9S Tm01 Tm05 Tm09 Tm0D Tm0L Tm0P Tm0T Tm0X";
constexpr std::string_view kWireless = "iwlwifi*|ath*k_hwmon|mt7*_phy*";
constexpr std::string_view kGraphics = "amdgpu|i915|nouveau|radeon|xe";
constexpr std::string_view kBoards = "nct61*|nct67*";
constexpr std::string_view kBatteries = "BAT*|CMB*|macsmc_battery";

constexpr auto kKeyRows = std::to_array<KeyRow>({
    // A Mac's controller. Margins read as -40 degrees and below, absent sensors as -127.
    {"applesmc", "*", kLabelIsKey, -39, 126},
    {"macsmc_hwmon", "*", kKeyInDeviceTree, -39, 126},

    // The processor. If AMD has Tdie, Tctl is Tdie plus an offset.
    {"coretemp", "Package id *|Physical id *", kPackages, 1, 125, Spread::package},
    {"coretemp", "Core *", kCores, 1, 125},
    {"k10temp|zenpower", "Tdie|Tctl|temp1", kPackages, 1, 125, Spread::package},
    {"k10temp|zenpower", "Tccd1", "TC0E", 1, 125, Spread::package},
    {"k10temp|zenpower", "Tccd2", "TC0F TC1F", 1, 125, Spread::package},
    {"cpu_thermal|soc_thermal", "temp1", kPackages, 1, 125},

    // Near the processor. Unconnected inputs of a board's monitor read 90 degrees and more.
    {"thinkpad|dell_smm|asusec", "CPU", "TC0P", 1, 125},
    {kBoards, "CPUTIN", "TC0P", 1, 89},
    {"asusec", "CPU Package", "TCAD", 1, 125},
    {kBoards, "PECI Agent 0|PECI Agent 0 Calibration", "TCXC", 1, 125},

    // Graphics.
    {"amdgpu", "junction", "TG0D TG1D", 1, 125},
    {"amdgpu", "edge|temp1", "TG0D TG0P TG1D", 1, 125},
    {"nouveau|radeon|i915", "temp1", "TG0D TG1D", 1, 125},
    {"xe", "pkg|temp*", "TG0D TG1D", 1, 125},
    {"gpu_thermal", "temp1", "TG0D TG1D", 1, 125},
    {"thinkpad|dell_smm", "GPU", "TG0P", 1, 125},

    // Memory and chipset. A chipset without a reading reads 0.
    {"jc42|spd5118", "temp1", kMemory, 1, 125},
    {"dell_smm", "SODIMM", "Ts0S", 1, 125},
    {"pch_*", "temp1", "TP0D", 1, 125},
    {"asusec", "Chipset", "TP0D", 1, 125},
    {kBoards, "PCH_CHIP_TEMP", "TP0D", 1, 125},
    {kBoards, "PCH_MCH_TEMP", "TN0C", 1, 125},

    // Drives, radio, battery.
    {"nvme", "Composite|temp1", "TH0a TH0P TH1P TH2P TH3P", 1, 125},
    {"drivetemp", "temp1", "TH0P TH1P TH2P TH3P TH0a", 1, 100},
    {kWireless, "temp1", "TW0P", 1, 125},
    {kBatteries, "temp", "TB1T TB2T TB3T", 1, 100},

    // The air in the case, and the firmware's thermal zones.
    {"dell_smm", "Ambient", "TA0P TA1P", 1, 100},
    {kBoards, "SYSTIN", "TA0P TA1P", 1, 89},
    {"asusec", "Motherboard", "TA0P TA1P", 1, 100},
    {"acpitz", "temp*", "TA0P TA1P", 1, 125},
});

constexpr auto kReadPolicyRows = std::to_array<ReadPolicyRow>({
    {"nvme", ReadPolicy::command},
    {kWireless, ReadPolicy::command},
    {"drivetemp", ReadPolicy::onRequest},
    {kGraphics, ReadPolicy::maySleep},
});

bool matchesOne(std::string_view pattern, std::string_view text) {
  if (pattern.empty()) return text.empty();
  if (pattern.front() == '*') {
    return matchesOne(pattern.substr(1), text) ||
           (!text.empty() && matchesOne(pattern, text.substr(1)));
  }
  return !text.empty() && pattern.front() == text.front() &&
         matchesOne(pattern.substr(1), text.substr(1));
}

}  // namespace

bool matches(std::string_view patterns, std::string_view text) {
  for (;;) {
    const size_t end = patterns.find('|');
    if (matchesOne(patterns.substr(0, end), text)) return true;
    if (end == patterns.npos) return false;
    patterns.remove_prefix(end + 1);
  }
}

std::span<const KeyRow> keyRows() { return kKeyRows; }

std::span<const ReadPolicyRow> readPolicyRows() { return kReadPolicyRows; }

}  // namespace halvermonte::linuxos
