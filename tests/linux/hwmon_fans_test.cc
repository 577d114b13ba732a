// Which fans are shown, in which order and under which names.
#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/linux/Computer.hpp"
#include "tests/linux/HeldClock.hpp"

namespace halvermonte::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

std::vector<std::pair<std::string, float>> fansOf(const Tree& tree) {
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  return fans(machine);
}

TEST(HwmonFans, ComputerWithoutFansShowsNone) {
  const Tree tree;
  EXPECT_THAT(fansOf(tree), IsEmpty());
}

TEST(HwmonFans, NameIsTheLabelOrChipAndChannel) {
  Tree tree;
  addChip(tree, 0, "dell_smm", "platform/dell_smm_hwmon",
          {{"fan1", "0"}, {"fan2", "2400"}, {"fan3", "900", "Processor Fan"}});
  addChip(tree, 1, "asusec", "platform/asus-ec-sensors", {{"fan1", "800", "CPU_Opt"}});
  addChip(tree, 2, "a_driver_of_a_long_name", "platform/zz", {{"fan11", "700"}});
  EXPECT_THAT(fansOf(tree),
              ElementsAre(Pair("a_driver_-11", 700), Pair("dell_smm-1", 0),
                          Pair("dell_smm-2", 2400), Pair("Processor", 900), Pair("CPU_Opt", 800)));
}

TEST(HwmonFans, FansOfAMacsControllerComeFirst) {
  Tree tree;
  addChip(tree, 0, "amdgpu", "pci0000:00/0000:03:00.0", {{"fan1", "1500"}});
  addOldChip(tree, 1, "applesmc", "platform/applesmc.768",
             {{"fan1", "2000", "Left side  "}, {"fan2", "2100", "Right side "}});
  EXPECT_THAT(fansOf(tree),
              ElementsAre(Pair("Left", 2000), Pair("Right", 2100), Pair("amdgpu-1", 1500)));
}

TEST(HwmonFans, NamesThatBeginAlikeStayDifferent) {
  Tree tree;
  addChip(tree, 0, "macsmc_hwmon", "platform/soc/smc",
          {{"fan1", "1000", "Fan 1"}, {"fan2", "1001", "Fan 2"}});
  addChip(tree, 1, "amdgpu", "pci0000:00/0000:03:00.0", {{"fan1", "1500"}});
  addChip(tree, 2, "amdgpu", "pci0000:00/0000:09:00.0", {{"fan1", "1600"}});
  addChip(tree, 3, "asusec", "some_other_bus/zz",
          {{"fan1", "1", "Same long label"}, {"fan2", "2", "Same long label"}});
  EXPECT_THAT(fansOf(tree), ElementsAre(Pair("Fan_1", 1000), Pair("Fan_2", 1001),
                                        Pair("amdgpu-1", 1500), Pair("amdgpu-1-2", 1600),
                                        Pair("Same_long_la", 1), Pair("Same_long_-2", 2)));
}

TEST(HwmonFans, TenFansThatTurnOrHaveALabelAreShownIfThereAreMore) {
  Tree tree;
  std::vector<ChannelFiles> channels;
  for (int i = 1; i <= 14; ++i) {
    channels.push_back({"fan" + std::to_string(i), i % 2 == 0 ? "0" : std::to_string(1000 + i)});
  }
  channels[11].label = "Pump";  // fan12 does not turn
  addChip(tree, 0, "nct6798", "platform/nct6775.656", channels);
  EXPECT_THAT(fansOf(tree),
              ElementsAre(Pair("nct6798-1", 1001), Pair("nct6798-2", 0), Pair("nct6798-3", 1003),
                          Pair("nct6798-4", 0), Pair("nct6798-5", 1005), Pair("nct6798-7", 1007),
                          Pair("nct6798-9", 1009), Pair("nct6798-11", 1011), Pair("Pump", 0),
                          Pair("nct6798-13", 1013)));
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  EXPECT_EQ(listed(machine, "nct6798", "fan6_input").reason, "ten other fans are shown");
}

TEST(HwmonFans, FanWithoutAReadingIsNotTreatedAsStopped) {
  Tree tree;
  addChip(tree, 0, "nct6798", "platform/nct6775.656",
          {{"fan1", "1000"}, {"fan2", "65535"}, {"fan3", "-5"}, {"fan4", "fast"}, {"fan5", "1"}});
  tree.write(chipFile(0, "fan5_fault"), "1\n");
  EXPECT_THAT(fansOf(tree),
              ElementsAre(Pair("nct6798-1", 1000), Pair("nct6798-2", -1), Pair("nct6798-3", -1),
                          Pair("nct6798-4", -1), Pair("nct6798-5", -1)));
}

TEST(HwmonFans, GraphicsFanWithAutomaticSpeedIsRead) {
  Tree tree;
  addChip(tree, 0, "amdgpu", "pci0000:00/0000:03:00.0", {{"fan1", "1500"}});
  tree.write(chipFile(0, "fan1_enable"), "0\n");
  EXPECT_THAT(fansOf(tree), ElementsAre(Pair("amdgpu-1", 1500)));
}

TEST(HwmonFans, GarbageInLabelsGivesPrintableNames) {
  Tree tree;
  addChip(tree, 0, "chip", "platform/chip",
          {{"fan1", "1", "a\nb"}, {"fan2", "2", " \t "}, {"fan3", "3", "\xC3\xA9t\xC3\xA9"}});
  EXPECT_THAT(fansOf(tree), ElementsAre(Pair("a", 1), Pair("chip-2", 2), Pair("??t??", 3)));
}

}  // namespace
}  // namespace halvermonte::test
