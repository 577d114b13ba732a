#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "tests/record/PropertyTable.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

bool isInt32(const Value& value, int32_t expected) {
  const Number number = value.asNumber();
  return number && number.form() == Number::Form::int32 && number.int32Value() == expected;
}

bool isText(const Value& value, std::string_view expected) {
  return value.kind() == Value::Kind::text && value.asText() == expected;
}

class DefaultsTest : public ::testing::Test {
 protected:
  DefaultsTest() {
    machine_.hostName = "Gerda's notebook";
    machine_.now = 1'700'000'000.25;
  }

  bool holdsDefault(const StatisticsData& record, const Property& property) const {
    if (property.isInteger()) {
      return property.accessors.getInteger(record) ==
             (property.initial == Default::minusOne ? -1 : 0);
    }
    const Value value = property.accessors.get(record);
    switch (property.initial) {
      case Default::unset:
        return !value;
      case Default::emptyText:
        return isText(value, "");
      case Default::dash:
        return isText(value, "-");
      case Default::hostName:
        return isText(value, *machine_.hostName);
      case Default::zero:
        return isInt32(value, 0);
      case Default::one:
        return isInt32(value, 1);
      case Default::emptyArray:
        return value.kind() == Value::Kind::array && value.asArray().size() == 0;
      case Default::emptyDictionary:
        return value.kind() == Value::Kind::dictionary && value.asDictionary().size() == 0;
      case Default::now:
        return value.kind() == Value::Kind::date &&
               value.asDate().secondsSince1970() == machine_.now;
      case Default::minusOne:
      case Default::no:
        break;
    }
    return false;
  }

  TestMachine machine_;
  ScopedMachine scope_{machine_};
};

TEST_F(DefaultsTest, TheRecordHasThesePropertiesInThisOrderAndNoOthers) {
  std::vector<std::string> declared;
#define PROPERTY(name, Name, Type, initial, copy, turn) declared.push_back(#name);
#include "halvermonte/properties.def"
  std::vector<std::string> expected;
  for (const Property& property : propertyTable()) expected.emplace_back(property.name);
  EXPECT_EQ(declared, expected);
  EXPECT_EQ(expected.size(), 103u);
}

TEST_F(DefaultsTest, EachPropertyHasItsType) {
  std::map<Kind, int> counts;
  for (const Property& property : propertyTable()) {
    EXPECT_EQ(property.accessors.kind, property.kind) << property.name;
    ++counts[property.kind];
  }
  const std::map<Kind, int> expected = {
      {Kind::text, 38}, {Kind::number, 35}, {Kind::array, 14}, {Kind::dictionary, 4},
      {Kind::date, 1},  {Kind::image, 1},   {Kind::flag, 9},   {Kind::integer, 1},
  };
  EXPECT_EQ(counts, expected);
}

TEST_F(DefaultsTest, AFreshRecordHoldsEachPropertysDefault) {
  const StatisticsData record;
  for (const Property& property : propertyTable()) {
    EXPECT_TRUE(holdsDefault(record, property)) << property.name;
  }
}

TEST_F(DefaultsTest, TheDefaultsThatHostsRelyOn) {
  const StatisticsData record;
  EXPECT_EQ(record.network_connectedToInternet(), -1);
  EXPECT_EQ(record.summary_memoryTotal().int32Value(), 1);
  EXPECT_EQ(record.summary_memoryOther().int32Value(), 1);
  EXPECT_EQ(record.summary_cpuCores().int32Value(), 1);
  EXPECT_EQ(record.summary_cpuLogicalCores().int32Value(), 1);
  EXPECT_EQ(record.diskIO_readText(), "-");
  EXPECT_TRUE(record.sensors_temperature());
  EXPECT_EQ(record.sensors_temperature(), "");
  EXPECT_FALSE(record.summary_cpuUserLoad());
  EXPECT_FALSE(record.cpu_userActivities());
  EXPECT_FALSE(record.network_ipExternalCountryFlag());
}

TEST_F(DefaultsTest, TheHostNameIsAbsentIfThePlatformReportsNone) {
  machine_.hostName.reset();
  const StatisticsData record;
  EXPECT_FALSE(record.hostName());
}

TEST_F(DefaultsTest, TheUpdateTimeIsTheMomentOfTheRecordsMaking) {
  const StatisticsData first;
  machine_.now += 60;
  const StatisticsData second;
  EXPECT_EQ(second.appsUpdateTime().secondsSince(first.appsUpdateTime()), 60.0);
}

/// Flags and integers in full range; the value as it is stored.
TEST_F(DefaultsTest, IntegersKeepTheirWholeRange) {
  StatisticsData record;
  for (const Property& property : propertyTable()) {
    if (!property.isInteger()) continue;
    const int bits = property.kind == Kind::flag ? 7 : 31;
    for (const int64_t value :
         {int64_t{1}, int64_t{0}, (int64_t{1} << bits) - 1, -(int64_t{1} << bits)}) {
      property.accessors.setInteger(record, value);
      EXPECT_EQ(property.accessors.getInteger(record), value) << property.name;
    }
  }
}

Value sampleOf(Kind kind) {
  switch (kind) {
    case Kind::text:
      return Text("some text");
    case Kind::number:
      return Number::ofFloat32(0.5F);
    case Kind::array:
      return Array({Text("an element")});
    case Kind::dictionary:
      return Dictionary({{Text("a key"), Text("a value")}});
    case Kind::date:
      return Date(12.5);
    case Kind::image:
      return Image(std::make_shared<int>(7));
    case Kind::flag:
    case Kind::integer:
      break;
  }
  return {};
}

TEST_F(DefaultsTest, ASetterStoresTheVeryObjectInItsPropertyAlone) {
  for (const Property& property : propertyTable()) {
    if (property.isInteger()) continue;
    StatisticsData record;
    const Value stored = sampleOf(property.kind);
    property.accessors.set(record, stored);
    EXPECT_TRUE(property.accessors.get(record).isSame(stored)) << property.name;
    for (const Property& other : propertyTable()) {
      if (&other == &property) continue;
      EXPECT_TRUE(holdsDefault(record, other)) << property.name << " changed " << other.name;
    }
  }
}

TEST_F(DefaultsTest, APropertyCanBeMadeAbsent) {
  StatisticsData record;
  for (const Property& property : propertyTable()) {
    if (property.isInteger()) continue;
    property.accessors.set(record, sampleOf(property.kind));
    property.accessors.set(record, Value());
    EXPECT_FALSE(property.accessors.get(record)) << property.name;
  }
}

TEST_F(DefaultsTest, ANumberKeepsTheFormItWasMadeFrom) {
  StatisticsData record;
  for (const Number& number : {Number::ofInt32(-3), Number::ofUInt64(~uint64_t{0}),
                               Number::ofFloat32(0.1F), Number::ofFloat64(0.1)}) {
    for (const Property& property : propertyTable()) {
      if (property.kind != Kind::number) continue;
      property.accessors.set(record, number);
      EXPECT_EQ(property.accessors.get(record).asNumber().form(), number.form()) << property.name;
    }
  }
}

}  // namespace
}  // namespace halvermonte::test
