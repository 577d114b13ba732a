// The engine over the computer that runs the tests, whatever sensors it has.
#include "platform/apple/Bridging.hpp"
#include "tests/framework/ObjectiveC.hpp"

/// Knows its processor, so that no command has to run, and has a reading for each sensor.
@interface QuickEngine : HalvermonteSensorsEngine {
 @public
  NSMutableArray* questions;
}
@end

@implementation QuickEngine

- (void)note:(NSString*)question {
  if (questions == nil) questions = [[NSMutableArray alloc] init];
  [questions addObject:question];
}

- (void)dealloc {
  [questions release];
  [super dealloc];
}

- (NSString*)askSytemInfoForProcessorName {
  [self note:@"processor"];
  return @"Apple M1";
}

- (int)physicalCores {
  [self note:@"cores"];
  return [super physicalCores];
}

- (NSMutableArray*)returnThermalValues {
  [self note:@"readings"];
  NSMutableArray* const readings = [NSMutableArray array];
  for (int i = 0; i < 10'000; ++i) [readings addObject:[NSNumber numberWithDouble:40]];
  return readings;
}

@end

namespace {

class ComputerTest : public ObjectiveCTest {
 protected:
  ~ComputerTest() override {
    [engine_ release];
    [record_ release];
  }

  QuickEngine* engine_ = [[QuickEngine alloc] init];
  StatisticsData* record_ = [[StatisticsData alloc] init];
};

TEST_F(ComputerTest, APassFillsTheRecordThatItIsHanded) {
  [record_ setValue:nil forKey:@"sensors_temperature"];
  [record_ setValue:nil forKey:@"diskIO_readText"];
  EXPECT_TRUE([engine_ getSensorsInfo:record_] == record_);
  EXPECT_TRUE([record_ sensors_temperature] != nil);
  EXPECT_TRUE([record_ diskIO_readText] != nil);
  NSArray* const activities = [record_ diskIO_activities];
  ASSERT_EQ([activities count], 2u);
  EXPECT_EQ([[activities objectAtIndex:0] count], 75u);
  EXPECT_EQ([[activities objectAtIndex:1] count], 75u);
}

TEST_F(ComputerTest, ASubclassIsAskedWhatTheEngineAsksItself) {
  EXPECT_EQ(textsOf(engine_->questions), (std::vector<std::string>{"processor", "cores"}));
  [engine_ getSensorsInfo:record_];
  EXPECT_EQ(textsOf(engine_->questions),
            (std::vector<std::string>{"processor", "cores", "readings"}));
}

TEST_F(ComputerTest, WhatASetterRaisesReachesTheHostAsItWasRaised) {
  LoggingRecord* const record = [[[LoggingRecord alloc] init] autorelease];
  NSException* const exception = [NSException exceptionWithName:@"Host" reason:@"x" userInfo:nil];
  [record raise:exception at:@"setSensors_fans"];
  EXPECT_TRUE(raisedBy([&] { [engine_ getSensorsInfo:record]; }) == exception);
}

TEST_F(ComputerTest, ThereIsACoreAndAnOwnProcessorTime) {
  EXPECT_GE([engine_ physicalCores], 1);
  EXPECT_GE([engine_ askSystemPS:[[NSProcessInfo processInfo] processIdentifier]], 0.0F);
}

}  // namespace
