// Which keys are built in.
#include <gtest/gtest.h>

#include <span>

#include "catalogue/BuiltInNames.hpp"

namespace halvermonte::test {
namespace {

TEST(BuiltInNames, EveryKeyOfTheFourListsIsBuiltIn) {
  const std::span<const std::string_view> lists[] = {kTemperatureKeys, kVoltageKeys, kCurrentKeys,
                                                     kPowerKeys};
  for (const auto& list : lists) {
    for (const std::string_view key : list) EXPECT_TRUE(isBuiltInKey(key)) << key;
  }
}

TEST(BuiltInNames, ANamedKeyIsBuiltInIfNoListHasIt) { EXPECT_TRUE(isBuiltInKey("TP0P")); }

TEST(BuiltInNames, EveryKeyNamedOnAnyProcessorIsBuiltIn) {
  for (const char* processor :
       {"", "Apple M1", "Apple M2 Max", "Apple M3 Max", "Apple M4", "Apple M4 Max"}) {
    for (const NamedKey& row : builtInNames(processor, 64)) {
      EXPECT_TRUE(isBuiltInKey(row.key)) << row.key;
    }
  }
}

TEST(BuiltInNames, AnyOtherKeyIsNotBuiltIn) {
  for (const char* key : {"", "TC", "TC0p", "TC0PP", "FNum", "F0Ac"}) {
    EXPECT_FALSE(isBuiltInKey(key)) << key;
  }
}

TEST(BuiltInNames, APassReadsTheTemperatureKeysAlone) {
  EXPECT_TRUE(isBuiltInTemperatureKey("TC0P"));
  for (const char* key : {"TP0P", "VC0C", "IC0C", "PC0C", "F0Ac"}) {
    EXPECT_FALSE(isBuiltInTemperatureKey(key)) << key;
  }
}

}  // namespace
}  // namespace halvermonte::test
