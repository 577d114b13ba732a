// Whole passes of the Objective-C engine that Foundation itself serves, over a machine of the
// test's.
#import <HalvermonteSensorsEngine/HalvermonteSensorsEngine.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/apple/Bridging.hpp"
#include "tests/framework/Replaced.hpp"
#include "tests/support/TestMachine.hpp"

namespace {

using halvermonte::charactersOf;
using halvermonte::DriveStatistics;
using halvermonte::ScopedMachine;
using halvermonte::test::fanDescriptor;
using halvermonte::test::TestMachine;
using halvermonte::test::ui8;

double now = 0;
std::vector<std::string> lookedUp;

id currentDate(id /*self*/, SEL /*selector*/) { return [NSDate dateWithTimeIntervalSince1970:now]; }

NSString* byteCount(id /*self*/, SEL /*selector*/, long long bytes, NSInteger /*style*/) {
  return [NSString stringWithFormat:@"%lld bytes", bytes];
}

NSString* translation(id self, SEL /*selector*/, NSString* key, NSString* value, NSString* table) {
  const bool inMainTable = self == [NSBundle mainBundle] && [value isEqual:@""] && table == nil;
  lookedUp.push_back(inMainTable ? charactersOf(key) : "elsewhere");
  return [key isEqual:@"%@/s"] ? @"%@ par seconde" : @"rien";
}

class FoundationPassTest : public ::testing::Test {
 protected:
  FoundationPassTest() {
    now = 1'000;
    lookedUp.clear();
  }
  ~FoundationPassTest() override {
    [engine_ release];
    [record_ release];
  }

  Replaced clock_ { class_getClassMethod([NSDate class], @selector(date)), currentDate };
  TestMachine machine_;
  ScopedMachine scope_{machine_};
  HalvermonteSensorsEngine* engine_ = nil;
  StatisticsData* record_ = [[StatisticsData alloc] init];
};

TEST_F(FoundationPassTest, TheSpeedTextsAreLookedUpInTheHostsBundle) {
  const Replaced bundle(
      class_getInstanceMethod([NSBundle class], @selector(localizedStringForKey:value:table:)),
      translation);
  const Replaced formatter(class_getClassMethod([NSByteCountFormatter class],
                                                @selector(stringFromByteCount:countStyle:)),
                           byteCount);
  machine_.drives = {DriveStatistics{5'000'000, 0}};
  engine_ = [[HalvermonteSensorsEngine alloc] init];
  [engine_ getSensorsInfo:record_];
  EXPECT_EQ(charactersOf([record_ diskIO_speedReadText]), "rien");
  EXPECT_EQ(lookedUp, (std::vector<std::string>{"0 KB/s", "0 KB/s"}));

  now += 2;
  machine_.drives = {DriveStatistics{7'000'000, 0}};
  lookedUp.clear();
  [engine_ getSensorsInfo:record_];
  EXPECT_EQ(charactersOf([record_ diskIO_speedReadText]), "1000000 bytes par seconde");
  EXPECT_EQ(charactersOf([record_ diskIO_speedWriteText]), "rien");
  EXPECT_EQ(lookedUp, (std::vector<std::string>{"%@/s", "0 KB/s"}));
}

/// Whose counters raise what a Mac raises.
class RaisingMachine : public TestMachine {
 public:
  void beginDriveWalk() override {
    [NSException raise:NSInternalInconsistencyException format:@"drive %d went away", 4];
  }
};

TEST_F(FoundationPassTest, AnExceptionOfTheCountersIsLoggedOnceAndThePassGoesOn) {
  RaisingMachine machine;
  machine.drives = {DriveStatistics{5'000'000, 0}};
  machine.keys["FNum"] = ui8(1);
  machine.keys["F0ID"] = fanDescriptor("Left");
  const ScopedMachine scope(machine);
  engine_ = [[HalvermonteSensorsEngine alloc] init];
  testing::internal::CaptureStderr();
  EXPECT_TRUE([engine_ getSensorsInfo:record_] == record_);
  const std::string logged = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(logged.ends_with("drive 4 went away\n")) << logged;
  EXPECT_EQ(std::count(logged.begin(), logged.end(), '\n'), 1) << logged;
  EXPECT_EQ(charactersOf([record_ sensors_fans]), "Left\n");
  EXPECT_EQ([[record_ diskIO_activities] count], 2u);
}

}  // namespace
