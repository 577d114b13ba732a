#include <map>

#include "platform/apple/Bridging.hpp"
#include "tests/framework/ObjectiveC.hpp"
#include "tests/record/PropertyTable.hpp"

namespace {

using halvermonte::test::CopyRule;
using halvermonte::test::Kind;
using halvermonte::test::Property;
using halvermonte::test::propertyTable;

NSString* keyOf(const Property& property) { return halvermonte::stringOf(property.name); }

/// An object of the host's for the property, mutable where there is such a kind.
id newValue(const Property& property, int flag) {
  NSString* const name = keyOf(property);
  switch (property.kind) {
    case Kind::text:
      return [NSMutableString stringWithString:name];
    case Kind::array:
      return [NSMutableArray arrayWithObject:[[[Counted alloc] init] autorelease]];
    case Kind::dictionary:
      return [NSMutableDictionary dictionaryWithObject:[[[Counted alloc] init] autorelease]
                                                forKey:name];
    case Kind::flag:
    case Kind::integer:
      return [NSNumber numberWithInt:flag];
    default:
      return [[[Counted alloc] init] autorelease];
  }
}

class RecordCopyTest : public ObjectiveCTest {
 protected:
  RecordCopyTest() {
    for (const Property& property : propertyTable()) {
      [source_ setValue:newValue(property, 1) forKey:keyOf(property)];
      [receiver_ setValue:newValue(property, 0) forKey:keyOf(property)];
    }
  }
  ~RecordCopyTest() override {
    [source_ release];
    [receiver_ release];
  }

  StatisticsData* source_ = [[StatisticsData alloc] init];
  StatisticsData* receiver_ = [[StatisticsData alloc] init];
};

/// Whether what the receiver holds came from the source by the rule.
bool isCopied(id value, id source, id before, CopyRule rule) {
  switch (rule) {
    case CopyRule::freshText:
      return [value isEqual:source] && value != source;
    case CopyRule::freshArray:
      return value != source && [value count] == 1 &&
             [value objectAtIndex:0] == [source objectAtIndex:0];
    case CopyRule::freshDictionary:
      return [value isEqual:source] && value != source;
    case CopyRule::same:
      return value == source;
    case CopyRule::notCopied:
      return value == before;
  }
  return false;
}

TEST_F(RecordCopyTest, EachPropertyIsCopiedByItsRule) {
  std::map<std::string, id> before;
  for (const Property& property : propertyTable()) {
    before[property.name] = [receiver_ valueForKey:keyOf(property)];
  }
  [receiver_ populateStatisticsDataFrom:source_];
  for (const Property& property : propertyTable()) {
    const id value = [receiver_ valueForKey:keyOf(property)];
    const id source = [source_ valueForKey:keyOf(property)];
    if (property.isInteger()) {
      EXPECT_EQ([value intValue], property.copy == CopyRule::notCopied ? 0 : 1) << property.name;
    } else {
      EXPECT_TRUE(isCopied(value, source, before[property.name], property.copy)) << property.name;
    }
  }
}

TEST_F(RecordCopyTest, ASnapshotStaysWhenTheSourceGoesOn) {
  NSMutableString* const name = [NSMutableString stringWithString:@"before"];
  NSMutableArray* const drives = [NSMutableArray arrayWithObject:@"disk0"];
  [source_ setModelName:name];
  [source_ setDiskDrives:drives];
  [receiver_ populateStatisticsDataFrom:source_];
  [name setString:@"after"];
  [drives addObject:@"disk1"];
  EXPECT_EQ(halvermonte::charactersOf([receiver_ modelName]), "before");
  EXPECT_EQ([[receiver_ diskDrives] count], 1u);
}

TEST_F(RecordCopyTest, GoesThroughTheAccessorsOfASubclassInTheOrderOfTurns) {
  LoggingRecord* const source = [[[LoggingRecord alloc] init] autorelease];
  LoggingRecord* const receiver = [[[LoggingRecord alloc] init] autorelease];
  [receiver populateStatisticsDataFrom:source];
  const std::vector<std::string> read = textsOf([source log]);
  const std::vector<std::string> written = textsOf([receiver log]);
  ASSERT_EQ(read.size(), 97u);  // 103 less the six that are not copied
  ASSERT_EQ(written.size(), 97u);
  const auto place = [&](const char* setter) {
    return std::find(written.begin(), written.end(), setter) - written.begin();
  };
  EXPECT_EQ(written.front(), "setHostName");
  EXPECT_EQ(written.back(), "setBattery_limit");
  EXPECT_LT(place("setDiskIO_readText"), place("setNetwork_connectedToInternet"));
  EXPECT_LT(place("setBluetooth_devicesTypes"), place("setCpu_power"));
  EXPECT_LT(place("setPower_activities"), place("setNetwork_activities"));
  EXPECT_LT(place("setCpu_coresActivities"), place("setCpu_cores"));
  EXPECT_LT(place("setCpu_cores"), place("setRam_activities"));
}

TEST_F(RecordCopyTest, RaisesAtATextThatTheSourceLacks) {
  [source_ setModelName:@"new"];
  [source_ setValue:nil forKey:@"uptimeText"];
  NSNumber* const limit = [receiver_ battery_limit];
  EXPECT_TRUE(raisedBy([&] { [receiver_ populateStatisticsDataFrom:source_]; }) != nil);
  EXPECT_EQ(halvermonte::charactersOf([receiver_ modelName]), "new");
  EXPECT_TRUE([receiver_ battery_limit] == limit);
}

}  // namespace
