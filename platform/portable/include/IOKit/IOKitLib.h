/* IOKit for systems that lack it: what the engine uses of the registry and of user clients,
 * answered by the thread's current Machine. Handles are numbers, none of which is given twice.
 *
 * Calls fail as the platform's would: 0x10000003 for a handle or port that is not open or not of
 * the kind, 0xE00002C2 for any other argument that is not expected. */
#ifndef HALVERMONTE_PORTABLE_IOKITLIB_H
#define HALVERMONTE_PORTABLE_IOKITLIB_H

#include <CoreFoundation/CoreFoundation.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int kern_return_t;
typedef uint32_t mach_port_t;
typedef mach_port_t task_port_t;
typedef mach_port_t io_object_t;
typedef io_object_t io_iterator_t;
typedef io_object_t io_service_t;
typedef io_object_t io_connect_t;
typedef io_object_t io_registry_entry_t;
typedef uint32_t IOOptionBits;

#define MACH_PORT_NULL ((mach_port_t)0)
#define KERN_SUCCESS 0
extern const mach_port_t bootstrap_port HALVERMONTE_LINK_NAME(bootstrap_port);
mach_port_t mach_task_self(void) HALVERMONTE_LINK_NAME(mach_task_self);

/* The bootstrap port is MACH_PORT_NULL or bootstrap_port. */
kern_return_t IOMasterPort(mach_port_t bootstrapPort, mach_port_t* masterPort)
    HALVERMONTE_LINK_NAME(IOMasterPort);

CFMutableDictionaryRef IOServiceMatching(const char* className)
    HALVERMONTE_LINK_NAME(IOServiceMatching);
/* Takes over one reference to the matching dictionary, also if it fails. The main port is
 * MACH_PORT_NULL or what IOMasterPort gave. */
kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, CFDictionaryRef matching,
                                           io_iterator_t* iterator)
    HALVERMONTE_LINK_NAME(IOServiceGetMatchingServices);
io_object_t IOIteratorNext(io_iterator_t iterator) HALVERMONTE_LINK_NAME(IOIteratorNext);
void IOIteratorReset(io_iterator_t iterator) HALVERMONTE_LINK_NAME(IOIteratorReset);
kern_return_t IOObjectRelease(io_object_t object) HALVERMONTE_LINK_NAME(IOObjectRelease);
/* The options are 0. */
kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t entry,
                                                CFMutableDictionaryRef* properties,
                                                CFAllocatorRef allocator, IOOptionBits options)
    HALVERMONTE_LINK_NAME(IORegistryEntryCreateCFProperties);

/* Opens for the own task, with type 0. */
kern_return_t IOServiceOpen(io_service_t service, task_port_t task, uint32_t type,
                            io_connect_t* connection) HALVERMONTE_LINK_NAME(IOServiceOpen);
kern_return_t IOServiceClose(io_connect_t connection) HALVERMONTE_LINK_NAME(IOServiceClose);
/* The controller's structure call. Reserved fields of the input are zero. The read command sends
 * back the key and the size of the info command before it; if not, the controller replies with the
 * result 0x87 and no bytes. */
kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector,
                                        const void* input, size_t inputSize, void* output,
                                        size_t* outputSize)
    HALVERMONTE_LINK_NAME(IOConnectCallStructMethod);

#ifdef __cplusplus
}
#endif

#endif
