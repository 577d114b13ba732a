#include "monitor/MachineChoice.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "halvermonte/BundledMachines.hpp"
#include "monitor/Failure.hpp"
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
Choice chosenOn(std::optional<std::string> asked) {
  Options options;
  options.machine = std::move(asked);
  return chooseMachine(options, std::make_unique<Computer>());
}

// The refusal's line and exit status.
std::pair<std::string, ExitStatus> refusalOf(const std::string& asked) {
  try {
    chosenOn<EmptyComputer>(asked);
  } catch (const Failure& failure) {
    return {failure.what(), failure.status()};
  }
  return {"", ExitStatus::success};
}

TEST(MachineChoice, ThisComputerIsTakenIfItOffersAnything) {
  const Choice chosen = chosenOn<ComputerWithADrive>(std::nullopt);
  EXPECT_FALSE(chosen.sampling->view().isSimulated);
  EXPECT_EQ(chosen.sampling->view().title, "This computer: Box");
}

TEST(MachineChoice, SimulatedM1StandsInAndTheTitleSaysWhy) {
  const Choice chosen = chosenOn<EmptyComputer>(std::nullopt);
  EXPECT_TRUE(chosen.sampling->view().isSimulated);
  EXPECT_EQ(chosen.sampling->view().title, "M1, simulated: this computer offers nothing to read");
}

TEST(MachineChoice, HostIsThisComputerEvenIfItHasNothing) {
  const Choice chosen = chosenOn<EmptyComputer>("host");
  EXPECT_FALSE(chosen.sampling->view().isSimulated);
  EXPECT_EQ(chosen.sampling->view().title, "This computer: Box");
}

TEST(MachineChoice, TreeIsNotCalledThisComputer) {
  const Tree tree;
  Options options;
  options.machine = "host";
  options.sys = tree.at("sys");
  EXPECT_THAT(chooseMachine(options).sampling->view().title,
              AllOf(HasSubstr(tree.at("sys").string()), Not(HasSubstr("This computer"))));
}

TEST(MachineChoice, BundledNamesAreFoundInWhateverCaseAndAlwaysCalledSimulated) {
  for (const BundledMachine& machine : bundledMachines()) {
    std::string name(machine.name);
    for (char& letter : name) letter = static_cast<char>(std::tolower(letter));
    EXPECT_EQ(chosenOn<ComputerWithADrive>(name).sampling->view().title,
              std::string(machine.name) + ", simulated");
  }
}

TEST(MachineChoice, AnythingElseIsAFile) {
  Tree tree;
  tree.write("mine.json", R"({"name": "Mine", "ticks": [{}]})");
  EXPECT_EQ(chosenOn<EmptyComputer>(tree.at("mine.json")).sampling->view().title,
            "Mine, simulated");
}

TEST(MachineChoice, UnknownNameCouldNotBeDone) {
  const auto [line, status] = refusalOf("/nowhere/mine.json");
  EXPECT_THAT(line, AllOf(HasSubstr("\"/nowhere/mine.json\""), HasSubstr("--machine list")));
  EXPECT_EQ(status, ExitStatus::failure);
}

TEST(MachineChoice, InvalidMachineFileIsWrongUse) {
  Tree tree;
  tree.write("mine.json", R"({"name": "Mine", "ticks": []})");
  const auto [line, status] = refusalOf(tree.at("mine.json"));
  EXPECT_THAT(line, StartsWith(tree.at("mine.json").string() + ": /ticks: expected"));
  EXPECT_EQ(status, ExitStatus::wrongUse);
}

TEST(MachineChoice, SensorsOrDrivesAreSomethingToRead) {
  const auto offer = [](const std::function<void(TestMachine&)>& setUp) {
    auto machine = std::make_unique<TestMachine>();
    setUp(*machine);
    Sampling sampling({.machine = std::move(machine)});
    return offerOf(sampling);
  };
  EXPECT_EQ(offer([](TestMachine&) {}), Offer::nothing) << "a controller without keys";
  EXPECT_EQ(offer([](TestMachine& machine) { machine.keys["TC0P"] = sp78(0); }), Offer::nothing)
      << "a key without a reading that is shown";
  EXPECT_EQ(offer([](TestMachine& machine) { machine.keys["TC0P"] = sp78(40); }), Offer::sensors);
  EXPECT_EQ(offer([](TestMachine& machine) {
              machine.setTemperatureSensors({sensor("gas gauge battery", 30)});
            }),
            Offer::sensors);
  EXPECT_EQ(offer([](TestMachine& machine) {
              machine.setTemperatureSensors({sensor("of no name that is shown", 30)});
            }),
            Offer::nothing);
  EXPECT_EQ(offer([](TestMachine& machine) { machine.keys["FNum"] = ui8(1); }), Offer::sensors)
      << "a fan that stands";
  EXPECT_EQ(offer([](TestMachine& machine) { machine.drives = {DriveStatistics()}; }),
            Offer::drivesAlone);
  EXPECT_EQ(offer([](TestMachine& machine) { machine.drives = std::nullopt; }), Offer::nothing);
}

TEST(MachineChoice, PassThatDecidesIsTheFirstThatIsShown) {
  auto owned = std::make_unique<TestMachine>();
  TestMachine& machine = *owned;
  machine.keys["TC0P"] = sp78(40);
  const Choice choice = chooseMachine(Options(), std::move(owned));
  machine.keys["TC0P"] = sp78(41);
  EXPECT_EQ(choice.sampling->pass().temperatures.front().number, 40);
  EXPECT_EQ(choice.sampling->pass().temperatures.front().number, 41);
  EXPECT_EQ(std::ranges::count(machine.asked, "drives"), 1) << "one engine";
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
