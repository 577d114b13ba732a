/* The plain functions as a C host calls them: this file shows that their headers are C. */
#include "halvermonte/DiskCounters.h"
#include "halvermonte/HIDSensors.h"
#include "halvermonte/SMC.h"
#include "halvermonte/Version.h"

double temperatureReadInC(const char* key);
double temperatureReadInC(const char* key) {
  uint32_t conn = 0;
  double degrees = 0;
  if (SMCOpen(&conn) != 0) return -2.0;
  degrees = SMCGetTemperature(key, conn);
  SMCClose(conn);
  return degrees;
}

long sensorsCountedInC(void);
long sensorsCountedInC(void) {
  CFDictionaryRef sensors = matching(kSensorsPage, kTemperatureUsage);
  CFMutableArrayRef readings = getThermalValues(sensors);
  const long count = (long)CFArrayGetCount(readings);
  CFRelease(readings);
  CFRelease(sensors);
  return count;
}

io_stats readsCountedInC(uint32_t drives);
io_stats readsCountedInC(uint32_t drives) {
  io_stats reads = {1, 2, 3, 4, 5};
  io_stats writes = {0, 0, 0, 0, 0};
  getDISKcounters(drives, &reads, &writes);
  return reads;
}

double versionInC(void);
double versionInC(void) { return HalvermonteSensorsEngineVersionNumber; }
