// The catalogue's tables: which SMC keys are tried, and the names they are shown under.
#pragma once

#include <string_view>

namespace halvermonte {

struct NamedKey {
  std::string_view key;
  std::string_view name;
};

// clang-format off

// In the order in which a pass visits them. Tm0P, Tp0j and Tg0f stand twice and are visited twice.
inline constexpr std::string_view kTemperatureKeys[] = {
    "TCXC", "TCXc", "TC0P", "TC0H", "TC0D", "TC0E", "TC0F", "TC1C", "TC2C", "TC3C", "TC4C", "TC5C",
    "TC6C", "TC7C", "TC8C", "TCAH", "TCAD", "TC1P", "TC1H", "TC1D", "TC1E", "TC1F", "TCBH", "TCBD",
    "TCSC", "TCSc", "TCSA", "TCGC", "TCGc", "TG0P", "TG0D", "TG1D", "TG0H", "TG1H", "Ts0S", "TM0P",
    "TM1P", "TM8P", "TM9P", "TM0S", "TM1S", "TM8S", "TM9S", "TN0D", "TN0P", "TN1P", "TN0C", "TN0H",
    "TP0D", "TPCD", "TA0P", "TA1P", "Th0H", "Th1H", "Th2H", "Tm0P", "Ts0P", "Tb0P", "TL0P", "TW0P",
    "TH0P", "TH1P", "TH2P", "TH3P", "TO0P", "Tp0C", "TB0T", "TB1T", "TB2T", "TB3T", "Tp1P", "Tp1C",
    "Tp2P", "Tp3P", "Tp4P", "Tp5P", "TS0C", "TA0S", "TA1S", "TA2S", "TA3S", "Tp01", "Tp05", "Tp09",
    "Tp0D", "Tp0H", "Tp0L", "Tp0P", "Tp0T", "Tp0X", "Tp0b", "Tp0f", "Tp0n", "Tp0j", "Tp0r", "Tg05",
    "Tg0D", "Tg0L", "Tg0T", "Tg0f", "Tg0n", "Tm01", "Tm05", "Tm09", "Tm0D", "Tm0H", "Tm0L", "Tm0P",
    "Tm0T", "Tm0X", "Tm0b", "TaLF", "TaRF", "TaTP", "TH0a", "Tg0W", "Tg0X", "Tg0e", "Tg0f", "Tg0i",
    "Tg0j", "Tg1g", "Tg1h", "Tg1k", "Tg1l", "Th01", "Th02", "Th04", "Th05", "Th06", "Th08", "Th09",
    "Th0A", "Th0C", "Th0D", "Th0E", "Th0G", "Tp0j", "Tp17", "Tp1B", "Tp1F", "Tp1J", "Tp1N", "Tp1j",
    "Tp1n", "Tp1w", "Tp1z", "Tp22", "Tp25", "Tp28", "Tp2E", "Tp2J", "Tp2M", "Tp2R", "Tp2U", "Tp2W",
    "Tp1h", "Tp1t", "Tp1p", "Tp1l", "Te09", "Te0H", "Tp0V", "Tp0Y", "Tp0e", "Te05", "Te0L", "Te0P",
    "Te0S", "Tf04", "Tf09", "Tf0A", "Tf0B", "Tf0D", "Tf0E", "Tf44", "Tf49", "Tf4A", "Tf4B", "Tf4D",
    "Tf4E",
};

// The voltage, current and power keys belong to the catalogue; no pass reads them.
inline constexpr std::string_view kVoltageKeys[] = {
    "VC0C", "VC1C", "VC2C", "VC3C", "VC4C", "VC5C", "VC6C", "VC7C", "VV1R", "VG0C", "VM0R", "VN1R",
    "VN0C", "VD0R", "VD5R", "VP0R", "Vp0C", "VV2S", "VR3R", "VV1S", "VH05", "VV9S", "VD2R", "VV7S",
    "VV3S", "VV8S", "VeES", "VBAT", "Vb0R",
};

inline constexpr std::string_view kCurrentKeys[] = {
    "IC0C", "IC1C", "IC2C", "IC0R", "IC5R", "IC8R", "IC0G", "IC0M", "IG0C", "IM0C", "IM0R", "IN0C",
    "ID0R", "ID5R", "IO0R", "IB0R", "IPBR",
};

inline constexpr std::string_view kPowerKeys[] = {
    "PC0C", "PC1C", "PC2C", "PC3C", "PC4C", "PC5C", "PC6C", "PC7C", "PCPC", "PCPG", "PCPD", "PCTR",
    "PCPL", "PC1R", "PC5R", "PGTR", "PG0R", "PM0R", "PN0C", "PN1R", "PC0R", "PD0R", "PD5R", "PH02",
    "PH05", "Pp0R", "PD2R", "PO0R", "PBLC", "PB0R", "PDTR", "PSTR",
};

// Names on every processor, in the order in which they are given: a later name replaces an earlier one.
inline constexpr NamedKey kTemperatureNames[] = {
    {"TCXC", "PECI CPU"}, {"TCXc", "PECI CPU"}, {"TC0P", "CPU 1 Proximity"},
    {"TC0H", "CPU 1 Heatsink"}, {"TC0D", "CPU 1 Package"}, {"TC0E", "CPU 1 Sensor 1"},
    {"TC0F", "CPU 1 Sensor 2"}, {"TC1C", "CPU Core 1"}, {"TC2C", "CPU Core 2"},
    {"TC3C", "CPU Core 3"}, {"TC4C", "CPU Core 4"}, {"TC5C", "CPU Core 5"}, {"TC6C", "CPU Core 6"},
    {"TC7C", "CPU Core 7"}, {"TC8C", "CPU Core 8"}, {"TCAH", "CPU 1 Heatsink Alt."},
    {"TCAD", "CPU 1 Package Alt."}, {"TC1P", "CPU 2 Proximity"}, {"TC1H", "CPU 2 Heatsink"},
    {"TC1D", "CPU 2 Package"}, {"TC1E", "CPU 2 Sensor 2"}, {"TC1F", "CPU 2 Sensor 2"},
    {"TCBH", "CPU 2 Heatsink Alt."}, {"TCBD", "CPU 2 Package Alt."}, {"TCSC", "PECI SA"},
    {"TCSc", "PECI SA"}, {"TCSA", "PECI SA"}, {"TCGC", "PECI GPU"}, {"TCGc", "PECI GPU"},
    {"TG0P", "GPU Proximity"}, {"TG0D", "GPU Die"}, {"TG1D", "GPU Die"}, {"TG0H", "GPU Heatsink"},
    {"TG1H", "GPU Heatsink"}, {"Ts0S", "Memory Proximity"}, {"TM0P", "Mem Bank A1"},
    {"TM1P", "Mem Bank A2"}, {"TM8P", "Mem Bank B1"}, {"TM9P", "Mem Bank B2"},
    {"TM0S", "Mem Module A1"}, {"TM1S", "Mem Module A2"}, {"TM8S", "Mem Module B1"},
    {"TM9S", "Mem Module B2"}, {"TN0D", "Northbridge Die"}, {"TN0P", "Northbridge Proximity 1"},
    {"TN1P", "Northbridge Proximity 2"}, {"TN0C", "MCH Die"}, {"TN0H", "MCH Heatsink"},
    {"TP0D", "PCH Die"}, {"TPCD", "PCH Die"}, {"TP0P", "PCH Proximity"}, {"TA0P", "Airflow 1"},
    {"TA1P", "Airflow 2"}, {"Th0H", "Heatpipe 1"}, {"Th1H", "Heatpipe 2"}, {"Th2H", "Heatpipe 3"},
    {"Tm0P", "Mainboard Proximity"}, {"Tp0P", "Powerboard Proximity"}, {"Ts0P", "Palm Rest"},
    {"Tb0P", "BLC Proximity"}, {"TL0P", "LCD Proximity"}, {"TW0P", "Airport Proximity"},
    {"TH0P", "HDD Bay 1"}, {"TH1P", "HDD Bay 2"}, {"TH2P", "HDD Bay 3"}, {"TH3P", "HDD Bay 4"},
    {"TO0P", "Optical Drive"}, {"TB0T", "Battery TS_MAX"}, {"TB1T", "Battery 1"},
    {"TB2T", "Battery 2"}, {"TB3T", "Battery"}, {"TS0C", "Expansion Slots"},
    {"TA0S", "PCI Slot 1 Pos 1"}, {"TA1S", "PCI Slot 1 Pos 2"}, {"TA2S", "PCI Slot 2 Pos 1"},
    {"TA3S", "PCI Slot 2 Pos 2"},
};

inline constexpr NamedKey kVoltageNames[] = {
    {"VC0C", "CPU Core 1"}, {"VC1C", "CPU Core 2"}, {"VC2C", "CPU Core 3"}, {"VC3C", "CPU Core 4"},
    {"VC4C", "CPU Core 5"}, {"VC5C", "CPU Core 6"}, {"VC6C", "CPU Core 7"}, {"VC7C", "CPU Core 8"},
    {"VV1R", "CPU VTT"}, {"VG0C", "GPU Core"}, {"VM0R", "Memory"}, {"VN1R", "PCH"}, {"VN0C", "MCH"},
    {"VD0R", "Mainboard S0 Rail"}, {"VD5R", "Mainboard S5 Rail"}, {"VP0R", "12V Rail"},
    {"Vp0C", "12V Vcc"}, {"VV2S", "Main 3V"}, {"VR3R", "Main 3.3V"}, {"VV1S", "Main 5V"},
    {"VH05", "Main 5V"}, {"VV9S", "Main 12V"}, {"VD2R", "Main 12V"}, {"VV7S", "Auxiliary 3V"},
    {"VV3S", "Standby 3V"}, {"VV8S", "Standby 5V"}, {"VeES", "PCIe 12V"}, {"VBAT", "Battery"},
    {"Vb0R", "CMOS Battery"},
};

inline constexpr NamedKey kCurrentNames[] = {
    {"IC0C", "CPU Core"}, {"IC1C", "CPU VccIO"}, {"IC2C", "CPU VccSA"}, {"IC0R", "CPU Rail"},
    {"IC5R", "CPU DRAM"}, {"IC8R", "CPU PLL"}, {"IC0G", "CPU GFX"}, {"IC0M", "CPU Memory"},
    {"IG0C", "GPU Rail"}, {"IM0C", "Memory Controller"}, {"IM0R", "Memory Rail"}, {"IN0C", "MCH"},
    {"ID0R", "Mainboard S0 Rail"}, {"ID5R", "Mainboard S5 Rail"}, {"IO0R", "Misc. Rail"},
    {"IB0R", "Battery Rail"}, {"IPBR", "Charger BMON"},
};

inline constexpr NamedKey kPowerNames[] = {
    {"PC0C", "CPU Core 1"}, {"PC1C", "CPU Core 2"}, {"PC2C", "CPU Core 3"}, {"PC3C", "CPU Core 4"},
    {"PC4C", "CPU Core 5"}, {"PC5C", "CPU Core 6"}, {"PC6C", "CPU Core 7"}, {"PC7C", "CPU Core 8"},
    {"PCPC", "CPU Cores"}, {"PCPG", "CPU GFX"}, {"PCPD", "CPU DRAM"}, {"PCTR", "CPU Total"},
    {"PCPL", "CPU Total"}, {"PC1R", "CPU Rail"}, {"PC5R", "CPU S0 Rail"}, {"PGTR", "GPU Total"},
    {"PG0R", "GPU Rail"}, {"PM0R", "Memory Rail"}, {"PN0C", "MCH"}, {"PN1R", "PCH Rail"},
    {"PC0R", "Mainboard S0 Rail"}, {"PD0R", "Mainboard S0 Rail"}, {"PD5R", "Mainboard S5 Rail"},
    {"PH02", "Main 3.3V Rail"}, {"PH05", "Main 5V Rail"}, {"Pp0R", "12V Rail"},
    {"PD2R", "Main 12V Rail"}, {"PO0R", "Misc. Rail"}, {"PBLC", "Battery Rail"},
    {"PB0R", "Battery Rail"}, {"PDTR", "DC In Total"}, {"PSTR", "System Total"},
};

// Given on every processor too; Tm0P becomes a memory bank by it.
inline constexpr NamedKey kAppleSiliconNames[] = {
    {"Tg05", "GPU Cluster 1"}, {"Tg0D", "GPU Cluster 2"}, {"Tg0L", "GPU Cluster 3"},
    {"Tg0T", "GPU Cluster 4"}, {"Tm01", "Memory Bank 1"}, {"Tm05", "Memory Bank 2"},
    {"Tm09", "Memory Bank 3"}, {"Tm0D", "Memory Bank 4"}, {"Tm0L", "Memory Bank 5"},
    {"Tm0P", "Memory Bank 6"}, {"Tm0T", "Memory Bank 7"}, {"Tm0X", "Memory Bank 8"},
    {"TaLF", "Airflow Left"}, {"TaRF", "Airflow Right"}, {"TaTP", "Airflow Top"},
    {"TH0a", "Disk Drive"},
};

// Per chip: the cores that each has, then one name per further core from the eleventh on. The names
// stop at "CPU Core 10": on an M3 of 16 cores three keys share it.
inline constexpr NamedKey kM2Names[] = {
    {"Tp1h", "CPU Efficiency Core 1"}, {"Tp1t", "CPU Efficiency Core 2"},
    {"Tp1p", "CPU Efficiency Core 3"}, {"Tp1l", "CPU Efficiency Core 4"}, {"Tp01", "CPU Core 1"},
    {"Tp05", "CPU Core 2"}, {"Tp09", "CPU Core 3"}, {"Tp0D", "CPU Core 4"}, {"Tp0X", "CPU Core 5"},
    {"Tp0b", "CPU Core 6"},
};

inline constexpr NamedKey kM2FurtherCores[] = {
    {"Tp0f", "CPU Core 7"}, {"Tp0j", "CPU Core 8"},
};

inline constexpr NamedKey kM3Names[] = {
    {"Te05", "CPU Efficiency Core 1"}, {"Te0L", "CPU Efficiency Core 2"},
    {"Te0P", "CPU Efficiency Core 3"}, {"Te0S", "CPU Efficiency Core 4"}, {"Tf04", "CPU Core 1"},
    {"Tf09", "CPU Core 2"}, {"Tf0A", "CPU Core 3"}, {"Tf0B", "CPU Core 4"}, {"Tf0D", "CPU Core 5"},
    {"Tf0E", "CPU Core 6"},
};

inline constexpr NamedKey kM3FurtherCores[] = {
    {"Tf44", "CPU Core 7"}, {"Tf49", "CPU Core 8"}, {"Tf4A", "CPU Core 9"}, {"Tf4B", "CPU Core 10"},
    {"Tf4D", "CPU Core 10"}, {"Tf4E", "CPU Core 10"},
};

inline constexpr NamedKey kM4LargeNames[] = {
    {"Tp1j", "CPU Efficiency Core 1"}, {"Tp1n", "CPU Efficiency Core 2"},
    {"Tp1t", "CPU Efficiency Core 3"}, {"Tp1w", "CPU Efficiency Core 4"}, {"Tp1z", "CPU Core 1"},
    {"Tp22", "CPU Core 2"}, {"Tp25", "CPU Core 3"}, {"Tp28", "CPU Core 4"}, {"Tp2E", "CPU Core 5"},
    {"Tp2J", "CPU Core 6"},
};

inline constexpr NamedKey kM4LargeFurtherCores[] = {
    {"Tp2M", "CPU Core 7"}, {"Tp2R", "CPU Core 8"}, {"Tp2U", "CPU Core 9"}, {"Tp2W", "CPU Core 10"},
};

inline constexpr NamedKey kM1Names[] = {
    {"Tp01", "CPU Efficiency Core 1"}, {"Tp05", "CPU Efficiency Core 2"}, {"Tp09", "CPU Core 1"},
    {"Tp0D", "CPU Core 2"}, {"Tp0H", "CPU Core 3"}, {"Tp0L", "CPU Core 4"}, {"Tp0P", "CPU Core 5"},
    {"Tp0T", "CPU Core 6"}, {"Tp0X", "CPU Core 7"}, {"Tp0b", "CPU Core 8"}, {"Tg0f", "GPU 1"},
    {"Tg0n", "GPU 2"},
};

inline constexpr NamedKey kDefaultNames[] = {
    {"Te05", "CPU Efficiency Core 1"}, {"Te09", "CPU Efficiency Core 2"},
    {"Te0H", "CPU Efficiency Core 3"}, {"Te0S", "CPU Efficiency Core 4"}, {"Tp01", "CPU Core 1"},
    {"Tp05", "CPU Core 2"}, {"Tp09", "CPU Core 3"}, {"Tp0D", "CPU Core 4"}, {"Tp0V", "CPU Core 5"},
    {"Tp0Y", "CPU Core 6"},
};

inline constexpr NamedKey kDefaultFurtherCores[] = {
    {"Tp0b", "CPU Core 7"}, {"Tp0e", "CPU Core 8"},
};

// Unless the processor is an M1.
inline constexpr NamedKey kGPUClusterNames[] = {
    {"Tg0W", "GPU Cluster 1"}, {"Tg0X", "GPU Cluster 2"}, {"Tg0e", "GPU Cluster 3"},
    {"Tg0f", "GPU Cluster 4"}, {"Tg0i", "GPU Cluster 5"}, {"Tg0j", "GPU Cluster 6"},
    {"Tg1g", "GPU Cluster 7"}, {"Tg1h", "GPU Cluster 8"}, {"Tg1k", "GPU Cluster 9"},
    {"Tg1l", "GPU Cluster 10"},
};

// Given last on every processor. Tp0P ends as a power supply by it, on an M1 too.
inline constexpr NamedKey kPowerSupplyNames[] = {
    {"Tp0P", "Power Supply 1"}, {"Tp0C", "Power Supply 1 Alt."}, {"Tp1P", "Power Supply 2"},
    {"Tp1C", "Power Supply 2 Alt."}, {"Tp2P", "Power Supply 3"}, {"Tp3P", "Power Supply 4"},
    {"Tp4P", "Power Supply 5"}, {"Tp5P", "Power Supply 6"},
};

// clang-format on

}  // namespace halvermonte
