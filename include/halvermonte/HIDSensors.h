/* The sensor services of the HID event system: names and values of one kind of sensor, as two lists
 * aligned by index.
 *
 * Plain functions for C and C++. Any thread may call them: each call has its own client, and sees
 * the services of that moment. The caller releases what a function returns with CFRelease().
 *
 * On Linux these functions serve the engine; a host finds the readings in halvermonte.h. The shared
 * library exports nothing of CoreFoundation, because another library of the process may do so. A
 * host that links the static library has the functions of CoreFoundation/CoreFoundation.h. */
#ifndef HALVERMONTE_HID_HID_SENSORS_H
#define HALVERMONTE_HID_HID_SENSORS_H

#include <CoreFoundation/CoreFoundation.h>
#include <stdint.h>

#include "halvermonte/Export.h"

HALVERMONTE_C_BEGIN

/* The sensor kinds, each a usage of a usage page. */
enum {
  kSensorsPage = 0xFF00,
  kTemperatureUsage = 5,
  kPowerSensorsPage = 0xFF08,
  kCurrentUsage = 2,
  kVoltageUsage = 3,
};

/* A matching dictionary with the entries "PrimaryUsagePage" and "PrimaryUsage". */
HALVERMONTE_EXPORT CFDictionaryRef matching(uint32_t page, uint32_t usage) CF_RETURNS_RETAINED;

/* The services' "Product" texts, "Unknown" for one that has none; NULL when the event system
 * returns no service list. */
HALVERMONTE_EXPORT CFMutableArrayRef getProductNames(CFDictionaryRef sensors) CF_RETURNS_RETAINED;

/* The services' power events (amperes or volts) as 64-bit floats, 0.0 for one that gives no event.
 * Ends the process when the event system returns no service list. */
HALVERMONTE_EXPORT CFMutableArrayRef getPowerValues(CFDictionaryRef sensors) CF_RETURNS_RETAINED;

/* The services' temperature events (degrees Celsius) as 64-bit floats, 0.0 for one that gives no
 * event; an empty list when the event system returns no service list. */
HALVERMONTE_EXPORT CFMutableArrayRef getThermalValues(CFDictionaryRef sensors) CF_RETURNS_RETAINED;

HALVERMONTE_C_END

#endif
