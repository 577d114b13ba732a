// What the services ask of Foundation, seen by methods that stand in for its own.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/Foundation.hpp"
#include "platform/apple/Bridging.hpp"
#include "tests/framework/Replaced.hpp"

namespace {

namespace foundation = halvermonte::foundation;

/// Absent: by the characters.
std::optional<NSComparisonResult> order;
std::string compared;
NSInteger styleAsked = -1;
NSUInteger optionsAsked = 0;

NSString* byteCount(id /*self*/, SEL /*selector*/, long long bytes, NSInteger style) {
  styleAsked = style;
  return [NSString stringWithFormat:@"%lld", bytes];
}

id noPropertyList(id /*self*/, SEL /*selector*/, NSData* /*data*/, NSUInteger options,
                  NSPropertyListFormat* /*format*/, NSError** /*error*/) {
  optionsAsked = options;
  return nil;
}

}  // namespace

/// GNUstep has none.
@implementation NSString (StandIn)

- (NSComparisonResult)localizedStandardCompare:(NSString*)string {
  compared = halvermonte::charactersOf(self) + " with " + halvermonte::charactersOf(string);
  return order.value_or([self compare:string]);
}

@end

namespace {

TEST(FoundationCallTest, TheFirstTextIsComparedWithTheSecond) {
  order = NSOrderedAscending;
  EXPECT_TRUE(foundation::standsBefore("Core 2", "Core 10"));
  EXPECT_EQ(compared, "Core 2 with Core 10");
  order = NSOrderedDescending;
  EXPECT_FALSE(foundation::standsBefore("Core 10", "Core 2"));
  EXPECT_EQ(compared, "Core 10 with Core 2");
  order = NSOrderedSame;
  EXPECT_FALSE(foundation::standsBefore("same", "same"));
  order.reset();
}

TEST(FoundationCallTest, AByteCountIsAskedForInItsStyle) {
  const Replaced formatter(class_getClassMethod([NSByteCountFormatter class],
                                                @selector(stringFromByteCount:countStyle:)),
                           byteCount);
  EXPECT_EQ(foundation::byteCountText(-5, foundation::ByteCountStyle::file), "-5");
  EXPECT_EQ(styleAsked, 0);
  EXPECT_EQ(foundation::byteCountText(INT64_MAX, foundation::ByteCountStyle::decimal),
            "9223372036854775807");
  EXPECT_EQ(styleAsked, 2);
}

TEST(FoundationCallTest, APropertyListIsAskedForWithMutableContainersAndLeaves) {
  const Replaced reader(class_getClassMethod([NSPropertyListSerialization class],
                                             @selector(propertyListWithData:options:format:error:)),
                        noPropertyList);
  EXPECT_FALSE(foundation::propertyList("<plist/>"));
  EXPECT_EQ(optionsAsked, 2u);
}

}  // namespace
