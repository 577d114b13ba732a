// A host's own kind of engine: what the engine asks itself reaches the methods of the subclass.
#include "platform/apple/Bridging.hpp"
#include "tests/framework/ObjectiveC.hpp"
#include "tests/support/TestMachine.hpp"

using halvermonte::ScopedMachine;
using halvermonte::test::sensor;
using halvermonte::test::sp78;
using halvermonte::test::TestMachine;

namespace {

/// What the subclass returns. It is asked before a test has its engine in hand.
NSString* processorName = nil;
int cores = 0;
id readings = nil;
std::vector<std::string> asked;

}  // namespace

@interface AnsweringEngine : HalvermonteSensorsEngine
@end

@implementation AnsweringEngine

- (NSString*)askSytemInfoForProcessorName {
  asked.push_back("processor");
  return processorName;
}

- (int)physicalCores {
  asked.push_back("cores");
  return cores;
}

- (NSMutableArray*)returnThermalValues {
  asked.push_back("readings");
  return readings;
}

@end

/// Adds to what the class itself returns.
@interface AddingEngine : HalvermonteSensorsEngine
@end

@implementation AddingEngine

- (NSString*)askSytemInfoForProcessorName {
  return [[super askSytemInfoForProcessorName] stringByAppendingString:@" Max"];
}

- (int)physicalCores {
  asked.push_back("own readings " + std::to_string([[self returnThermalValues] count]));
  return [super physicalCores] + 1;
}

@end

namespace {

class SubclassTest : public ObjectiveCTest {
 protected:
  SubclassTest() {
    machine_.setProcessor("Intel");
    machine_.kernelVariables["hw.physicalcpu"] = 4;
    processorName = @"Apple M1";
    cores = 8;
    readings = [NSMutableArray array];
    asked.clear();
  }

  /// What a pass of a new engine of the class shows as temperatures, by name.
  std::string shownBy(Class engineClass) {
    id engine = [[[engineClass alloc] init] autorelease];
    StatisticsData* const record = [[[StatisticsData alloc] init] autorelease];
    [engine getSensorsInfo:record];
    return halvermonte::charactersOf([record sensors_temperature]) + '|' +
           halvermonte::charactersOf([record sensors_temperatureData]);
  }

  TestMachine machine_;
  ScopedMachine scope_{machine_};
};

TEST_F(SubclassTest, IsAskedForTheProcessorThenTheCoresWhenItIsMade) {
  [[[AnsweringEngine alloc] init] release];
  EXPECT_EQ(asked, (std::vector<std::string>{"processor", "cores"}));
  EXPECT_EQ(machine_.asked, (std::vector<std::string>{"drives", "names"}));
}

TEST_F(SubclassTest, TheNamesFollowItsAnswers) {
  machine_.keys["Tf44"] = sp78(40);
  processorName = @"Apple M3";
  cores = 11;
  EXPECT_EQ(shownBy([AnsweringEngine class]), "CPU Core 7\n|40\n");
  cores = 10;
  EXPECT_EQ(shownBy([AnsweringEngine class]), "|");
  processorName = nil;
  EXPECT_EQ(shownBy([AnsweringEngine class]), "|");
}

TEST_F(SubclassTest, IsAskedForTheReadingsOnceInEachPass) {
  machine_.setTemperatureSensors({sensor("Tg1b", 70), sensor("NAND CH0 temp", 71)});
  // As whole degrees, whatever kind of object a reading is.
  readings = [NSMutableArray arrayWithObjects:[NSNumber numberWithDouble:41.9], @"42.5", nil];
  EXPECT_EQ(shownBy([AnsweringEngine class]), "Power Management Unit\nSSD NAND I/O\n|41\n42\n");
  EXPECT_EQ(asked, (std::vector<std::string>{"processor", "cores", "readings"}));
}

TEST_F(SubclassTest, AReadingBeyondAllWholeNumbersIsTheLargest) {
  machine_.setTemperatureSensors({sensor("GPU MTR Temp Sensor1", 0)});
  readings = [NSMutableArray arrayWithObject:[NSNumber numberWithDouble:1e20]];
  EXPECT_EQ(shownBy([AnsweringEngine class]), "GPU Cluster\n|2147483647\n");
}

TEST_F(SubclassTest, FewerReadingsThanNamesAreARangeException) {
  machine_.setTemperatureSensors({sensor("A", 1), sensor("B", 2)});
  readings = [NSMutableArray arrayWithObject:@"1"];
  NSException* const one = raisedBy([&] { shownBy([AnsweringEngine class]); });
  EXPECT_TRUE([[one name] isEqual:NSRangeException]);
  readings = nil;
  NSException* const none = raisedBy([&] { shownBy([AnsweringEngine class]); });
  EXPECT_TRUE([[none name] isEqual:NSRangeException]);
  machine_.setTemperatureSensors({});
  EXPECT_EQ(shownBy([AnsweringEngine class]), "|");
}

TEST_F(SubclassTest, MayAskTheClassItselfWhileItIsMade) {
  machine_.keys["Tp2R"] = sp78(40);
  machine_.setProcessor("Apple M4");
  machine_.setTemperatureSensors({sensor("A", 1)});
  machine_.kernelVariables["hw.physicalcpu"] = 11;
  EXPECT_EQ(shownBy([AddingEngine class]), "CPU Core 8\n|40\n");
  EXPECT_EQ(asked, std::vector<std::string>{"own readings 1"});
}

}  // namespace
