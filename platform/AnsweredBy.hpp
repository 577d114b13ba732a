// Who answers the code that includes this: the portable platform, or the system itself. The include
// path decides, as for the platform's C headers.
//
// The monitor on a Mac has code over both. What has the same name on both sides, and is not the
// same code, is in the inline namespace HALVERMONTE_PLATFORM, so that the linker keeps them apart.
#pragma once

#if __has_include(<CoreFoundation/LinkName.h>)
#define HALVERMONTE_PLATFORM over_portable
#else
#define HALVERMONTE_PLATFORM over_system
#endif
