#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "platform/Foundation.hpp"
#include "tests/record/PropertyTable.hpp"
#include "tests/support/RecordTexts.hpp"

namespace halvermonte::test {
namespace {

/// A value that no two properties or records share.
Value valueOf(const Property& property, const std::string& owner) {
  static int32_t made = 0;
  const std::string label = owner + "'s " + property.name;
  switch (property.kind) {
    case Kind::text:
      return Text(label);
    case Kind::number:
      return Number::ofInt32(++made);
    case Kind::array:
      return Array({Text(label), Number::ofInt32(++made), Value()});
    case Kind::dictionary:
      return Dictionary({{Text(label), Number::ofInt32(++made)}, {Text("b"), Text(label)}});
    case Kind::date:
      return Date(++made);
    case Kind::image:
      return Image(std::make_shared<int>(++made));
    case Kind::flag:
    case Kind::integer:
      break;
  }
  return {};
}

/// What one record holds, to tell later whether a property was touched.
struct Contents {
  std::map<std::string, Value> values;
  std::map<std::string, int64_t> integers;
};

Contents filled(StatisticsData& record, const std::string& owner, int64_t integer) {
  Contents contents;
  for (const Property& property : propertyTable()) {
    if (property.isInteger()) {
      property.accessors.setInteger(record, integer);
      contents.integers[property.name] = integer;
    } else {
      const Value value = valueOf(property, owner);
      property.accessors.set(record, value);
      contents.values[property.name] = value;
    }
  }
  return contents;
}

bool holds(const StatisticsData& record, const Property& property, const Contents& contents) {
  return property.isInteger()
             ? property.accessors.getInteger(record) == contents.integers.at(property.name)
             : property.accessors.get(record).isSame(contents.values.at(property.name));
}

bool sameElements(const Array& first, const Array& second) {
  return std::ranges::equal(first, second,
                            [](const Value& a, const Value& b) { return a.isSame(b); });
}

bool sameEntries(const Dictionary& first, const Dictionary& second) {
  return std::ranges::equal(first, second,
                            [](const Dictionary::Entry& a, const Dictionary::Entry& b) {
                              return a.key == b.key && a.value.isSame(b.value);
                            });
}

/// A new object of the same contents; the elements of a container are shared.
bool isFresh(const Value& copy, const Value& original, CopyRule rule) {
  if (!copy || copy.kind() != original.kind() || copy.isSame(original)) return false;
  if (rule == CopyRule::freshText) return copy.asText() == original.asText();
  if (rule == CopyRule::freshArray) return sameElements(copy.asArray(), original.asArray());
  return sameEntries(copy.asDictionary(), original.asDictionary());
}

class CopyTest : public ::testing::Test {
 protected:
  StatisticsData source_;
  StatisticsData receiver_;
  const Contents sourceContents_ = filled(source_, "the source", 1);
  const Contents receiverContents_ = filled(receiver_, "the receiver", 0);

  bool isCopied(const Property& property) const {
    if (property.copy == CopyRule::same) {
      return holds(receiver_, property, sourceContents_);
    }
    return isFresh(property.accessors.get(receiver_), sourceContents_.values.at(property.name),
                   property.copy);
  }
};

TEST_F(CopyTest, EachPropertyIsCopiedByItsRule) {
  receiver_.populateStatisticsDataFrom(source_);
  for (const Property& property : propertyTable()) {
    if (property.copy == CopyRule::notCopied) {
      EXPECT_TRUE(holds(receiver_, property, receiverContents_)) << property.name;
    } else {
      EXPECT_TRUE(isCopied(property)) << property.name;
    }
  }
}

TEST_F(CopyTest, TheSourceStaysAsItIs) {
  receiver_.populateStatisticsDataFrom(source_);
  for (const Property& property : propertyTable()) {
    EXPECT_TRUE(holds(source_, property, sourceContents_)) << property.name;
  }
}

TEST_F(CopyTest, SixPropertiesAreNotCopied) {
  std::vector<std::string> names;
  std::map<CopyRule, int> counts;
  for (const Property& property : propertyTable()) {
    ++counts[property.copy];
    if (property.copy == CopyRule::notCopied) names.emplace_back(property.name);
  }
  const std::vector<std::string> expected = {
      "summary_cpuUserLoad", "summary_cpuSystemLoad", "network_ipExternalCountryFlag",
      "core_installed",      "cpu_userActivities",    "cpu_systemActivities",
  };
  EXPECT_EQ(names, expected);
  EXPECT_EQ(counts[CopyRule::freshText], 36);
  EXPECT_EQ(counts[CopyRule::freshArray], 12);
  EXPECT_EQ(counts[CopyRule::freshDictionary], 4);
}

TEST_F(CopyTest, ASnapshotStaysWhenTheSourceGoesOn) {
  receiver_.populateStatisticsDataFrom(source_);
  const Array before = receiver_.cpu_activities();
  source_.setCpu_activities(Array(std::vector<Value>()));
  EXPECT_TRUE(receiver_.cpu_activities().isSame(before));
  EXPECT_EQ(before.size(), 3u);
}

TEST_F(CopyTest, TheInstalledCoreFlagKeepsTheReceiversOwn) {
  ASSERT_NE(source_.core_installed(), receiver_.core_installed());
  receiver_.populateStatisticsDataFrom(source_);
  EXPECT_EQ(receiver_.core_installed(), 0);
}

TEST_F(CopyTest, TwoBatteryTextsAreShared) {
  receiver_.populateStatisticsDataFrom(source_);
  EXPECT_TRUE(receiver_.battery_health().isSame(source_.battery_health()));
  EXPECT_TRUE(receiver_.battery_timeRemainingText().isSame(source_.battery_timeRemainingText()));
}

TEST_F(CopyTest, WhatIsAbsentInTheSourceAndSharedBecomesAbsent) {
  for (const Property& property : propertyTable()) {
    if (!property.isInteger() && property.copy == CopyRule::same) {
      property.accessors.set(source_, Value());
    }
  }
  receiver_.populateStatisticsDataFrom(source_);
  for (const Property& property : propertyTable()) {
    if (property.isInteger() || property.copy != CopyRule::same) continue;
    EXPECT_FALSE(property.accessors.get(receiver_)) << property.name;
  }
}

TEST_F(CopyTest, AnAbsentContainerIsCopiedAsAnEmptyOne) {
  for (const Property& property : propertyTable()) {
    if (property.copy == CopyRule::freshArray || property.copy == CopyRule::freshDictionary) {
      property.accessors.set(source_, Value());
    }
  }
  receiver_.populateStatisticsDataFrom(source_);
  for (const Property& property : propertyTable()) {
    const bool array = property.copy == CopyRule::freshArray;
    if (!array && property.copy != CopyRule::freshDictionary) continue;
    EXPECT_EQ(described(property.accessors.get(receiver_)), array ? "[]" : "{}") << property.name;
  }
}

TEST_F(CopyTest, ARecordMayBeCopiedOntoItself) {
  const auto before = described(source_);
  source_.populateStatisticsDataFrom(source_);
  EXPECT_EQ(described(source_), before);
  EXPECT_FALSE(source_.modelName().isSame(sourceContents_.values.at("modelName")));
}

/// The copied properties in the order in which they are copied: that of the declaration, but for
/// the power figures, which follow Bluetooth, and the cores, which follow their activities.
std::vector<const Property*> copyOrder() {
  constexpr std::pair<size_t, size_t> kRuns[] = {
      {1, 57}, {63, 78}, {59, 62}, {79, 83}, {58, 58}, {84, 103},
  };
  std::vector<const Property*> order;
  for (const auto& [first, last] : kRuns) {
    for (size_t number = first; number <= last; ++number) {
      const Property& property = propertyTable()[number - 1];
      if (property.copy != CopyRule::notCopied) order.push_back(&property);
    }
  }
  return order;
}

TEST_F(CopyTest, AnAbsentTextIsRefusedAfterWhatStandsBeforeItIsCopied) {
  const std::vector<const Property*> order = copyOrder();
  ASSERT_EQ(order.size(), 97u);
  for (size_t refused = 0; refused < order.size(); ++refused) {
    if (order[refused]->copy != CopyRule::freshText) continue;
    SCOPED_TRACE(order[refused]->name);
    StatisticsData source;
    StatisticsData receiver;
    filled(source, "the source", 1);
    const Contents before = filled(receiver, "the receiver", 0);
    order[refused]->accessors.set(source, Value());
    EXPECT_THROW(receiver.populateStatisticsDataFrom(source), PlatformException);
    for (size_t i = 0; i < order.size(); ++i) {
      EXPECT_EQ(holds(receiver, *order[i], before), i >= refused) << order[i]->name;
    }
  }
}

TEST_F(CopyTest, TheRefusalNamesTheProperty) {
  source_.setThermalPressure(Text());
  try {
    receiver_.populateStatisticsDataFrom(source_);
    FAIL() << "nothing was raised";
  } catch (const PlatformException& exception) {
    EXPECT_NE(exception.reason().find("thermalPressure"), std::string::npos) << exception.reason();
  }
}

TEST_F(CopyTest, ARecordOfAComputerWithoutANameCannotBeCopied) {
  StatisticsData nameless;
  nameless.setHostName(Text());
  EXPECT_THROW(receiver_.populateStatisticsDataFrom(nameless), PlatformException);
}

}  // namespace
}  // namespace halvermonte::test
