/* Kernel variables, for systems whose kernel has none by name. */
#ifndef HALVERMONTE_PORTABLE_SYSCTL_H
#define HALVERMONTE_PORTABLE_SYSCTL_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Reads an integer variable into the buffer of *oldSize bytes: as many low bytes as it holds. 0, or
 * -1 with the buffer as it was where there is no variable of that name. Nothing can be set. */
int sysctlbyname(const char* name, void* oldValue, size_t* oldSize, void* newValue, size_t newSize);

#ifdef __cplusplus
}
#endif

#endif
