#include "platform/linux/hwmon/NameTable.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace halvermonte::linuxos {
namespace {

constexpr std::string_view kWireless = "iwlwifi|ath*k_hwmon|mt7*|rtw*|(wireless)";
constexpr std::string_view kEthernet =
    "atlantic|bnxt_en|i350bb|i40e|ice|igb|igc|ixgbe|mlx5|mlx5_core|r8169|tg3|(Ethernet)";
constexpr std::string_view kGraphics = "amdgpu|i915|nouveau|nvidia|radeon|xe";
constexpr std::string_view kBoards = "nct61*|nct67*";
constexpr std::string_view kOpenBoards = "nct61*|nct67*|it8*|f718*|w83*";
constexpr std::string_view kBatteries = "BAT*|CMB*|*_bat|*_battery";
constexpr std::string_view kPowerSupplies = "cffps*|crps|dps920ab|fsp*|ibm_cffps*|pfe*";
constexpr std::string_view kCoolers = "d5next|kraken*|rog_ryujin|waterforce|x53|z53";
constexpr std::string_view kFirmwares =
    "apm_xgene|ibmpowernv|scmi_sensors|scpi_sensors|smpro_hwmon";

constexpr auto kNameRows = std::to_array<NameRow>({
    // A Mac's controller.
    {kControllers, "*", "{controller}"},

    // The processor. If AMD has Tdie, Tctl is Tdie plus an offset for the fans.
    {"coretemp", "Package id *|Physical id *", "{socket}|Package"},
    {"coretemp|via_cputemp", "Core *", "{cpu}|{core}"},
    {"k10temp|zenpower", "Tdie|temp1", "{socket}|{die}"},
    {"k10temp|zenpower", "Tctl", "{socket}|{die or control}"},
    {"k10temp|zenpower", "Tccd*", "{cpu}|CCD {n}"},
    {"cpu_thermal|cpu", "temp1", "CPU 1|Package"},
    {"peci_cputemp*", "Tcontrol|Tthrottle|Tjmax", ""},  // limits
    {"peci_cputemp*", "Die", "{socket}|Package (PECI)"},
    {"peci_cputemp*", "*", "{socket}|{label} (PECI)"},
    {"peci_dimmtemp*", "*", "{socket}|{label}"},
    {"sbtsi", "*", "CPU (TSI)"},

    // Graphics.
    {"amdgpu|i915|nouveau|nvidia|radeon|xe|gpu_thermal", "edge|pkg|temp1", "{gpu}|Die"},
    {"amdgpu|xe", "mem|vram", "{gpu}|Memory"},
    {"xe", "vram_ch_*", "{gpu}|Memory Channel {n}"},
    {"xe", "mctrl", "{gpu}|Memory Controller"},
    {kGraphics, "*", "{gpu}|{label}"},

    // Memory and chipset.
    {"jc42|spd5118", "temp1", "{memory}|Module {slot}"},
    {"i5k_amb", "*", "Memory|{label}"},
    {"pch_*", "temp1", "Chipset (PCH)"},
    {"intel5500", "temp1", "Chipset (IOH)"},

    // Drives.
    {"nvme", "Composite|temp1", "{model}"},
    {"nvme", "*", "{model}|{label}"},
    {"drivetemp", "temp1", "{model}"},

    // Network.
    {kWireless, "temp1", "Wi-Fi"},
    {kWireless, "*", "Wi-Fi|{label}"},
    {"mdio", "*", "Ethernet PHY"},
    {kEthernet, "asic|loc*|sensor0|temp1", "Ethernet"},
    {kEthernet, "*", "Ethernet|{label}"},
    {"sfp*", "*", "SFP Module"},

    // Power.
    {kBatteries, "temp|temp1", "Battery"},
    {kBatteries, "ambient temp|temp2", "Battery|Ambient"},
    {"steamdeck_hwmon", "Battery Temp", "Battery"},
    {"corsairpsu", "*", "Power Supply|{label}"},
    {kPowerSupplies, "*", "Power Supply|{label}"},

    // The board, by its own drivers.
    {"asusec", "CPU*", "ASUS|{label}"},
    {"asusec", "*", "{label}"},
    {"asus|asus_wmi_sensors|atk0110", "*", "ASUS|{label}"},
    {"hp_wmi_sensors|hp_wmi", "*", "HP|{label}"},
    {"lenovo_ec", "*", "Lenovo|{label}"},
    {"system76_acpi", "*", "System76|{label}"},
    {"thinkpad", "*", "ThinkPad|{label}"},
    {"dell_smm", "*", "Dell|{label}"},
    {"dell_ddv", "*", "Dell DDV|{label}"},
    {"cros_ec", "*", "EC|{label}"},
    {"surface_thermal", "*", "Surface|{label}"},
    {"gigabyte_wmi", "temp1", "Gigabyte|System"},
    {"gigabyte_wmi", "temp3", "Gigabyte|CPU"},
    {"gigabyte_wmi", "temp4", "Gigabyte|PCIe x16"},
    {"gigabyte_wmi", "temp5", "Gigabyte|VRM"},
    {"gigabyte_wmi", "*", "Gigabyte|{label}"},

    // The board, by its monitoring chip. Only the pin is known, and on most boards it is this one.
    {kBoards, "SYSTIN", "Motherboard (SYSTIN)"},
    {kBoards, "PCH_CHIP_TEMP", "PCH Chip"},
    {kBoards, "PCH_CPU_TEMP", "PCH CPU"},
    {kBoards, "PCH_MCH_TEMP", "PCH MCH"},
    {kBoards, "PCH_CHIP_CPU_MAX_TEMP", "PCH Maximum"},

    // Zones of the firmware and of processors for small computers.
    {"acpitz", "*", "ACPI Zone {n}"},
    {"*_thermal", "temp1", "{zone}"},
    {"*_thermal", "*", "{zone}|{n}"},

    // Others.
    {kCoolers, "Coolant*", "Coolant"},
    {"corsaircpro", "*", "Corsair Commander Pro|{label}"},
    {"rp1_adc", "temp1", "RP1 I/O Chip"},
    {kFirmwares, "*", "{label}"},
    {"*", "*", "{chip}|{label}"},
});

constexpr auto kBuiltInKeyRows = std::to_array<BuiltInKeyRow>({
    {"CPU 1 Package", "TC0D"},
    {"CPU 2 Package", "TC1D"},
    {"CPU Core 1", "TC1C"},
    {"CPU Core 2", "TC2C"},
    {"CPU Core 3", "TC3C"},
    {"CPU Core 4", "TC4C"},
    {"CPU Core 5", "TC5C"},
    {"CPU Core 6", "TC6C"},
    {"CPU Core 7", "TC7C"},
    {"CPU Core 8", "TC8C"},
    {"GPU Die", "TG0D", true},
});

constexpr auto kCredibilityRows = std::to_array<CredibilityRow>({
    // Margins read as -40 degrees and below, absent sensors as -127.
    {kControllers, "*", -39, 126},
    {kOpenBoards, "SYSTIN|CPUTIN|AUXTIN*|temp*", 1, 125, Credibility::openInput},
    {"acpitz", "*", 1, 125, Credibility::constantsOfFirmware},
    {"*", "*", 1, 125},
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

std::span<const NameRow> nameRows() { return kNameRows; }

std::span<const BuiltInKeyRow> builtInKeyRows() { return kBuiltInKeyRows; }

std::span<const CredibilityRow> credibilityRows() { return kCredibilityRows; }

const CredibilityRow& credibilityOf(std::string_view driver, std::string_view label) {
  return *std::find_if(kCredibilityRows.begin(), kCredibilityRows.end(),
                       [&](const CredibilityRow& row) {
                         return matches(row.driver, driver) && matches(row.label, label);
                       });
}

std::span<const ReadPolicyRow> readPolicyRows() { return kReadPolicyRows; }

}  // namespace halvermonte::linuxos
