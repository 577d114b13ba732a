/* Marks the names that leave the library; everything else is built hidden. */
#ifndef HALVERMONTE_PLATFORM_EXPORT_H
#define HALVERMONTE_PLATFORM_EXPORT_H

#define HALVERMONTE_EXPORT __attribute__((visibility("default")))

#ifdef __cplusplus
#define HALVERMONTE_C_BEGIN extern "C" {
#define HALVERMONTE_C_END }
#else
#define HALVERMONTE_C_BEGIN
#define HALVERMONTE_C_END
#endif

#endif
