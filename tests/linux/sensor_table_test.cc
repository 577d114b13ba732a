#include "platform/linux/hwmon/SensorTable.hpp"

#include <gmock/gmock.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "engine/Catalogue.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::test {
namespace {

using linuxos::KeyRow;
using linuxos::keyRows;
using linuxos::matches;
using ::testing::HasSubstr;

bool isOwn(const KeyRow& row) {
  return row.keys == linuxos::kLabelIsKey || row.keys == linuxos::kKeyInDeviceTree;
}

/// The engine's name for a key on a computer that is not a Mac.
std::string nameOf(std::string_view key) {
  return std::string(humanReadableNames("", 8).find(key).asText().view());
}

TEST(SensorTable, StarsInPatternsMatchAnyCharacters) {
  EXPECT_TRUE(matches("nvme", "nvme"));
  EXPECT_FALSE(matches("nvme", "nvme0"));
  EXPECT_TRUE(matches("pch_*", "pch_"));
  EXPECT_TRUE(matches("mt7*_phy*", "mt7921_phy0"));
  EXPECT_FALSE(matches("mt7*_phy*", "mt7921"));
  EXPECT_TRUE(matches("a|b*|c", "c"));
  EXPECT_TRUE(matches("a|b*|c", "bb"));
  EXPECT_FALSE(matches("a|b*|c", ""));
  EXPECT_TRUE(matches("*", ""));
}

TEST(SensorTable, EngineReadsAndNamesEveryKeyOnAnyProcessor) {
  std::set<std::string_view> visited;
  const Array keys = temperatureKeys();
  for (const Value& key : keys.elements()) visited.insert(key.asText().view());
  for (const KeyRow& row : keyRows()) {
    if (isOwn(row)) continue;
    for (const std::string_view key : linuxos::words(row.keys)) {
      EXPECT_TRUE(visited.contains(key)) << key;
      EXPECT_NE(nameOf(key), "") << key;
      for (const char* processor : {"Apple M1", "Apple M2", "Apple M3 Max", "Apple M4 Pro"}) {
        EXPECT_EQ(humanReadableNames(processor, 16).find(key).asText().view(), nameOf(key));
      }
    }
  }
}

/// The row in the form of the manual.
std::string printed(const KeyRow& row) {
  std::ostringstream line;
  const auto quoted = [&](std::string_view patterns) {
    for (const std::string_view pattern : linuxos::split(patterns, '|')) {
      line << (pattern.data() == patterns.data() ? "`" : ", `") << pattern << '`';
    }
  };
  line << "| ";
  quoted(row.driver);
  line << " | ";
  quoted(row.label);
  line << " | ";
  if (isOwn(row)) {
    line << row.keys;
  } else {
    std::string_view comma;
    for (const std::string_view key : linuxos::words(row.keys)) {
      line << std::exchange(comma, ", ") << '`' << key << "` " << nameOf(key);
    }
  }
  line << " | " << row.lowest << " to " << row.highest << " |\n";
  return line.str();
}

TEST(SensorTable, IsPrintedInTheManual) {
  std::ostringstream manual;
  manual << std::ifstream(HALVERMONTE_LINUX_MANUAL).rdbuf();
  std::string table;
  for (const KeyRow& row : keyRows()) table += printed(row);
  EXPECT_THAT(manual.str(), HasSubstr(table));
  for (const linuxos::ReadPolicyRow& row : linuxos::readPolicyRows()) {
    for (const std::string_view driver : linuxos::split(row.driver, '|')) {
      EXPECT_THAT(manual.str(), HasSubstr("`" + std::string(driver) + "`"));
    }
  }
}

}  // namespace
}  // namespace halvermonte::test
