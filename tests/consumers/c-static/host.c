/* A host in C that reads and releases lists of HID sensors. The shared library has no functions for it. */
#include <halvermonte/HIDSensors.h>
#include <halvermonte/halvermonte.h>
#include <stdio.h>

int main(void) {
  CFDictionaryRef sensors = matching(kSensorsPage, kTemperatureUsage);
  CFMutableArrayRef names = getProductNames(sensors);
  CFMutableArrayRef readings = getThermalValues(sensors);
  const CFIndex count = CFArrayGetCount(readings);
  const int isAligned = CFArrayGetCount(names) == count;
  CFRelease(readings);
  CFRelease(names);
  CFRelease(sensors);
  printf("%ld HID sensors, halvermonte %s\n", (long)count, halvermonte_version());
  return isAligned ? 0 : 1;
}
