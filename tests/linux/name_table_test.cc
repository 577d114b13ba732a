#include "platform/linux/hwmon/NameTable.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "catalogue/BuiltInNames.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::test {
namespace {

using linuxos::matches;

TEST(NameTable, StarsInPatternsMatchAnyCharacters) {
  EXPECT_TRUE(matches("nvme", "nvme"));
  EXPECT_FALSE(matches("nvme", "nvme0"));
  EXPECT_TRUE(matches("pch_*", "pch_"));
  EXPECT_TRUE(matches("ath*k_hwmon", "ath11k_hwmon"));
  EXPECT_FALSE(matches("ath*k_hwmon", "ath11k"));
  EXPECT_TRUE(matches("a|b*|c", "c"));
  EXPECT_TRUE(matches("a|b*|c", "bb"));
  EXPECT_FALSE(matches("a|b*|c", ""));
  EXPECT_TRUE(matches("*", ""));
}

TEST(NameTable, EngineReadsEveryBuiltInKeyAndHasItsNameOnAnyProcessor) {
  for (const linuxos::BuiltInKeyRow& row : linuxos::builtInKeyRows()) {
    EXPECT_TRUE(isBuiltInTemperatureKey(row.key)) << row.key;
    for (const char* processor : {"", "Apple M1", "Apple M2", "Apple M3 Max", "Apple M4 Pro"}) {
      std::string_view name;
      for (const NamedKey& each : builtInNames(processor, 16)) {
        if (each.key == row.key) name = each.name;
      }
      EXPECT_EQ(name, row.name) << processor;
    }
  }
}

std::string quoted(std::string_view patterns) {
  std::string text;
  for (const std::string_view pattern : linuxos::split(patterns, '|')) {
    text += (text.empty() ? "`" : ", `") + std::string(pattern) + "`";
  }
  return text;
}

/// The rows in the form of the manual.
std::string printedNames() {
  std::ostringstream table;
  for (const linuxos::NameRow& row : linuxos::nameRows()) {
    std::string name(row.name);
    std::replace(name.begin(), name.end(), '|', ' ');
    table << "| " << quoted(row.driver) << " | " << quoted(row.label) << " | "
          << (name.empty() ? "(not shown)" : name) << " |\n";
  }
  return table.str();
}

std::string printedKeys() {
  std::ostringstream table;
  for (const linuxos::BuiltInKeyRow& row : linuxos::builtInKeyRows()) {
    table << "| " << row.name << " | `" << row.key << "` |\n";
  }
  return table.str();
}

std::string meaningOf(linuxos::Credibility credibility) {
  switch (credibility) {
    case linuxos::Credibility::openInput:
      return "not before one below 80";
    case linuxos::Credibility::constantsOfFirmware:
      return "not a constant";
    case linuxos::Credibility::range:
      break;
  }
  return "";
}

std::string printedCredibility() {
  std::ostringstream table;
  for (const linuxos::CredibilityRow& row : linuxos::credibilityRows()) {
    table << "| " << quoted(row.driver) << " | " << quoted(row.label) << " | " << row.lowest
          << " to " << row.highest << " | " << meaningOf(row.credibility) << " |\n";
  }
  return table.str();
}

TEST(NameTable, IsPrintedInTheManual) {
  std::ostringstream manual;
  manual << std::ifstream(HALVERMONTE_LINUX_MANUAL).rdbuf();
  for (const std::string& table : {printedNames(), printedKeys(), printedCredibility()}) {
    EXPECT_NE(manual.str().find(table), std::string::npos) << "expected:\n" << table;
  }
  for (const linuxos::ReadPolicyRow& row : linuxos::readPolicyRows()) {
    for (const std::string_view driver : linuxos::split(row.driver, '|')) {
      EXPECT_NE(manual.str().find("`" + std::string(driver) + "`"), std::string::npos) << driver;
    }
  }
}

}  // namespace
}  // namespace halvermonte::test
