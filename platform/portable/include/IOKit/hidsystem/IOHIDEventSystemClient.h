/* A client of the HID event system, for systems that lack it. */
#ifndef HALVERMONTE_PORTABLE_IOHIDEVENTSYSTEMCLIENT_H
#define HALVERMONTE_PORTABLE_IOHIDEVENTSYSTEMCLIENT_H

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct __IOHIDEventSystemClient* IOHIDEventSystemClientRef;

/* The services that match, in service order; NULL if the event system has no list. They answer as
 * long as their client is alive: after that they have neither properties nor events. */
CFArrayRef IOHIDEventSystemClientCopyServices(IOHIDEventSystemClientRef client)
    HALVERMONTE_LINK_NAME(IOHIDEventSystemClientCopyServices);

#ifdef __cplusplus
}
#endif

#endif
