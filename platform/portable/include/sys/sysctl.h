/* Kernel variables, for systems whose kernel has none by name. */
#ifndef HALVERMONTE_PORTABLE_SYSCTL_H
#define HALVERMONTE_PORTABLE_SYSCTL_H

#include <CoreFoundation/LinkName.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Reads an integer variable into the buffer of *oldSize bytes: its low 32 bits into one of 4 bytes,
 * all 64 into one of 8 or more, and sets *oldSize to the bytes written. Returns 0; or -1 with the
 * buffer as it was and errno set: ENOENT if there is no variable of that name, ENOMEM if the buffer
 * has another size, EPERM if a new value is given, as nothing can be set. */
int sysctlbyname(const char* name, void* oldValue, size_t* oldSize, void* newValue, size_t newSize)
    HALVERMONTE_LINK_NAME(sysctlbyname);

#ifdef __cplusplus
}
#endif

#endif
