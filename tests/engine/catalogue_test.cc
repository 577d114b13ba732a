// The engine's vocabulary of SMC keys and display names, as an engine has it after construction.
#include <gtest/gtest.h>

#include <set>

#include "tests/engine/CatalogueExpectations.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

std::vector<std::string> textsOf(const Array& keys) {
  std::vector<std::string> texts;
  for (const Value& key : keys) texts.emplace_back(key.asText().str());
  return texts;
}

/// The names of an engine on a computer of that processor.
Entries namesOn(const std::string& processor, int32_t cores) {
  TestMachine machine;
  machine.drives = std::nullopt;
  machine.setProcessor(processor);
  machine.kernelVariables["hw.physicalcpu"] = cores;
  return entriesOf(Sampler(machine).state().smcKeyHumanReadableNames);
}

/// The key's name there; "" if it has none.
std::string nameOf(const std::string& key, const std::string& processor, int32_t cores) {
  for (const auto& [named, name] : namesOn(processor, cores)) {
    if (named == key) return name;
  }
  return "";
}

TEST(Catalogue, ListsTheKeysInTheirOrder) {
  TestMachine machine;
  const Sampler sampler(machine);
  EXPECT_EQ(textsOf(sampler.state().smcTempKeys), expectedTemperatureKeys());
  EXPECT_EQ(textsOf(sampler.state().smcVoltageKeys), expectedVoltageKeys());
  EXPECT_EQ(textsOf(sampler.state().smcCurrentKeys), expectedCurrentKeys());
  EXPECT_EQ(textsOf(sampler.state().smcPowerKeys), expectedPowerKeys());
}

TEST(Catalogue, Has181TemperatureKeysOfWhich178AreDistinct) {
  TestMachine machine;
  const Sampler sampler(machine);
  const std::vector<std::string> keys = textsOf(sampler.state().smcTempKeys);
  EXPECT_EQ(keys.size(), 181U);
  EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), 178U);
  EXPECT_EQ(sampler.state().smcVoltageKeys.size(), 29U);
  EXPECT_EQ(sampler.state().smcCurrentKeys.size(), 17U);
  EXPECT_EQ(sampler.state().smcPowerKeys.size(), 32U);
}

TEST(Catalogue, VisitsThreeTemperatureKeysTwice) {
  TestMachine machine;
  const Sampler sampler(machine);
  const std::vector<std::string> keys = textsOf(sampler.state().smcTempKeys);
  EXPECT_EQ(keys.at(55), "Tm0P");
  EXPECT_EQ(keys.at(107), "Tm0P");
  EXPECT_EQ(keys.at(93), "Tp0j");
  EXPECT_EQ(keys.at(137), "Tp0j");
  EXPECT_EQ(keys.at(99), "Tg0f");
  EXPECT_EQ(keys.at(118), "Tg0f");
}

struct Processor {
  const char* name;
  Chip chip;
};

class CatalogueNames : public testing::TestWithParam<Processor> {};

TEST_P(CatalogueNames, AreThoseOfTheChipForEveryNumberOfCores) {
  const auto& [processor, chip] = GetParam();
  for (int32_t cores = 0; cores <= 20; ++cores) {
    // No computer has 0 cores: the engine takes it for 1.
    const auto names = expectedNames(chip, cores);
    EXPECT_EQ(namesOn(processor, cores), Entries(names.begin(), names.end()))
        << processor << " with " << cores << " cores";
  }
}

TEST_P(CatalogueNames, GoOnForCoreCountsThatNoComputerHas) {
  const auto& [processor, chip] = GetParam();
  for (const int32_t cores : {INT32_MIN, -1, 21, 1000, INT32_MAX}) {
    const auto names = expectedNames(chip, cores);
    EXPECT_EQ(namesOn(processor, cores), Entries(names.begin(), names.end()))
        << processor << " with " << cores << " cores";
  }
}

// A chip's variants fit its own prefix, and so does any other text that begins with it.
INSTANTIATE_TEST_SUITE_P(
    EveryProcessor, CatalogueNames,
    testing::Values(Processor{"Apple M1", Chip::m1}, Processor{"Apple M1 Ultra", Chip::m1},
                    Processor{"Apple M10", Chip::m1}, Processor{"Apple M2", Chip::m2},
                    Processor{"Apple M2 Max", Chip::m2}, Processor{"Apple M3", Chip::m3},
                    Processor{"Apple M3 Pro", Chip::m3}, Processor{"Apple M4 Pro", Chip::m4Large},
                    Processor{"Apple M4 Max", Chip::m4Large},
                    Processor{"Apple M4 Ultra", Chip::m4Large},
                    Processor{"Apple M4 Professional", Chip::m4Large},
                    Processor{"Apple M4", Chip::other}, Processor{"Apple M4 pro", Chip::other},
                    Processor{"Apple M4Pro", Chip::other}, Processor{"Apple M5", Chip::other},
                    Processor{"Apple M", Chip::other}, Processor{"apple m1", Chip::other},
                    Processor{" Apple M2", Chip::other}, Processor{"M3", Chip::other},
                    Processor{"Quad-Core Intel Core i7", Chip::other}, Processor{"", Chip::other}),
    [](const testing::TestParamInfo<Processor>& processor) {
      std::string name = processor.param.name;
      for (char& character : name) {
        if (!isalnum(static_cast<unsigned char>(character))) character = '_';
      }
      return name.empty() ? std::string("Unknown") : name;
    });

TEST(Catalogue, LeavesTheSameKeysWithoutANameOnEveryProcessor) {
  const std::vector<std::string> unnamed = {"Tp0n", "Tp0r", "Tm0H", "Tm0b", "Th01", "Th02", "Th04",
                                            "Th05", "Th06", "Th08", "Th09", "Th0A", "Th0C", "Th0D",
                                            "Th0E", "Th0G", "Tp17", "Tp1B", "Tp1F", "Tp1J", "Tp1N"};
  std::set<std::string> named;
  for (const char* processor :
       {"Apple M1", "Apple M2", "Apple M3", "Apple M4", "Apple M4 Max", ""}) {
    for (const auto& [key, name] : namesOn(processor, 20)) named.insert(key);
  }
  std::vector<std::string> left;
  for (const std::string& key : expectedTemperatureKeys()) {
    if (!named.contains(key)) left.push_back(key);
  }
  EXPECT_EQ(left, unnamed);
}

struct Sample {
  const char* processor;
  int32_t cores;
  const char* key;
  const char* name;  ///< "": none
};

class CatalogueSamples : public testing::TestWithParam<Sample> {};

TEST_P(CatalogueSamples, NameAKeyByTheChipAndItsCores) {
  const Sample& sample = GetParam();
  EXPECT_EQ(nameOf(sample.key, sample.processor, sample.cores), sample.name)
      << sample.key << " on " << sample.processor << " with " << sample.cores << " cores";
}

INSTANTIATE_TEST_SUITE_P(
    Machines, CatalogueSamples,
    testing::Values(
        // A base M4 has the names of every computer that no rule knows.
        Sample{"Apple M4", 10, "Te09", "CPU Efficiency Core 2"},
        Sample{"Apple M4", 10, "Tp0V", "CPU Core 5"},
        Sample{"Intel Core i5", 4, "Te09", "CPU Efficiency Core 2"},
        Sample{"Intel Core i5", 4, "Tp0V", "CPU Core 5"},
        Sample{"", 1, "Te09", "CPU Efficiency Core 2"}, Sample{"", 1, "Tg0W", "GPU Cluster 1"},
        // The large M4 names a core more for each core from the eleventh on.
        Sample{"Apple M4 Pro", 14, "Tp2W", "CPU Core 10"},
        Sample{"Apple M4 Pro", 12, "Tp2R", "CPU Core 8"}, Sample{"Apple M4 Pro", 12, "Tp2U", ""},
        Sample{"Apple M4 Pro", 10, "Tp2M", ""},
        // The M3's names stop at the tenth core, which three keys share.
        Sample{"Apple M3 Max", 16, "Tf4B", "CPU Core 10"},
        Sample{"Apple M3 Max", 16, "Tf4D", "CPU Core 10"},
        Sample{"Apple M3 Max", 16, "Tf4E", "CPU Core 10"},
        Sample{"Apple M3", 13, "Tf4A", "CPU Core 9"}, Sample{"Apple M3", 13, "Tf4B", ""},
        Sample{"Apple M2", 10, "Tp0f", ""}, Sample{"Apple M2", 10, "Tp0j", ""},
        Sample{"Apple M2 Max", 12, "Tp0j", "CPU Core 8"},
        // An M1's fifth core loses its key to a power supply.
        Sample{"Apple M1", 8, "Tp0P", "Power Supply 1"}, Sample{"Apple M1", 20, "Tg0n", "GPU 2"},
        Sample{"Apple M1", 8, "Tg0f", "GPU 1"}, Sample{"Apple M1", 8, "Tg0W", ""},
        Sample{"Apple M1", 8, "Te05", ""}, Sample{"Apple M2", 8, "Tg0f", "GPU Cluster 4"},
        // One key, another core on another chip.
        Sample{"Apple M1", 8, "Tp01", "CPU Efficiency Core 1"},
        Sample{"Apple M2", 8, "Tp01", "CPU Core 1"}, Sample{"Apple M1", 8, "Tp0b", "CPU Core 8"},
        Sample{"Apple M2", 8, "Tp0b", "CPU Core 6"}, Sample{"Apple M4", 11, "Tp0b", "CPU Core 7"},
        Sample{"Apple M4", 10, "Tp0b", ""},
        // What is given twice ends with the later name.
        Sample{"", 1, "Tm0P", "Memory Bank 6"}, Sample{"", 1, "Tp0P", "Power Supply 1"},
        // A second processor has no first sensor.
        Sample{"", 1, "TC1E", "CPU 2 Sensor 2"}, Sample{"", 1, "TC1F", "CPU 2 Sensor 2"},
        // Named, and in no list.
        Sample{"", 1, "TP0P", "PCH Proximity"}));

TEST(Catalogue, IsEqualInTwoEnginesOfOneMachine) {
  TestMachine machine;
  machine.setProcessor("Apple M3 Max");
  machine.kernelVariables["hw.physicalcpu"] = 16;
  const Sampler first(machine);
  const Sampler second(machine);
  EXPECT_EQ(textsOf(first.state().smcTempKeys), textsOf(second.state().smcTempKeys));
  EXPECT_EQ(textsOf(first.state().smcVoltageKeys), textsOf(second.state().smcVoltageKeys));
  EXPECT_EQ(textsOf(first.state().smcCurrentKeys), textsOf(second.state().smcCurrentKeys));
  EXPECT_EQ(textsOf(first.state().smcPowerKeys), textsOf(second.state().smcPowerKeys));
  EXPECT_EQ(entriesOf(first.state().smcKeyHumanReadableNames),
            entriesOf(second.state().smcKeyHumanReadableNames));
}

TEST(Catalogue, StaysAsItWasAtConstruction) {
  TestMachine machine;
  machine.setProcessor("Apple M1");
  Sampler sampler(machine);
  const Dictionary before = sampler.state().smcKeyHumanReadableNames;
  machine.setProcessor("Apple M3");
  machine.kernelVariables["hw.physicalcpu"] = 16;
  sampler.pass();
  EXPECT_TRUE(sampler.state().smcKeyHumanReadableNames.isSame(before));
}

}  // namespace
}  // namespace halvermonte::test
