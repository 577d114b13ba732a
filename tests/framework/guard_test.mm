// The guard by itself: which exceptions it catches, and who owns them then.
#include "platform/apple/Guard.h"

#include <stdexcept>

#include "tests/framework/ObjectiveC.hpp"
#include "tests/framework/Thrown.h"

/// An exception that holds an object which is counted.
@interface CountedException : NSException {
 @private
  Counted* counted_;
}
@end

@implementation CountedException

- (instancetype)initWithName:(NSString*)name
                      reason:(NSString*)reason
                    userInfo:(NSDictionary*)userInfo {
  self = [super initWithName:name reason:reason userInfo:userInfo];
  counted_ = [[Counted alloc] init];
  return self;
}

- (void)dealloc {
  [counted_ release];
  [super dealloc];
}

@end

namespace {

class GuardTest : public ObjectiveCTest {};

TEST_F(GuardTest, TheExceptionOutlivesThePoolThatItWasIn) {
  NSException* caught = nil;
  {
    const Pool pool;
    caught = HalvermonteExceptionRaisedBy(
        [](void*) { [CountedException raise:@"Any" format:@"gone"]; }, nullptr);
  }
  EXPECT_EQ([Counted alive], 1);
  [caught release];
  EXPECT_EQ([Counted alive], 0);
}

TEST_F(GuardTest, ACallThatRaisesNothingGivesNil) {
  EXPECT_TRUE(HalvermonteExceptionRaisedBy([](void*) {}, nullptr) == nil);
}

TEST_F(GuardTest, AThrownObjectThatIsNoExceptionPasses) {
  const auto guarded = [](void* object) { HalvermonteExceptionRaisedBy(throwObject, object); };
  NSString* const mine = @"mine";
  EXPECT_TRUE(objectThrownBy(guarded, mine) == mine);
}

TEST_F(GuardTest, ACPlusPlusExceptionPasses) {
  EXPECT_THROW(
      HalvermonteExceptionRaisedBy([](void*) { throw std::runtime_error("mine"); }, nullptr),
      std::runtime_error);
}

}  // namespace
