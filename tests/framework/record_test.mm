#include <objc/runtime.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <thread>

#include "platform/Foundation.hpp"
#include "platform/apple/Bridging.hpp"
#include "tests/framework/ObjectiveC.hpp"
#include "tests/record/PropertyTable.hpp"

namespace {

using halvermonte::test::Default;
using halvermonte::test::Kind;
using halvermonte::test::Property;
using halvermonte::test::propertyTable;

NSString* keyOf(const Property& property) { return halvermonte::stringOf(property.name); }

std::string setterOf(const Property& property) {
  std::string setter = std::string("set") + property.name + ':';
  setter[3] = static_cast<char>(std::toupper(setter[3]));
  return setter;
}

char typeOf(const Property& property) {
  if (property.kind == Kind::flag) return 'c';
  return property.kind == Kind::integer ? 'i' : '@';
}

class RecordTest : public ObjectiveCTest {};

TEST_F(RecordTest, HasEachPropertyWithItsType) {
  for (const Property& property : propertyTable()) {
    char type[8] = "";
    const Method getter =
        class_getInstanceMethod([StatisticsData class], sel_registerName(property.name));
    ASSERT_TRUE(getter) << property.name;
    method_getReturnType(getter, type, sizeof type);
    EXPECT_EQ(type[0], typeOf(property)) << property.name;
    const Method setter = class_getInstanceMethod([StatisticsData class],
                                                  sel_registerName(setterOf(property).c_str()));
    ASSERT_TRUE(setter) << property.name;
    method_getArgumentType(setter, 2, type, sizeof type);
    EXPECT_EQ(type[0], typeOf(property)) << property.name;
  }
}

TEST_F(RecordTest, HasNoMethodsBeyondItsInterface) {
  unsigned int count = 0;
  std::free(class_copyMethodList([StatisticsData class], &count));
  EXPECT_EQ(count, 2 * propertyTable().size() + 3);  // init, dealloc, populateStatisticsDataFrom:
}

bool isDefault(id value, Default initial) {
  switch (initial) {
    case Default::unset:
      return value == nil || [value isEqual:[NSNumber numberWithInt:0]];
    case Default::emptyText:
      return [value isEqual:@""];
    case Default::dash:
      return [value isEqual:@"-"];
    case Default::hostName:
      return halvermonte::charactersOf(value) == halvermonte::foundation::localizedHostName().str();
    case Default::zero:
    case Default::no:
      return [value isEqual:[NSNumber numberWithInt:0]];
    case Default::one:
      return [value isEqual:[NSNumber numberWithInt:1]];
    case Default::minusOne:
      return [value isEqual:[NSNumber numberWithInt:-1]];
    case Default::emptyArray:
      return [value isEqual:[NSArray array]];
    case Default::emptyDictionary:
      return [value isEqual:[NSDictionary dictionary]];
    case Default::now:
      return std::abs([value timeIntervalSinceNow]) < 10;
  }
  return false;
}

TEST_F(RecordTest, AFreshOneHoldsTheDefaults) {
  StatisticsData* const record = [[[StatisticsData alloc] init] autorelease];
  for (const Property& property : propertyTable()) {
    EXPECT_TRUE(isDefault([record valueForKey:keyOf(property)], property.initial)) << property.name;
  }
  EXPECT_TRUE([record summary_cpuUserLoad] == nil);
  EXPECT_STREQ([[record summary_memoryTotal] objCType], @encode(int));
}

TEST_F(RecordTest, EachPropertyIsReadAndWrittenByItsKey) {
  StatisticsData* const record = [[[StatisticsData alloc] init] autorelease];
  for (const Property& property : propertyTable()) {
    id value = [[[Counted alloc] init] autorelease];
    if (property.isInteger()) value = [NSNumber numberWithInt:-7];
    [record setValue:value forKey:keyOf(property)];
    const id read = [record valueForKey:keyOf(property)];
    EXPECT_TRUE(property.isInteger() ? [read isEqual:value] : read == value) << property.name;
  }
}

TEST_F(RecordTest, ASetterKeepsTheObjectItself) {
  StatisticsData* const record = [[[StatisticsData alloc] init] autorelease];
  NSMutableString* const text = [NSMutableString stringWithString:@"before"];
  [record setModelName:text];
  [text setString:@"after"];
  EXPECT_EQ(halvermonte::charactersOf([record modelName]), "after");
}

TEST_F(RecordTest, ItsEndReleasesEveryObject) {
  StatisticsData* const record = [[StatisticsData alloc] init];
  int objects = 0;
  {
    const Pool pool;
    for (const Property& property : propertyTable()) {
      if (property.isInteger()) continue;
      [record setValue:[[[Counted alloc] init] autorelease] forKey:keyOf(property)];
      ++objects;
    }
  }
  EXPECT_EQ([Counted alive], objects);
  [record release];
  EXPECT_EQ([Counted alive], 0);
}

TEST_F(RecordTest, WhatAReaderGotOutlivesItsReplacement) {
  StatisticsData* const record = [[[StatisticsData alloc] init] autorelease];
  {
    const Pool pool;
    id object = [[Counted alloc] init];
    [record setCode:object];
    [object release];
    const id read = [record code];
    [record setValue:nil forKey:@"code"];
    EXPECT_EQ([Counted alive], 1);
    EXPECT_TRUE([read isKindOfClass:[Counted class]]);
  }
  EXPECT_EQ([Counted alive], 0);
}

TEST_F(RecordTest, AReaderNeverMeetsAFreedObjectWhileOthersWrite) {
  StatisticsData* const record = [[[StatisticsData alloc] init] autorelease];
  std::atomic<bool> ended = false;
  std::atomic<int> wrong = 0;
  const auto onThread = [&](const auto& step) {
    return std::thread([&ended, step] {
      const ForeignThread registered;
      while (!ended) {
        const Pool pool;
        step();
      }
    });
  };
  const auto write = [&] { [record setCode:[NSString stringWithFormat:@"%060d", 7]]; };
  const auto read = [&] {
    if ([[record code] length] != 60) ++wrong;
  };
  write();
  std::thread threads[] = {onThread(write), onThread(write), onThread(read)};
  for (int i = 0; i < 200'000; ++i) {
    const Pool pool;
    read();
  }
  ended = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
