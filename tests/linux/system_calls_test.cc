// What a pass of the engine costs in system calls, on three computers.
#include <gmock/gmock.h>

#include "tests/linux/Computer.hpp"
#include "tests/linux/WatchedCalls.hpp"
#include "tests/support/Sampler.hpp"

namespace halvermonte::test {
namespace {

/// Two passes, of which the second is counted, and only calls that a settled pass makes are made:
/// one read a sensor and drive, and the two of the look for chips that came or went.
void expectReadsOfAPass(const Tree& tree, size_t reads) {
  WatchedCalls calls;
  LinuxMachine machine(tree.roots(), {}, calls);
  Sampler sampler(machine);
  sampler.pass();
  calls.restart();
  calls.seconds += 1;
  sampler.pass();
  EXPECT_EQ(calls.reads, reads);
  EXPECT_EQ(calls.lists, 1u);
  EXPECT_EQ(calls.opened.size() + calls.folders + calls.closes, 0u);
}

TEST(SystemCallsOfAPass, NotebookWithNvmeAndRadio) {
  Tree tree;
  addChip(tree, 0, "coretemp", "platform/coretemp.0",
          {{"temp1", "51000", "Package id 0"},
           {"temp2", "48000", "Core 0"},
           {"temp3", "48000", "Core 1"}});
  addChip(tree, 1, "dell_smm", "platform/dell_smm_hwmon",
          {{"temp1", "52000"}, {"temp2", "42000"}, {"fan1", "0"}, {"fan2", "0"}});
  addChip(tree, 2, "nvme", "pci0000:00/0000:01:00.0/nvme/nvme0",
          {{"temp1", "41850", "Composite"}, {"temp2", "41850", "Sensor 1"}});
  addChip(tree, 3, "ath11k_hwmon", "pci0000:00/0000:72:00.0", {{"temp1", "49000"}});
  addChip(tree, 4, "BAT0", "LNXSYSTM:00/power_supply/BAT0", {{"in0", "7540"}, {"curr1", "3150"}});
  addDrive(tree, "nvme0n1", "pci0000:00/0000:01:00.0/nvme/nvme0", 1);
  // The drive's and the radio's temperatures are commands: none in this pass.
  expectReadsOfAPass(tree, 3 + 2 + 1);
}

TEST(SystemCallsOfAPass, MacWhoseControllerHasKeysThatNobodyAsksFor) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768",
             {{"temp1", "32000", "TA0P"},
              {"temp2", "50000", "TC1C"},
              {"temp3", "-127000", "TW0P"},
              {"temp4", "33750", "TH0A"},
              {"temp5", "30000", "Ts1S"},
              {"fan1", "1309", "Right Side  "}});
  addDrive(tree, "sda", "pci0000:00/ata1/block", 1);
  addDrive(tree, "sdb", "pci0000:00/ata2/block", 1);
  expectReadsOfAPass(tree, 3 + 1 + 2);
}

TEST(SystemCallsOfAPass, WorkstationWithGraphicsThatMaySleep) {
  Tree tree;
  addChip(tree, 0, "k10temp", "pci0000:00/0000:00:18.3",
          {{"temp1", "45000", "Tctl"}, {"temp3", "44000", "Tccd1"}});
  addChip(tree, 1, "amdgpu", "pci0000:00/0000:03:00.0",
          {{"temp1", "44000", "edge"}, {"temp2", "61000", "junction"}, {"fan1", "1500"}});
  tree.write("sys/devices/pci0000:00/0000:03:00.0/power/runtime_status", "active\n");
  for (int i = 0; i < 4; ++i) {
    addChip(tree, 2 + i, "jc42", "pci0000:00/i2c-0/0-001" + std::to_string(8 + i),
            {{"temp1", "38000"}});
  }
  // One read more tells whether the graphics are awake.
  expectReadsOfAPass(tree, 2 + 1 + 3 + 4);
}

}  // namespace
}  // namespace halvermonte::test
