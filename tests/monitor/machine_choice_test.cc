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

Options asking(const std::string& machine) {
  Options options;
  options.machine = machine;
  return options;
}

// The refusal's line and exit status.
std::pair<std::string, ExitStatus> refusalOf(const Options& options) {
  try {
    chooseMachine(options);
  } catch (const Failure& failure) {
    return {failure.what(), failure.status()};
  }
  return {"", ExitStatus::success};
}

TEST(MachineChoice, ThisComputerIsShownUnlessAnotherIsNamed) {
  const Choice chosen = chooseMachine(Options(), std::make_unique<ComputerWithADrive>());
  EXPECT_FALSE(chosen.sampling->view().isSimulated);
  EXPECT_EQ(chosen.sampling->view().title, "This computer: Box");
}

TEST(MachineChoice, ThisComputerIsShownEvenIfItHasNothing) {
  const Choice chosen = chooseMachine(Options(), std::make_unique<EmptyComputer>());
  EXPECT_FALSE(chosen.sampling->view().isSimulated);
  EXPECT_EQ(chosen.sampling->view().title, "This computer: Box");
  EXPECT_THAT(chosen.hint, AllOf(StartsWith("no sensors and no drives"), HasSubstr("simulated")));
}

TEST(MachineChoice, TreeIsNotCalledThisComputer) {
  Tree tree;
  tree.folder("sys");
  Options options;
  options.sys = tree.at("sys");
  EXPECT_THAT(chooseMachine(options).sampling->view().title,
              AllOf(HasSubstr(tree.at("sys").string()), Not(HasSubstr("This computer"))));
}

TEST(MachineChoice, BundledNamesAreFoundInWhateverCaseAndAlwaysCalledSimulated) {
  for (const BundledMachine& machine : bundledMachines()) {
    std::string name(machine.name);
    for (char& letter : name) letter = static_cast<char>(std::tolower(letter));
    EXPECT_EQ(chooseMachine(asking(name)).sampling->view().title,
              std::string(machine.name) + ", simulated");
  }
}

TEST(MachineChoice, AnythingElseIsAFile) {
  Tree tree;
  tree.write("mine.json", R"({"name": "Mine", "ticks": [{}]})");
  EXPECT_EQ(chooseMachine(asking(tree.at("mine.json"))).sampling->view().title, "Mine, simulated");
}

TEST(MachineChoice, UnknownNameIsWrongUseAndTheClosestIsNamed) {
  constexpr const char* kRefusals[][2] = {
      {"/nowhere/mine.json", ""},
      {"Cray", ""},
      {"M3Maxx", "M3 Max"},
      {"m4", "M4 Pro"},
      {"intel note book", "Intel Notebook"},
      {"M2 Mux", "M2 Max"},
      {"x", ""},
  };
  for (const auto& [asked, closest] : kRefusals) {
    const std::string question =
        *closest == '\0' ? "" : "; is it \"" + std::string(closest) + "\"?";
    EXPECT_EQ(refusalOf(asking(asked)),
              std::pair("--machine: no simulated computer and no file is called \"" +
                            std::string(asked) + "\"" + question + " (see --machine list)",
                        ExitStatus::wrongUse));
  }
}

TEST(MachineChoice, FolderThatIsNoneIsWrongUse) {
  Tree tree;
  tree.write("file", "");
  Options options;
  options.sys = tree.at("nowhere");
  EXPECT_EQ(refusalOf(options), std::pair("--sys " + *options.sys + ": No such file or directory",
                                          ExitStatus::wrongUse));
  options.sys = std::nullopt;
  options.proc = tree.at("file");
  EXPECT_EQ(refusalOf(options),
            std::pair("--proc " + *options.proc + ": Not a directory", ExitStatus::wrongUse));
}

TEST(MachineChoice, InvalidMachineFileIsWrongUse) {
  Tree tree;
  tree.write("mine.json", R"({"name": "Mine", "ticks": []})");
  const auto [line, status] = refusalOf(asking(tree.at("mine.json")));
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
