// What holds for every computer of tests/linux/trees.
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "halvermonte/MachineRecorder.hpp"
#include "halvermonte/SimulatedMachine.hpp"
#include "tests/linux/Computer.hpp"
#include "tests/linux/HeldClock.hpp"
#include "tests/linux/TreeFile.hpp"
#include "tests/support/RecordTexts.hpp"
#include "tests/support/Sampler.hpp"

namespace halvermonte::test {
namespace {

class TreeFile : public ::testing::TestWithParam<std::string> {
 protected:
  TreeFile() { layOutTreeFile(GetParam(), tree); }

  Tree tree;
};

/// The numbers in all files of temperatures, in whole degrees, without those that are no readings.
std::multiset<int> temperaturesIn(const std::filesystem::path& devices) {
  std::multiset<int> degrees;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(devices)) {
    const std::string name = entry.path().filename();
    if (!name.starts_with("temp") || !name.ends_with("_input")) continue;
    int number = 0;
    std::ifstream(entry.path()) >> number;
    if (number >= 1000 && number < 120000) degrees.insert(number / 1000);
  }
  return degrees;
}

TEST_P(TreeFile, EveryTemperatureIsInTheRecordUnderANameOfItsOwn) {
  std::multiset<int> degrees;
  for (const auto& [name, reading] : shown(tree, {.driveTemperatures = true})) {
    EXPECT_LE(name.size(), 40u);
    degrees.insert(reading);
  }
  EXPECT_EQ(degrees, temperaturesIn(tree.at("sys/devices")));
}

TEST_P(TreeFile, RecordingOfItGivesTheSameRecords) {
  constexpr size_t kPasses = 3;
  const auto passesOver = [](Machine& machine) {
    Sampler sampler(machine);
    std::vector<std::map<std::string, std::string>> records;
    for (size_t pass = 0; pass < kPasses; ++pass) {
      if (pass > 0) machine.nextTick();
      records.push_back(described(sampler.pass()));
    }
    return records;
  };
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  MachineRecorder recorder(machine, MachineRecorder::HostName::kept);
  const auto live = passesOver(recorder);
  const auto replay = SimulatedMachine::fromText(recorder.machineFile(), "recording.json");
  EXPECT_EQ(passesOver(*replay), live);
}

INSTANTIATE_TEST_SUITE_P(Trees, TreeFile, ::testing::ValuesIn(treeFiles()),
                         [](const auto& tree) { return tree.param; });

}  // namespace
}  // namespace halvermonte::test
