#include <malloc.h>

#include "platform/Processor.hpp"
#include "platform/apple/Bridging.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/framework/ObjectiveC.hpp"
#include "tests/support/TestMachine.hpp"

using halvermonte::HIDSensorKind;
using halvermonte::HIDServices;
using halvermonte::ScopedMachine;
using halvermonte::test::fanDescriptor;
using halvermonte::test::fpe2;
using halvermonte::test::sensor;
using halvermonte::test::sensorWithoutEvent;
using halvermonte::test::services;
using halvermonte::test::TestMachine;
using halvermonte::test::ui8;

/// A host's record whose getters answer something of its own.
@interface AnsweringRecord : StatisticsData {
 @public
  NSString* names;
  NSString* values;
}
@end

@implementation AnsweringRecord
- (NSString*)sensors_temperature {
  return names;
}
- (NSString*)sensors_temperatureData {
  return values;
}
@end

/// A record whose host drops its last reference as soon as the pass stores anything.
@interface DroppedRecord : StatisticsData {
 @private
  Counted* counted_;
  BOOL dropped_;
}
@end

@implementation DroppedRecord

- (instancetype)init {
  self = [super init];
  counted_ = [[Counted alloc] init];
  return self;
}

- (void)dealloc {
  [counted_ release];
  [super dealloc];
}

- (void)setSensors_temperature:(NSString*)names {
  [super setSensors_temperature:names];
  if (!dropped_) [self release];
  dropped_ = YES;
}

- (void)setDiskIO_activities:(NSArray*)activities {
  EXPECT_EQ([Counted alive], 1);
  [super setDiskIO_activities:activities];
}

@end

namespace {

std::string textOf(NSString* string) { return halvermonte::charactersOf(string); }

/// Two groups of temperature sensors, two fans and a drive.
class EngineTest : public ObjectiveCTest {
 protected:
  EngineTest() {
    machine_.setProcessor("Apple M1");
    machine_.kernelVariables["hw.physicalcpu"] = 8;
    machine_.commands["ps -p 123 -o %cpu"] = "%CPU\n 12.5\n";
    machine_.setTemperatureSensors(
        {sensor("pACC MTR Temp Sensor0", 52.7), sensor("GPU MTR Temp Sensor1", 50)});
    machine_.keys["FNum"] = ui8(2);
    machine_.keys["F0ID"] = fanDescriptor("L\366fter");
    machine_.keys["F0Ac"] = fpe2(1200.75);
    machine_.keys["F1ID"] = fanDescriptor("Right");
    machine_.drives->push_back(halvermonte::DriveStatistics{5'000'000, 3'000'000});
    machine_.drives->push_back(halvermonte::DriveStatistics{0, 0});
    engine_ = [[HalvermonteSensorsEngine alloc] init];
    record_ = [[StatisticsData alloc] init];
  }
  ~EngineTest() override {
    [engine_ release];
    [record_ release];
  }

  TestMachine machine_;
  ScopedMachine scope_{machine_};
  HalvermonteSensorsEngine* engine_ = nil;
  StatisticsData* record_ = nil;
};

TEST_F(EngineTest, APassReturnsTheSameRecord) {
  EXPECT_TRUE([engine_ getSensorsInfo:record_] == record_);
  EXPECT_TRUE([engine_ getSensorsInfo:nil] == nil);
}

TEST_F(EngineTest, APassKeepsTheRecordForItsLengthOnly) {
  const NSUInteger before = [record_ retainCount];
  [engine_ getSensorsInfo:record_];
  EXPECT_EQ([record_ retainCount], before);
}

TEST_F(EngineTest, ARecordThatItsHostDropsEndsAfterThePass) {
  [engine_ getSensorsInfo:[[DroppedRecord alloc] init]];
  EXPECT_EQ([Counted alive], 0);
}

TEST_F(EngineTest, TextsAndDictionariesHoldStrings) {
  [engine_ getSensorsInfo:record_];
  EXPECT_EQ(textOf([record_ sensors_temperature]), "CPU Performance Cores\nGPU Cluster\n");
  EXPECT_EQ(textOf([record_ sensors_temperatureData]), "52\n50\n");
  EXPECT_EQ(textOf([record_ sensors_fans]), "Lüfter\nRight\n");
  EXPECT_EQ(textOf([record_ sensors_fansData]), "1200\n0\n");
  NSDictionary* const sensors = [NSDictionary
      dictionaryWithObjectsAndKeys:@"52", @"CPU Performance Cores", @"50", @"GPU Cluster", nil];
  EXPECT_TRUE([[record_ sensors] isEqual:sensors]);
  NSDictionary* const fans = [NSDictionary
      dictionaryWithObjectsAndKeys:@"1200", halvermonte::stringOf("Lüfter"), @"0", @"Right", nil];
  EXPECT_TRUE([[record_ fans] isEqual:fans]);
}

TEST_F(EngineTest, NumbersAreOfTheirOwnKinds) {
  for (halvermonte::Drive& drive : *machine_.drives) {
    drive = halvermonte::DriveStatistics{INT64_MAX, 2};
  }
  [engine_ getSensorsInfo:record_];
  EXPECT_STREQ([[record_ diskIO_read] objCType], @encode(unsigned long long));
  EXPECT_EQ([[record_ diskIO_read] unsignedLongLongValue], UINT64_MAX - 1);
  EXPECT_EQ([[record_ diskIO_write] unsignedLongLongValue], 4u);
  EXPECT_STREQ([[record_ diskIO_speedRead] objCType], @encode(float));
  EXPECT_STREQ([[record_ diskIO_activitiesMax] objCType], @encode(float));
  EXPECT_EQ([[record_ diskIO_activitiesMax] floatValue], 50'000.0F);
  EXPECT_EQ(textOf([record_ diskIO_activitiesMaxText]), "50 KB");
}

TEST_F(EngineTest, ActivitiesAreWritesThenReads) {
  [engine_ getSensorsInfo:record_];
  machine_.now += 2;
  machine_.drives = {halvermonte::DriveStatistics{7'000'000, 4'000'000}};
  [engine_ getSensorsInfo:record_];
  NSArray* const activities = [record_ diskIO_activities];
  ASSERT_EQ([activities count], 2u);
  NSArray* const writes = [activities objectAtIndex:0];
  NSArray* const reads = [activities objectAtIndex:1];
  ASSERT_EQ([writes count], 75u);
  ASSERT_EQ([reads count], 75u);
  EXPECT_STREQ([[reads objectAtIndex:0] objCType], @encode(int));
  EXPECT_EQ([[reads objectAtIndex:0] intValue], -1);
  EXPECT_EQ([[reads lastObject] unsignedLongLongValue], 1'000'000u);
  EXPECT_EQ([[writes lastObject] unsignedLongLongValue], 500'000u);
}

std::vector<std::string> settersOf(LoggingRecord* record) {
  std::vector<std::string> setters;
  for (const std::string& accessor : textsOf([record log])) {
    if (accessor.starts_with("set")) setters.push_back(accessor);
  }
  return setters;
}

std::vector<std::string> settersOfAPass() {
  std::vector<std::string> setters = {"setSensors_temperature",
                                      "setSensors_temperatureData",
                                      "setSensors_fans",
                                      "setSensors_fansData",
                                      "setSensors_temperatureMini",
                                      "setSensors_temperatureMiniData",
                                      "setSensors",
                                      "setFans"};
  if (halvermonte::kProcessor == halvermonte::Processor::arm64) {
    setters.insert(setters.end(), {"setSensors_temperature", "setSensors_temperatureData"});
  }
  setters.insert(setters.end(),
                 {"setDiskIO_activitiesMax", "setDiskIO_activitiesMaxText", "setDiskIO_speedRead",
                  "setDiskIO_speedWrite", "setDiskIO_speedReadText", "setDiskIO_speedWriteText",
                  "setDiskIO_read", "setDiskIO_write", "setDiskIO_readText", "setDiskIO_writeText",
                  "setDiskIO_activities"});
  return setters;
}

TEST_F(EngineTest, APassStoresThroughTheSettersOfASubclassInOrder) {
  LoggingRecord* const record = [[[LoggingRecord alloc] init] autorelease];
  EXPECT_TRUE([engine_ getSensorsInfo:record] == record);
  EXPECT_EQ(settersOf(record), settersOfAPass());
}

TEST_F(EngineTest, TheDictionaryHoldsWhatTheGettersOfASubclassAnswer) {
  AnsweringRecord* const record = [[[AnsweringRecord alloc] init] autorelease];
  record->names = @"Inlet\nOutlet\n";
  record->values = @"20\n30\n";
  [engine_ getSensorsInfo:record];
  NSDictionary* const expected =
      [NSDictionary dictionaryWithObjectsAndKeys:@"20", @"Inlet", @"30", @"Outlet", nil];
  EXPECT_TRUE([[record sensors] isEqual:expected]);
  record->names = nil;
  [engine_ getSensorsInfo:record];
  EXPECT_TRUE([[record sensors] isEqual:expected]);
  EXPECT_EQ(textOf([record diskIO_readText]), "5 MB");
}

TEST_F(EngineTest, WhatASetterRaisesPassesUnharmed) {
  for (const std::string& setter : settersOfAPass()) {
    LoggingRecord* const record = [[LoggingRecord alloc] init];
    NSException* const exception = [NSException exceptionWithName:@"Host"
                                                           reason:@"full"
                                                         userInfo:nil];
    [record raise:exception at:halvermonte::stringOf(setter)];
    const size_t handles = halvermonte::portable::liveHandles();
    const size_t objects = halvermonte::portable::liveObjects();
    EXPECT_TRUE(raisedBy([&] { [engine_ getSensorsInfo:record]; }) == exception) << setter;
    EXPECT_EQ(halvermonte::portable::liveHandles(), handles) << setter;
    EXPECT_EQ(halvermonte::portable::liveObjects(), objects) << setter;
    EXPECT_EQ([record retainCount], 1u) << setter;
    [record release];
  }
  [engine_ getSensorsInfo:record_];
  EXPECT_EQ([[record_ sensors] count], 2u);
}

/// Gives fewer readings than names: the names are asked for after the readings.
class GrowingMachine : public TestMachine {
 public:
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
    HIDServices list = *TestMachine::hidServices(kind);
    list.resize(list.size() - (++asks_ % 2), sensor("", 0));
    return services(list);
  }

 private:
  int asks_ = 0;
};

TEST_F(EngineTest, ANameWithoutAReadingIsARangeException) {
  GrowingMachine machine;
  machine.setTemperatureSensors({sensor("A", 1), sensor("B", 2)});
  const ScopedMachine scope(machine);
  const size_t handles = halvermonte::portable::liveHandles();
  NSException* const exception = raisedBy([&] { [engine_ getSensorsInfo:record_]; });
  EXPECT_EQ(textOf([exception name]), textOf(NSRangeException));
  EXPECT_EQ(textOf([exception reason]),
            "index 1 beyond the 1 temperatures of the HID event system");
  EXPECT_EQ(halvermonte::portable::liveHandles(), handles);
  EXPECT_EQ([record_ retainCount], 1u);
}

TEST_F(EngineTest, SensorListsAreMutableArraysAlignedByIndex) {
  machine_.sensors[HIDSensorKind::current] =
      services({sensor("IBAT", 1.5), sensorWithoutEvent("X")});
  machine_.sensors[HIDSensorKind::voltage] = services({sensor("VBAT", 12.25)});
  EXPECT_EQ(textsOf([engine_ currentArray]), (std::vector<std::string>{"IBAT", "X"}));
  EXPECT_EQ(textsOf([engine_ voltageArray]), std::vector<std::string>{"VBAT"});
  EXPECT_EQ([[engine_ thermalArray] count], 2u);
  NSMutableArray* const currents = [engine_ returnCurrentValues];
  ASSERT_EQ([currents count], 2u);
  EXPECT_STREQ([[currents objectAtIndex:0] objCType], @encode(double));
  EXPECT_EQ([[currents objectAtIndex:0] doubleValue], 1.5);
  EXPECT_EQ([[currents objectAtIndex:1] doubleValue], 0.0);
  EXPECT_EQ([[[engine_ returnVoltageValues] lastObject] doubleValue], 12.25);
  EXPECT_EQ([[[engine_ returnThermalValues] objectAtIndex:0] doubleValue], 52.7);
  [currents addObject:@"of the host's"];
}

TEST_F(EngineTest, NamesAreNilWithoutAServiceList) {
  machine_.sensors[HIDSensorKind::temperature] = nullptr;
  EXPECT_TRUE([engine_ thermalArray] == nil);
  EXPECT_EQ([[engine_ returnThermalValues] count], 0u);
}

TEST_F(EngineTest, ARecordTakesItsNameAndDateFromTheMachine) {
  machine_.hostName = "Büro";
  machine_.now = 1'700'000'000.5;
  StatisticsData* const record = [[[StatisticsData alloc] init] autorelease];
  EXPECT_EQ(textOf([record hostName]), "Büro");
  EXPECT_EQ([[record appsUpdateTime] timeIntervalSince1970], 1'700'000'000.5);
  machine_.hostName = std::nullopt;
  EXPECT_TRUE([[[[StatisticsData alloc] init] autorelease] hostName] == nil);
}

TEST_F(EngineTest, AnswersAboutItsHost) {
  EXPECT_EQ(textOf([engine_ askSytemInfoForProcessorName]), "Apple M1");
  EXPECT_EQ([engine_ physicalCores], 8);
  EXPECT_EQ([engine_ askSystemPS:123], 12.5F);
  machine_.commands["ps -p 123 -o %cpu"] = std::nullopt;
  EXPECT_EQ([engine_ askSystemPS:123], 0.0F);
}

TEST_F(EngineTest, NothingIsLeftToTheHostsPool) {
  const Pool pool;
  const unsigned before = [pool.get() autoreleaseCount];
  HalvermonteSensorsEngine* const engine = [[HalvermonteSensorsEngine alloc] init];
  [engine getSensorsInfo:record_];
  EXPECT_EQ([pool.get() autoreleaseCount], before);
  [engine release];
}

size_t allocated() { return mallinfo2().uordblks; }

TEST_F(EngineTest, TenThousandPassesTakeNoMemory) {
  const auto pass = [&] {
    machine_.asked.clear();
    machine_.now += 1;
    [engine_ getSensorsInfo:record_];
  };
  for (int i = 0; i < 100; ++i) pass();
  const size_t before = allocated();
  const size_t handles = halvermonte::portable::liveHandles();
  const size_t objects = halvermonte::portable::liveObjects();
  for (int i = 0; i < 10'000; ++i) pass();
  EXPECT_LT(allocated(), before + 10'000);  // less than a byte a pass
  EXPECT_EQ(halvermonte::portable::liveHandles(), handles);
  EXPECT_EQ(halvermonte::portable::liveObjects(), objects);
}

TEST_F(EngineTest, AnEnginesEndReleasesWhatItHeld) {
  const auto live = [&] {
    const Pool pool;
    HalvermonteSensorsEngine* const engine = [[HalvermonteSensorsEngine alloc] init];
    [engine getSensorsInfo:record_];
    [engine release];
    machine_.asked.clear();
  };
  live();
  const size_t before = allocated();
  for (int i = 0; i < 100; ++i) live();
  EXPECT_LT(allocated(), before + 100 * 1'000);  // the drive iterators stay with IOKit on purpose
}

}  // namespace
