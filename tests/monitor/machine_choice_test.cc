#include "monitor/MachineChoice.hpp"

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "monitor/StandardStreams.hpp"
#include "platform/simulated/BundledMachines.hpp"
#include "tests/linux/Tree.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class EmptyComputer : public Machine {
 public:
  std::string name() override { return "Box"; }
  bool isThisComputer() override { return true; }
};

class ComputerWithADrive : public EmptyComputer {
 public:
  std::optional<size_t> driveCount() override { return 1; }
};

template <class Computer>
ChosenMachine chosenOn(std::optional<std::string> asked) {
  Options options;
  options.machine = std::move(asked);
  return chooseMachine(options, std::make_unique<Computer>());
}

// The refusal's line and exit status.
std::pair<std::string, int> refusalOf(const std::string& asked) {
  try {
    chosenOn<EmptyComputer>(asked);
  } catch (const Failure& failure) {
    return {failure.what(), failure.status()};
  }
  return {};
}

TEST(MachineChoice, ThisComputerIsTakenWhereItOffersAnything) {
  const ChosenMachine chosen = chosenOn<ComputerWithADrive>(std::nullopt);
  EXPECT_EQ(chosen.simulated, nullptr);
  EXPECT_EQ(chosen.title, "This computer: Box");
}

TEST(MachineChoice, SimulatedM1StandsInAndTheTitleSaysWhy) {
  const ChosenMachine chosen = chosenOn<EmptyComputer>(std::nullopt);
  EXPECT_EQ(chosen.simulated, chosen.machine.get());
  EXPECT_EQ(chosen.title, "M1, simulated: this computer offers nothing to read");
}

TEST(MachineChoice, HostIsThisComputerEvenWhereItHasNothing) {
  const ChosenMachine chosen = chosenOn<EmptyComputer>("host");
  EXPECT_EQ(chosen.simulated, nullptr);
  EXPECT_EQ(chosen.title, "This computer: Box");
}

TEST(MachineChoice, TreeIsNotCalledThisComputer) {
  const Tree tree;
  Options options;
  options.machine = "host";
  options.sys = tree.at("sys");
  EXPECT_THAT(chooseMachine(options).title,
              AllOf(HasSubstr(tree.at("sys").string()), Not(HasSubstr("This computer"))));
}

TEST(MachineChoice, BundledNamesAreFoundInWhateverCaseAndAlwaysCalledSimulated) {
  for (const BundledMachine& machine : bundledMachines()) {
    std::string name(machine.name);
    for (char& letter : name) letter = static_cast<char>(std::tolower(letter));
    EXPECT_EQ(chosenOn<ComputerWithADrive>(name).title, std::string(machine.name) + ", simulated");
  }
}

TEST(MachineChoice, AnythingElseIsAFile) {
  Tree tree;
  tree.write("mine.json", R"({"name": "Mine", "ticks": [{}]})");
  EXPECT_EQ(chosenOn<EmptyComputer>(tree.at("mine.json")).title, "Mine, simulated");
}

TEST(MachineChoice, UnknownNameCouldNotBeDone) {
  const auto [line, status] = refusalOf("/nowhere/mine.json");
  EXPECT_THAT(line, AllOf(HasSubstr("\"/nowhere/mine.json\""), HasSubstr("--machine list")));
  EXPECT_EQ(status, 1);
}

TEST(MachineChoice, InvalidMachineFileIsWrongUse) {
  Tree tree;
  tree.write("mine.json", R"({"name": "Mine", "ticks": []})");
  const auto [line, status] = refusalOf(tree.at("mine.json"));
  EXPECT_THAT(line, StartsWith(tree.at("mine.json").string() + ": /ticks: expected"));
  EXPECT_EQ(status, 2);
}

TEST(MachineChoice, ReadingsOrDrivesAreSomethingToRead) {
  TestMachine machine;
  EXPECT_FALSE(offersReadings(machine)) << "a controller without keys";
  machine.keys["TC0P"] = sp78(0);
  EXPECT_FALSE(offersReadings(machine)) << "a key without a reading that is shown";
  machine.keys["TC0P"] = sp78(40);
  EXPECT_TRUE(offersReadings(machine));
  machine.keys.clear();
  machine.setTemperatureSensors({sensor("gas gauge battery", 30)});
  EXPECT_TRUE(offersReadings(machine));
  machine.setTemperatureSensors({sensor("of no name that is shown", 30)});
  EXPECT_FALSE(offersReadings(machine));
  machine.keys = {{"FNum", ui8(1)}};
  EXPECT_TRUE(offersReadings(machine)) << "a fan that stands";
  machine.keys.clear();
  machine.drives = {DriveStatistics()};
  EXPECT_TRUE(offersReadings(machine));
  machine.drives = std::nullopt;
  EXPECT_FALSE(offersReadings(machine));
}

TEST(MachineList, HasALineForEachBundledMachine) {
  const std::string list = machineList();
  EXPECT_EQ(static_cast<size_t>(std::count(list.begin(), list.end(), '\n')),
            bundledMachines().size());
  for (const BundledMachine& machine : bundledMachines()) {
    EXPECT_THAT(list, HasSubstr(std::string(machine.name) + " "));
    EXPECT_THAT(list, HasSubstr("  " + machine.description() + "\n"));
  }
}

}  // namespace
}  // namespace halvermonte::test
