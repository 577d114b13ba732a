/* IOKit for systems that lack it: what the engine uses of the registry and of user clients,
 * answered by the thread's current Machine. Handles are numbers, none of which is given twice. */
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
extern const mach_port_t bootstrap_port;
mach_port_t mach_task_self(void);

kern_return_t IOMasterPort(mach_port_t bootstrapPort, mach_port_t* masterPort);

CFMutableDictionaryRef IOServiceMatching(const char* className);
/* Takes over one reference to the matching dictionary, also where it fails. */
kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, CFDictionaryRef matching,
                                           io_iterator_t* iterator);
io_object_t IOIteratorNext(io_iterator_t iterator);
void IOIteratorReset(io_iterator_t iterator);
kern_return_t IOObjectRelease(io_object_t object);
kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t entry,
                                                CFMutableDictionaryRef* properties,
                                                CFAllocatorRef allocator, IOOptionBits options);

kern_return_t IOServiceOpen(io_service_t service, task_port_t task, uint32_t type,
                            io_connect_t* connection);
kern_return_t IOServiceClose(io_connect_t connection);
kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector,
                                        const void* input, size_t inputSize, void* output,
                                        size_t* outputSize);

#ifdef __cplusplus
}
#endif

#endif
