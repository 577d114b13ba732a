#include <IOKit/IOKitLib.h>

#include "halvermonte/DiskCounters.h"
#include "halvermonte/Version.h"
#include "tests/smc/Connection.hpp"

extern "C" {
double temperatureReadInC(const char* key);
long sensorsCountedInC();
io_stats readsCountedInC(uint32_t drives);
double versionInC();
}

namespace halvermonte::test {
namespace {

class PlainFunctions : public ConnectionTest {};

TEST_F(PlainFunctions, ReadATemperatureFromC) {
  machine.keys["TC0P"] = sp78(42.25);
  EXPECT_EQ(temperatureReadInC("TC0P"), 42.25);
}

TEST_F(PlainFunctions, CountSensorsFromC) {
  machine.setTemperatureSensors({sensor("a", 1), sensor("b", 2)});
  EXPECT_EQ(sensorsCountedInC(), 2);
}

TEST_F(PlainFunctions, CountTheDrivesBytesFromCAndTouchNothingElse) {
  machine.drives = {DriveStatistics{.bytesRead = 1000, .bytesWritten = 1},
                    DriveStatistics{.bytesRead = 24, .bytesWritten = {}}};
  io_iterator_t drives = 0;
  ASSERT_EQ(IOServiceGetMatchingServices(0, IOServiceMatching("IOBlockStorageDriver"), &drives), 0);
  for (int walk = 0; walk < 2; ++walk) {  // the second finds the iterator at its start
    const io_stats reads = readsCountedInC(drives);
    EXPECT_EQ(reads.bytes, 1024U);
    EXPECT_EQ(reads.bytes_delta, 1U);
    EXPECT_EQ(reads.bytes_prev, 2U);
    EXPECT_EQ(reads.bsd_bytes_prev, 4U);
    EXPECT_EQ(reads.bsd_bytes, 5U);
  }
  IOObjectRelease(drives);
}

TEST(Version, IsANumberAndALine) {
  EXPECT_EQ(versionInC(), 202112300.0);
  EXPECT_STREQ(
      reinterpret_cast<const char*>(HalvermonteSensorsEngineVersionString),
      "@(#)PROGRAM:HalvermonteSensorsEngine  PROJECT:HalvermonteSensorsEngine-202112300\n");
}

}  // namespace
}  // namespace halvermonte::test
