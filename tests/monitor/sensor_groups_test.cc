#include "monitor/SensorGroups.hpp"

#include <gmock/gmock.h>

#include <string_view>
#include <vector>

#include "catalogue/BuiltInNames.hpp"
#include "catalogue/Tables.hpp"

namespace halvermonte::test {
namespace {

using ::testing::UnorderedElementsAre;

struct Expectation {
  std::string_view group;
  std::vector<std::string_view> names;
};

void expectGroups(const std::vector<Expectation>& expectations) {
  for (const auto& [group, names] : expectations) {
    for (const std::string_view name : names) EXPECT_EQ(nameOf(groupOf(name)), group) << name;
  }
}

TEST(SensorGroups, NamesOfTheCatalogueHaveTheirGroup) {
  expectGroups({
      {"CPU", {"PECI CPU", "PECI SA", "CPU 1 Proximity", "CPU 2 Heatsink Alt.", "CPU Core 10"}},
      {"CPU", {"CPU Efficiency Core 4"}},
      {"GPU", {"PECI GPU", "GPU Die", "GPU Heatsink", "GPU Cluster 10", "GPU 1"}},
      {"Memory", {"Memory Proximity", "Mem Bank A1", "Mem Module B2", "Memory Bank 8"}},
      {"Drives", {"HDD Bay 4", "Optical Drive", "Disk Drive"}},
      {"Power", {"Powerboard Proximity", "Battery TS_MAX", "Battery", "Power Supply 1 Alt."}},
      {"Air and board", {"Northbridge Proximity 2", "MCH Die", "PCH Die", "Airflow 1"}},
      {"Air and board", {"Airflow Top", "Heatpipe 3", "Mainboard Proximity", "Palm Rest"}},
      {"Air and board", {"BLC Proximity", "LCD Proximity", "Expansion Slots", "PCI Slot 1 Pos 2"}},
      {"Other", {"Airport Proximity"}},
  });
}

TEST(SensorGroups, OfTheCatalogueOnlyTheWirelessCardIsOther) {
  for (const char* processor : {"Apple M1", "Apple M2", "Apple M3 Max", "Apple M4 Pro", "Other"}) {
    for (const NamedKey& named : builtInNames(processor, 16)) {
      if (!isBuiltInTemperatureKey(named.key) || named.name == "Airport Proximity") continue;
      EXPECT_NE(groupOf(named.name), SensorGroup::other) << named.name;
    }
  }
}

TEST(SensorGroups, FixedSensorsHaveTheirGroup) {
  expectGroups({
      {"Air and board", {"Airflow (Fans)", "Airflow (DC-in)", "North Bridge", "Enclosure 3"}},
      {"CPU", {"CPU Diode"}},
      {"GPU", {"GPU Proximity"}},
      {"Memory", {"Memory"}},
      {"Power", {"Battery"}},
      {"Drives", {"HDD"}},
      {"Other", {"Wi-Fi", "Thunderbolt 1"}},
  });
}

TEST(SensorGroups, SensorsOfTheEventSystemHaveTheirGroup) {
  expectGroups({
      {"CPU", {"CPU Performance Cores", "CPU Efficiency Cores", "M1 SOC Sensor 3"}},
      {"GPU", {"GPU Cluster"}},
      {"Drives", {"SSD NAND I/O"}},
      {"Power", {"Power Management Unit", "Gas Gauge Battery"}},
      {"Other", {"Neural Engine", "Image Signal Processor"}},
  });
}

TEST(SensorGroups, NamesOnLinuxHaveTheirGroup) {
  expectGroups({
      {"CPU", {"CPU 1 Package", "CPU 2 Core 3", "CPU CCD 1", "CPU 1 Control", "CPU (TSI)"}},
      {"CPU", {"ASUS CPU", "Gigabyte CPU", "PCH CPU", "nct6798 CPUTIN", "Dell Package"}},
      {"GPU", {"Integrated GPU Die", "GPU Memory Channel 3", "ThinkPad GPU", "Gpu"}},
      {"Memory", {"CPU 1 DIMM A1", "Memory 2 Module 4", "Dell SODIMM", "Memory Channel 0"}},
      {"Drives", {"NVMe Drive", "SSD"}},
      {"Power", {"Battery Ambient", "Power Supply VRM", "Gigabyte VRM", "Charger"}},
      {"Air and board", {"Chipset (PCH)", "PCH Maximum", "Motherboard (SYSTIN)", "Coolant"}},
      {"Air and board", {"Gigabyte System", "Gigabyte PCIe x16", "Dell Ambient", "HP Chassis"}},
      {"Other", {"Wi-Fi PHY 1", "Ethernet", "SFP Module", "ACPI Zone 0", "T Sensor", ""}},
  });
}

TEST(SensorGroups, DriveIsFoundByItsDriver) {
  EXPECT_EQ(groupOf("Samsung 980 PRO", "nvme"), SensorGroup::drives);
  EXPECT_EQ(groupOf("WDC WD40EFRX Core", "drivetemp"), SensorGroup::drives);
  EXPECT_EQ(groupOf("Samsung 980 PRO"), SensorGroup::other);
}

TEST(SensorGroups, WordInTheMiddleOfAnotherDecidesNothing) {
  EXPECT_EQ(groupOf("Score"), SensorGroup::other);
}

TEST(SensorGroups, EveryGroupHasAName) {
  std::vector<std::string_view> names;
  for (const SensorGroup group : kSensorGroups) names.push_back(nameOf(group));
  EXPECT_THAT(names, UnorderedElementsAre("CPU", "GPU", "Memory", "Drives", "Power",
                                          "Air and board", "Other"));
}

}  // namespace
}  // namespace halvermonte::test
