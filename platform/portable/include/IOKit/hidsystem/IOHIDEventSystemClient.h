/* A client of the HID event system, for systems that lack it. */
#ifndef HALVERMONTE_PORTABLE_IOHIDEVENTSYSTEMCLIENT_H
#define HALVERMONTE_PORTABLE_IOHIDEVENTSYSTEMCLIENT_H

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct __IOHIDEventSystemClient* IOHIDEventSystemClientRef;

/* The services that match, in service order; NULL where the event system has no list. */
CFArrayRef IOHIDEventSystemClientCopyServices(IOHIDEventSystemClientRef client);

#ifdef __cplusplus
}
#endif

#endif
