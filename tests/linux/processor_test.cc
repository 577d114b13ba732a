// The processor's name and cores.
#include <gmock/gmock.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Foundation.hpp"
#include "tests/linux/Tree.hpp"

namespace halvermonte::test {
namespace {

using ::testing::Eq;
using ::testing::HasSubstr;
using ::testing::Optional;
using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::string_view kCompatible = "sys/firmware/devicetree/base/compatible";
constexpr std::string_view kModel = "sys/firmware/devicetree/base/model";

/// The item of the tree's hardware report, parsed as the engine does.
Dictionary reportOf(const Tree& tree) {
  LinuxMachine machine(tree.roots());
  const auto report = machine.outputOfCommand("system_profiler SPHardwareDataType -xml");
  const Array root = foundation::propertyList(report.value_or("")).asArray();
  EXPECT_EQ(root.size(), 1u);
  const Array items = root[0].asDictionary().find("_items").asArray();
  EXPECT_EQ(items.size(), 1u);
  return items[0].asDictionary();
}

std::string entry(const Dictionary& item, std::string_view key) {
  EXPECT_LE(item.size(), 1u);
  return item.find(key).asText().str();
}

std::string chipOf(std::string_view compatible) {
  Tree tree;
  tree.write(kCompatible, compatible).write(kModel, "Apple Macintosh (M9, 2029)\0"sv);
  return entry(reportOf(tree), "chip_type");
}

TEST(ProcessorName, IsTheModelNameOnIntelWithSingleSpaces) {
  Tree tree;
  tree.write("proc/cpuinfo",
             "processor\t: 0\nvendor_id\t: GenuineIntel\ncpu family\t: 6\n"
             "model name\t:  Intel(R) Core(TM)   i5-4258U CPU @ 2.40GHz \ncpu cores\t: 2\n\n");
  EXPECT_EQ(entry(reportOf(tree), "cpu_type"), "Intel(R) Core(TM) i5-4258U CPU @ 2.40GHz");
}

TEST(ProcessorName, KeepsMarkupCharactersAndDropsControlCharacters) {
  Tree tree;
  tree.write("proc/cpuinfo", "processor : 0\r\nmodel name : AMD <Ryzen> 9 & \"co\" 5950X\x01\r\n");
  EXPECT_EQ(entry(reportOf(tree), "cpu_type"), "AMD <Ryzen> 9 & \"co\" 5950X");
}

TEST(ProcessorName, IsFoundInTheDeviceTreeForAnAppleChip) {
  EXPECT_EQ(chipOf("apple,j313\0apple,t8103\0apple,arm-platform\0"sv), "Apple M1");
  EXPECT_EQ(chipOf("apple,j314s\0apple,t6000\0apple,arm-platform\0"sv), "Apple M1 Pro");
  EXPECT_EQ(chipOf("apple,j375d\0apple,t6002\0apple,arm-platform\0"sv), "Apple M1 Ultra");
  EXPECT_EQ(chipOf("apple,j413\0apple,t8112\0apple,arm-platform\0"sv), "Apple M2");
  EXPECT_EQ(chipOf("apple,j514m\0apple,t6034\0apple,arm-platform\0"sv), "Apple M3 Max");
  EXPECT_EQ(chipOf("apple,j516c\0apple,t6031\0apple,arm-platform"sv), "Apple M3 Max");
  EXPECT_EQ(chipOf("apple,t8132\n"sv), "Apple M4");
}

TEST(ProcessorName, EveryAppleChipHasItsOwnName) {
  const std::pair<const char*, const char*> chips[] = {
      {"t8103", "Apple M1"},       {"t6000", "Apple M1 Pro"},   {"t6001", "Apple M1 Max"},
      {"t6002", "Apple M1 Ultra"}, {"t8112", "Apple M2"},       {"t6020", "Apple M2 Pro"},
      {"t6021", "Apple M2 Max"},   {"t6022", "Apple M2 Ultra"}, {"t8122", "Apple M3"},
      {"t6030", "Apple M3 Pro"},   {"t6031", "Apple M3 Max"},   {"t6034", "Apple M3 Max"},
      {"t6032", "Apple M3 Ultra"}, {"t8132", "Apple M4"},       {"t6040", "Apple M4 Pro"},
      {"t6041", "Apple M4 Max"},
  };
  for (const auto& [chip, name] : chips) {
    EXPECT_EQ(chipOf("apple,j314s\0apple,"s + chip + "\0apple,arm-platform\0"s), name) << chip;
  }
}

TEST(ProcessorName, IsTheModelsForAnUnknownAppleChip) {
  EXPECT_EQ(chipOf("apple,j999\0apple,t8152\0apple,arm-platform\0"sv),
            "Apple Macintosh (M9, 2029)");
  EXPECT_EQ(chipOf("apple,t81030\0"sv), "Apple Macintosh (M9, 2029)");
}

TEST(ProcessorName, IsTheModelsForABoardWithoutOne) {
  Tree tree;
  tree.write(kCompatible, "raspberrypi,4-model-b\0brcm,bcm2711\0"sv);
  tree.write(kModel, "Raspberry Pi 4 Model B Rev 1.4\0"sv);
  tree.write("proc/cpuinfo", "processor\t: 0\nBogoMIPS\t: 108.00\n\n");
  EXPECT_EQ(entry(reportOf(tree), "cpu_type"), "Raspberry Pi 4 Model B Rev 1.4");
  tree.write("proc/cpuinfo", "processor\t: 0\ncpu\t\t: POWER9, altivec supported\n\n");
  EXPECT_EQ(entry(reportOf(tree), "cpu_type"), "POWER9, altivec supported");
}

TEST(ProcessorName, IsLeftOutOfTheReportIfThereIsNone) {
  Tree tree;
  EXPECT_EQ(reportOf(tree).size(), 0u);
  tree.write("proc/cpuinfo", "model name\nmodel name:\n\n:::\n");
  EXPECT_EQ(reportOf(tree).size(), 0u);
}

TEST(ProcessorName, ReportOfThisComputerDoesNotRunTheCommand) {
  const auto report = LinuxMachine().outputOfCommand("system_profiler SPHardwareDataType -xml");
  EXPECT_THAT(report, Optional(HasSubstr("<plist")));
}

/// Adds a processor that shares its core with the processors in the list.
void addProcessor(Tree& tree, int number, std::string_view coreList, std::string_view coreId = "0",
                  std::string_view file = "core_cpus_list") {
  const std::string topology = "sys/devices/system/cpu/cpu" + std::to_string(number) + "/topology/";
  tree.write(topology + std::string(file), std::string(coreList) + "\n");
  tree.write(topology + "core_id", std::string(coreId) + "\n");
  tree.write(topology + "physical_package_id", "0\n");
}

std::optional<int64_t> coresOf(const Tree& tree) {
  return LinuxMachine(tree.roots()).kernelVariable("hw.physicalcpu");
}

TEST(PhysicalCores, TwoThreadsOfACoreCountOnce) {
  Tree tree;
  addProcessor(tree, 0, "0-1", "0");
  addProcessor(tree, 1, "0-1", "0");
  addProcessor(tree, 2, "2-3", "4");
  addProcessor(tree, 3, "2-3", "4");
  addProcessor(tree, 4, "4", "20");
  addProcessor(tree, 5, "5", "21");
  tree.write("sys/devices/system/cpu/cpufreq/boost", "1\n");
  EXPECT_THAT(coresOf(tree), Optional(4));
}

TEST(PhysicalCores, EqualCoreNumbersInAppleClustersAreDifferentCores) {
  Tree tree;
  for (int i = 0; i < 8; ++i) addProcessor(tree, i, std::to_string(i), std::to_string(i % 4));
  EXPECT_THAT(coresOf(tree), Optional(8));
}

TEST(PhysicalCores, OfflineProcessorsDoNotCount) {
  Tree tree;
  addProcessor(tree, 0, "0");
  addProcessor(tree, 1, "1");
  addProcessor(tree, 2, "2");
  tree.write("sys/devices/system/cpu/cpu1/online", "1\n");
  tree.write("sys/devices/system/cpu/cpu2/online", "0\n");
  tree.write("sys/devices/system/cpu/cpu3/online", "0\n");
  EXPECT_THAT(coresOf(tree), Optional(2));
}

TEST(PhysicalCores, OlderNameOfTheListIsReadToo) {
  Tree tree;
  addProcessor(tree, 0, "0,2", "0", "thread_siblings_list");
  addProcessor(tree, 1, "1,3", "1", "thread_siblings_list");
  addProcessor(tree, 2, "0,2", "0", "thread_siblings_list");
  EXPECT_THAT(coresOf(tree), Optional(2));
}

TEST(PhysicalCores, ProcessorTableIsUsedWithoutTopology) {
  Tree tree;
  tree.write("proc/cpuinfo", "processor\t: 0\nBogoMIPS\t: 48\n\nprocessor\t: 1\n\nHardware\t: x\n");
  EXPECT_THAT(coresOf(tree), Optional(2));
  tree.write("proc/cpuinfo",
             "processor : 0\r\nphysical id : 0\r\ncore id : 0\r\n\r\n"
             "processor : 1\r\nphysical id : 0\r\ncore id : 0\r\n\r\n"
             "processor : 2\r\nphysical id : 1\r\ncore id : 0\r\n");
  EXPECT_THAT(coresOf(tree), Optional(2));
}

TEST(PhysicalCores, CountIsAbsentIfNothingListsProcessors) {
  Tree tree;
  EXPECT_EQ(coresOf(tree), std::nullopt);
  tree.write("proc/cpuinfo", "\n\nprocessor\nphysical id: 7\n");
  tree.write("sys/devices/system/cpu/cpu0/topology/core_cpus_list", "\n");
  EXPECT_EQ(coresOf(tree), std::nullopt);
}

TEST(PhysicalCores, OtherVariablesAreUnknown) {
  EXPECT_EQ(LinuxMachine().kernelVariable("hw.logicalcpu"), std::nullopt);
}

}  // namespace
}  // namespace halvermonte::test
