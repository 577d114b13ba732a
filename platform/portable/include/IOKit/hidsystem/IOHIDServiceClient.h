/* The services of the HID event system, for systems that lack it. */
#ifndef HALVERMONTE_PORTABLE_IOHIDSERVICECLIENT_H
#define HALVERMONTE_PORTABLE_IOHIDSERVICECLIENT_H

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct __IOHIDServiceClient* IOHIDServiceClientRef;

/* NULL if the service has no such property. */
CFTypeRef IOHIDServiceClientCopyProperty(IOHIDServiceClientRef service, CFStringRef key)
    HALVERMONTE_LINK_NAME(IOHIDServiceClientCopyProperty);

#ifdef __cplusplus
}
#endif

#endif
