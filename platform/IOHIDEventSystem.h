/* The functions of the HID event system that the engine calls and the platform's headers do not
 * declare. */
#ifndef HALVERMONTE_PLATFORM_IOHIDEVENTSYSTEM_H
#define HALVERMONTE_PLATFORM_IOHIDEVENTSYSTEM_H

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/hidsystem/IOHIDEventSystemClient.h>
#include <IOKit/hidsystem/IOHIDServiceClient.h>
#include <stdint.h>

#include "halvermonte/Export.h"

HALVERMONTE_C_BEGIN

/* The portable platform's functions have link names of their own, the system's have not. */
#ifndef HALVERMONTE_LINK_NAME
#define HALVERMONTE_LINK_NAME(name)
#endif

typedef struct __IOHIDEvent* IOHIDEventRef;

IOHIDEventSystemClientRef IOHIDEventSystemClientCreate(CFAllocatorRef allocator)
    HALVERMONTE_LINK_NAME(IOHIDEventSystemClientCreate);
void IOHIDEventSystemClientSetMatching(IOHIDEventSystemClientRef client, CFDictionaryRef matching)
    HALVERMONTE_LINK_NAME(IOHIDEventSystemClientSetMatching);
/* The current event of the type; NULL if the service gives none. No event to match, and no options:
 * NULL and 0. */
IOHIDEventRef IOHIDServiceClientCopyEvent(IOHIDServiceClientRef service, int64_t type,
                                          IOHIDEventRef matching, uint32_t options)
    HALVERMONTE_LINK_NAME(IOHIDServiceClientCopyEvent);
double IOHIDEventGetFloatValue(IOHIDEventRef event, int32_t field)
    HALVERMONTE_LINK_NAME(IOHIDEventGetFloatValue);

HALVERMONTE_C_END

#endif
