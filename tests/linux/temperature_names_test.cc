// The names that people see for each kind of chip.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/linux/Computer.hpp"

namespace halvermonte::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

using Shown = std::map<std::string, int>;

const ComputerOptions kWithDrives{.driveTemperatures = true};

/// The temperatures in the record of a computer with one chip.
Shown shownOf(const std::string& driver, const std::string& device,
              const std::vector<ChannelFiles>& channels) {
  Tree tree;
  addChip(tree, 0, driver, device, channels);
  return shown(tree);
}

std::vector<std::string> namesOf(const std::string& driver, const std::string& device,
                                 const std::vector<ChannelFiles>& channels) {
  std::vector<std::string> names;
  for (const auto& [name, degrees] : shownOf(driver, device, channels)) names.push_back(name);
  return names;
}

TEST(TemperatureNames, EveryCoreOfEverySocketHasOne) {
  Tree tree;
  for (const int socket : {1, 0}) {
    std::vector<ChannelFiles> channels = {
        {"temp1", std::to_string(50000 + socket * 30000), "Package id " + std::to_string(socket)}};
    for (int core = 0; core < 28; ++core) {
      channels.push_back({"temp" + std::to_string(core + 2),
                          std::to_string(30000 + socket * 30000 + core * 1000),
                          "Core " + std::to_string(core)});
    }
    addChip(tree, 5 - socket, "coretemp", "platform/coretemp." + std::to_string(socket), channels);
  }
  Shown expected = {{"CPU 1 Package", 50}, {"CPU 2 Package", 80}};
  for (int core = 0; core < 28; ++core) {
    expected["CPU Core " + std::to_string(core + 1)] = 30 + core;
    expected["CPU 2 Core " + std::to_string(core + 1)] = 60 + core;
  }
  EXPECT_EQ(shown(tree), expected);
}

TEST(TemperatureNames, CoresAreCountedAlthoughTheirNumbersHaveGaps) {
  const std::vector<ChannelFiles> channels = {{"temp2", "41000", "Core 0"},
                                              {"temp6", "42000", "Core 4"},
                                              {"temp30", "43000", "Core 28"},
                                              {"temp10", "44000", "Core 8"}};
  EXPECT_THAT(shownOf("coretemp", "platform/coretemp.0", channels),
              ElementsAre(Pair("CPU Core 1", 41), Pair("CPU Core 2", 42), Pair("CPU Core 3", 44),
                          Pair("CPU Core 4", 43)));
}

TEST(TemperatureNames, SmallCoresOfAHybridProcessorAreCountedOnTheirOwn) {
  Tree tree;
  std::vector<ChannelFiles> channels;
  const std::vector<int> cores = {0, 4, 8, 12, 13};
  for (size_t i = 0; i < cores.size(); ++i) {
    const std::string core = std::to_string(cores[i]);
    const std::string processor = "sys/devices/system/cpu/cpu" + std::to_string(i);
    tree.write(processor + "/topology/physical_package_id", "0\n");
    tree.write(processor + "/topology/core_id", core + "\n");
    channels.push_back({"temp" + core + "0", std::to_string(41000 + i * 1000), "Core " + core});
  }
  tree.write("sys/devices/cpu_atom/cpus", "3-4\n");
  addChip(tree, 0, "coretemp", "platform/coretemp.0", channels);
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("CPU Core 1", 41), Pair("CPU Core 2", 42), Pair("CPU Core 3", 43),
                          Pair("CPU Efficiency Core 1", 44), Pair("CPU Efficiency Core 2", 45)));
}

TEST(TemperatureNames, DiesOfAPackageFollowTheProcessorsOwnCount) {
  Tree tree;
  for (int processor = 0; processor < 4; ++processor) {
    const std::string folder = "sys/devices/system/cpu/cpu" + std::to_string(processor);
    tree.write(folder + "/topology/physical_package_id", std::to_string(processor / 2) + "\n");
    tree.write(folder + "/topology/die_id", std::to_string(processor % 2) + "\n");
    addChip(tree, processor, "coretemp", "platform/coretemp." + std::to_string(processor),
            {{"temp1", std::to_string(41000 + processor * 1000),
              "Core " + std::to_string(processor % 2)}});
  }
  EXPECT_THAT(
      shown(tree),
      ElementsAre(Pair("CPU 2 Core 1 (coretemp.2)", 43), Pair("CPU 2 Core 1 (coretemp.3)", 44),
                  Pair("CPU Core 1", 41), Pair("CPU Core 1 (coretemp.1)", 42)));
}

TEST(TemperatureNames, AmdsControlValueIsNotThePackageIfTheDieIsKnown) {
  EXPECT_THAT(shownOf("k10temp", "pci0000:00/0000:00:18.3",
                      {{"temp1", "77000", "Tctl"},
                       {"temp2", "50000", "Tdie"},
                       {"temp3", "48250", "Tccd1"},
                       {"temp5", "47250", "Tccd3"}}),
              ElementsAre(Pair("CPU 1 Control", 77), Pair("CPU 1 Package", 50),
                          Pair("CPU CCD 1", 48), Pair("CPU CCD 3", 47)));
  EXPECT_THAT(shownOf("k10temp", "pci0000:00/0000:00:18.3", {{"temp1", "45000", "Tctl"}}),
              ElementsAre(Pair("CPU 1 Package", 45)));
  EXPECT_THAT(shownOf("k10temp", "pci0000:00/0000:00:18.3", {{"temp1", "46000"}}),
              ElementsAre(Pair("CPU 1 Package", 46)));
}

/// A computer with four of AMD's chips, in reverse order.
void addFourNodes(Tree& tree, int packages) {
  for (int node = 0; node < 4; ++node) {
    addChip(tree, 9 - node, "k10temp", "pci0000:00/0000:00:1" + std::string(1, "89ab"[node]) + ".3",
            {{"temp1", std::to_string(41000 + node * 1000), "Tctl"}});
    addProcessorOfPackage(tree, node, node % packages);
  }
}

TEST(TemperatureNames, AmdsChipsBelongToSocketsByTheirAddresses) {
  Tree four;
  addFourNodes(four, 4);
  EXPECT_THAT(shown(four), ElementsAre(Pair("CPU 1 Package", 41), Pair("CPU 2 Package", 42),
                                       Pair("CPU 3 Package", 43), Pair("CPU 4 Package", 44)));
  Tree two;
  addFourNodes(two, 2);
  EXPECT_THAT(shown(two), ElementsAre(Pair("CPU 1 Die 1", 41), Pair("CPU 1 Die 2", 42),
                                      Pair("CPU 2 Die 1", 43), Pair("CPU 2 Die 2", 44)));
}

TEST(TemperatureNames, DiesOfASecondSocketAreNamedWithIt) {
  EXPECT_THAT(namesOf("k10temp", "pci0000:00/0000:00:19.3", {{"temp4", "54000", "Tccd2"}}),
              ElementsAre("CPU 2 CCD 2"));
}

TEST(TemperatureNames, GraphicsHaveDieJunctionAndMemory) {
  const std::string device = "pci0000:00/0000:00:01.0/0000:03:00.0";
  EXPECT_THAT(
      shownOf(
          "amdgpu", device,
          {{"temp1", "44000", "edge"}, {"temp2", "61000", "junction"}, {"temp3", "70000", "mem"}}),
      ElementsAre(Pair("GPU Die", 44), Pair("GPU Junction", 61), Pair("GPU Memory", 70)));
  EXPECT_THAT(
      shownOf("xe", device,
              {{"temp2", "44000", "pkg"},
               {"temp3", "61000", "vram"},
               {"temp4", "62000", "vram_ch_3"},
               {"temp5", "63000", "mctrl"},
               {"temp6", "64000", "pcie"}}),
      ElementsAre(Pair("GPU Die", 44), Pair("GPU Memory", 61), Pair("GPU Memory Channel 3", 62),
                  Pair("GPU Memory Controller", 63), Pair("GPU PCIe", 64)));
  EXPECT_THAT(shownOf("nouveau", device, {{"temp1", "39000"}}), ElementsAre(Pair("GPU Die", 39)));
  EXPECT_THAT(shownOf("gpu_thermal", "virtual/thermal/thermal_zone1", {{"temp1", "47500"}}),
              ElementsAre(Pair("GPU Die", 47)));
}

TEST(TemperatureNames, GraphicsOfAProcessorAreIntegrated) {
  EXPECT_THAT(shownOf("i915", "pci0000:00/0000:00:02.0", {{"temp1", "44000"}}),
              ElementsAre(Pair("Integrated GPU Die", 44)));
  Tree tree;
  const std::string slot = "pci0000:00/0000:00:08.1/0000:05:00";
  addChip(tree, 0, "amdgpu", slot + ".0", {{"temp1", "45000", "edge"}});
  addChip(tree, 1, "amdgpu", "pci0000:00/0000:00:01.1/0000:03:00.0", {{"temp1", "46000", "edge"}});
  tree.write("sys/devices/" + slot + ".2/class", "0x108000\n");
  tree.write("sys/devices/pci0000:00/0000:00:01.1/0000:03:00.1/class", "0x040300\n");
  EXPECT_THAT(shown(tree), ElementsAre(Pair("GPU Die", 46), Pair("Integrated GPU Die", 45)));
}

TEST(TemperatureNames, MemoryModulesAreNumberedByTheirAddresses) {
  Tree tree;
  const std::string parent = "pci0000:00/0000:00:1f.4/i2c-";
  addChip(tree, 0, "jc42", parent + "7/7-0018", {{"temp1", "31000"}});
  addChip(tree, 1, "jc42", parent + "7/7-001b", {{"temp1", "34000"}});
  addChip(tree, 2, "spd5118", parent + "9/9-0050", {{"temp1", "41000"}});
  EXPECT_THAT(shown(tree), ElementsAre(Pair("Memory 2 Module 1", 41), Pair("Memory Module 1", 31),
                                       Pair("Memory Module 4", 34)));
}

TEST(TemperatureNames, DrivesAreCalledByTheirModels) {
  Tree tree;
  const std::string nvme = "pci0000:00/0000:00:1d.0/0000:01:00.0/nvme/nvme0";
  addChip(tree, 0, "nvme", nvme, {{"temp1", "41850", "Composite"}, {"temp2", "48850", "Sensor 1"}});
  tree.write("sys/devices/" + nvme + "/model", "Samsung SSD 990 PRO 2TB                 \n");
  const std::string sata = "pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0";
  addChip(tree, 1, "drivetemp", sata, {{"temp1", "29000"}});
  tree.write("sys/devices/" + sata + "/vendor", "ATA     \n");
  tree.write("sys/devices/" + sata + "/model", "ST8000NM0055-1RM\n");
  const std::string sas = "pci0000:00/0000:00:17.0/host9/target9:0:0/9:0:0:0";
  addChip(tree, 2, "drivetemp", sas, {{"temp1", "30000"}});
  tree.write("sys/devices/" + sas + "/vendor", "SEAGATE \n");
  tree.write("sys/devices/" + sas + "/model", "ST4000NM0023    \n");
  EXPECT_THAT(shown(tree, kWithDrives),
              ElementsAre(Pair("SEAGATE ST4000NM0023", 30), Pair("ST8000NM0055-1RM", 29),
                          Pair("Samsung SSD 990 PRO 2TB", 41),
                          Pair("Samsung SSD 990 PRO 2TB Sensor 1", 48)));
  EXPECT_THAT(shown(tree), ElementsAre(Pair("Samsung SSD 990 PRO 2TB", 41),
                                       Pair("Samsung SSD 990 PRO 2TB Sensor 1", 48)))
      << "other drives are read only on request";
}

TEST(TemperatureNames, WholeModelOfASataDriveIsInItsOwnDescription) {
  Tree tree;
  const std::string sata = "pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0";
  addChip(tree, 1, "drivetemp", sata, {{"temp1", "29000"}});
  tree.write("sys/devices/" + sata + "/vendor", "ATA     \n");
  tree.write("sys/devices/" + sata + "/model", "Samsung SSD 860 \n");
  std::string model = "Samsung SSD 860 EVO 500GB               ";
  for (size_t i = 0; i < model.size(); i += 2) std::swap(model[i], model[i + 1]);
  tree.write("sys/devices/" + sata + "/vpd_pg89",
             std::string(114, '\0') + model + std::string(418, '\0'));
  EXPECT_THAT(shown(tree, kWithDrives), ElementsAre(Pair("Samsung SSD 860 EVO 500GB", 29)));
}

TEST(TemperatureNames, RadioNetworkChipsetBatteryAndZones) {
  EXPECT_THAT(namesOf("iwlwifi_1", "virtual/thermal/thermal_zone5", {{"temp1", "47000"}}),
              ElementsAre("Wi-Fi"));
  EXPECT_THAT(namesOf("mt7921_phy0", "pci0000:00/0000:00:1c.0/0000:02:00.0/ieee80211/phy0",
                      {{"temp1", "47000"}}),
              ElementsAre("Wi-Fi"));
  EXPECT_THAT(
      namesOf("i350bb", "pci0000:00/0000:00:1c.0/0000:02:00.0", {{"temp1", "47000", "loc1"}}),
      ElementsAre("Ethernet"));
  EXPECT_THAT(
      namesOf("r8169_0_c00:00", "pci0000:00/0000:0c:00.0/mdio_bus/r8169-0-c00/r8169-0-c00:00",
              {{"temp1", "47000"}}),
      ElementsAre("Ethernet PHY"));
  EXPECT_THAT(namesOf("pch_cannonlake", "virtual/thermal/thermal_zone3", {{"temp1", "53000"}}),
              ElementsAre("Chipset (PCH)"));
  EXPECT_THAT(namesOf("BAT0", "LNXSYSTM:00/power_supply/BAT0",
                      {{"temp1", "30100", "temp"}, {"temp2", "20000", "ambient temp"}}),
              ElementsAre("Battery", "Battery Ambient"));
  EXPECT_THAT(
      namesOf("acpitz", "virtual/thermal/thermal_zone0", {{"temp1", "41000"}, {"temp2", "42000"}}),
      ElementsAre("ACPI Zone 1", "ACPI Zone 2"));
  EXPECT_THAT(namesOf("cpu_thermal", "virtual/thermal/thermal_zone0", {{"temp1", "41000"}}),
              ElementsAre("CPU 1 Package"));
  EXPECT_THAT(namesOf("bigcore0_thermal", "virtual/thermal/thermal_zone0", {{"temp1", "41000"}}),
              ElementsAre("Bigcore0"));
  EXPECT_THAT(namesOf("soc_thermal", "virtual/thermal/thermal_zone0", {{"temp1", "41000"}}),
              ElementsAre("SoC"));
}

TEST(TemperatureNames, ChipNamedByItsNetworkInterfaceIsCalledByTheDriver) {
  Tree tree;
  const std::string device = "pci0000:00/0000:00:1c.0/0000:02:00.0";
  addChip(tree, 0, "enp2s0", device, {{"temp1", "47000", "PHY Temperature"}});
  tree.folder("sys/devices/" + device + "/net/enp2s0");
  EXPECT_THAT(shown(tree), ElementsAre(Pair("Ethernet PHY", 47)));
  tree.folder("sys/bus/pci/drivers/atlantic");
  tree.link("sys/devices/" + device + "/driver", "sys/bus/pci/drivers/atlantic");
  EXPECT_THAT(shown(tree), ElementsAre(Pair("Ethernet PHY", 47)));
}

TEST(TemperatureNames, UnknownDriverOfANetworkDeviceIsCalledByItsKind) {
  Tree tree;
  const std::string device = "pci0000:00/0000:00:1c.0/0000:02:00.0";
  addChip(tree, 0, "newnic", device, {{"temp1", "47000"}});
  tree.folder("sys/devices/" + device + "/net/lan0");
  EXPECT_THAT(shown(tree), ElementsAre(Pair("Ethernet", 47)));
  tree.folder("sys/devices/" + device + "/ieee80211/phy3");
  EXPECT_THAT(shown(tree), ElementsAre(Pair("Wi-Fi", 47)));
}

TEST(TemperatureNames, BoardsChipIsNamedWithItsInputs) {
  EXPECT_THAT(shownOf("nct6798", "platform/nct6775.656",
                      {{"temp1", "33000", "SYSTIN"},
                       {"temp2", "41000", "CPUTIN"},
                       {"temp3", "-62000", "AUXTIN0"},
                       {"temp4", "36000", "AUXTIN1"},
                       {"temp7", "52000", "PECI Agent 0 Calibration"},
                       {"temp8", "0", "PCH_CHIP_TEMP"},
                       {"temp9", "44000", "PCH_CHIP_CPU_MAX_TEMP"},
                       {"temp13", "51000", "TSI0_TEMP"}}),
              ElementsAre(Pair("Motherboard (SYSTIN)", 33), Pair("PCH Maximum", 44),
                          Pair("nct6798 AUXTIN1", 36), Pair("nct6798 CPUTIN", 41),
                          Pair("nct6798 PECI Agent 0 Calibration", 52), Pair("nct6798 TSI0", 51)));
  EXPECT_THAT(shownOf("asusec", "platform/asus-ec-sensors",
                      {{"temp1", "61000", "Chipset"},
                       {"temp2", "42000", "CPU"},
                       {"temp3", "34000", "Motherboard"},
                       {"temp4", "-40000", "T_Sensor"},
                       {"temp5", "43000", "CPU Package"},
                       {"temp6", "55000", "VRM"}}),
              ElementsAre(Pair("ASUS CPU", 42), Pair("ASUS CPU Package", 43), Pair("Chipset", 61),
                          Pair("Motherboard", 34), Pair("VRM", 55)));
}

TEST(TemperatureNames, MakersOwnDriversAreNamedAfterThem) {
  EXPECT_THAT(
      namesOf("dell_smm", "platform/dell_smm_hwmon", {{"temp1", "52000"}, {"temp2", "42000"}}),
      ElementsAre("Dell Sensor 1", "Dell Sensor 2"));
  EXPECT_THAT(
      namesOf(
          "dell_smm", "platform/dell_smm_hwmon",
          {{"temp1", "52000", "CPU"}, {"temp4", "42000", "Other"}, {"temp5", "42000", "Other"}}),
      ElementsAre("Dell CPU", "Dell Other 1", "Dell Other 2"));
  EXPECT_THAT(namesOf("thinkpad", "platform/thinkpad_hwmon",
                      {{"temp1", "50000", "CPU"}, {"temp2", "0", "GPU"}, {"temp3", "40000"}}),
              ElementsAre("ThinkPad CPU", "ThinkPad Sensor 3"));
  EXPECT_THAT(
      namesOf("cros_ec", "platform/cros-ec-hwmon.5.auto", {{"temp1", "50000", "cpu_f75303@4d"}}),
      ElementsAre("EC CPU f75303@4d"));
}

TEST(TemperatureNames, UnknownChipIsCalledByItsDriverOrItsLabelAndItsSensors) {
  EXPECT_THAT(namesOf("lm75", "pci0000:00/i2c-1/1-0048", {{"temp1", "30000"}}),
              ElementsAre("lm75 Sensor 1"));
  EXPECT_THAT(namesOf("newchip", "platform/newchip",
                      {{"temp1", "30000", "inlet_temp"},
                       {"temp2", "31000", "3"},
                       {"temp3", "32000", "Caf\xc3\xa9"}}),
              ElementsAre("newchip Caf??", "newchip Inlet", "newchip Sensor 2"));
  Tree tree;
  addChip(tree, 0, "lm75", "pci0000:00/i2c-1/1-0048", {{"temp1", "30000"}});
  tree.write(chipFile(0, "label"), "front_panel\n");
  EXPECT_THAT(shown(tree), ElementsAre(Pair("front_panel Sensor 1", 30)));
}

TEST(TemperatureNames, LimitsOfAProcessorAreNotShown) {
  EXPECT_THAT(namesOf("peci_cputemp.cpu1.30", "platform/peci-0/0-31/peci_cpu.cputemp.30",
                      {{"temp1", "50000", "Die"},
                       {"temp3", "90000", "Tcontrol"},
                       {"temp5", "99000", "Tjmax"},
                       {"temp6", "49000", "Core 0"}}),
              ElementsAre("CPU 2 Core 0 (PECI)", "CPU 2 Package (PECI)"));
}

TEST(TemperatureNames, LongOnesLoseTheEndOfTheModelAndNeverTheSensor) {
  Tree tree;
  for (int i = 0; i < 2; ++i) {
    const std::string nvme =
        "pci0000:00/0000:00:1" + std::to_string(i) + ".0/0000:01:00.0/nvme/nvme0";
    addChip(
        tree, i, "nvme", nvme,
        {{"temp1", std::to_string(41850 + i * 1000), "Composite"}, {"temp2", "48850", "Sensor 1"}});
    tree.write("sys/devices/" + nvme + "/model", "A Very Long Model Of A Drive By A Maker\n");
  }
  EXPECT_THAT(shown(tree), ElementsAre(Pair("A Very Long Model Of A Drive (00:10.0)", 41),
                                       Pair("A Very Long Model Of A Drive (00:11.0)", 42),
                                       Pair("A Very Long Model Of Sensor 1 (00:10.0)", 48),
                                       Pair("A Very Long Model Of Sensor 1 (00:11.0)", 48)));
}

}  // namespace
}  // namespace halvermonte::test
