/* The names that the portable platform's functions have for the linker. A program may also use the
 * system's own functions of the same names: the linker never takes one for the other. */
#ifndef HALVERMONTE_PORTABLE_LINKNAME_H
#define HALVERMONTE_PORTABLE_LINKNAME_H

/* Stands at the end of a declaration. Mach-O puts an underscore before every name in C. */
#ifdef __APPLE__
#define HALVERMONTE_LINK_NAME(name) __asm__("_halvermonte_" #name)
#else
#define HALVERMONTE_LINK_NAME(name) __asm__("halvermonte_" #name)
#endif

#endif
