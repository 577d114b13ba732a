/* The one place where Foundation's exceptions are caught. It is plain Objective-C: not every
 * compiler lets Objective-C++ catch them. */
#ifndef HALVERMONTE_APPLE_GUARD_H
#define HALVERMONTE_APPLE_GUARD_H

#import <Foundation/Foundation.h>

#include "halvermonte/Export.h"

HALVERMONTE_C_BEGIN

/* Calls with the context, and returns the exception that the call raised, or nil. The caller
 * releases it: a pool that the exception was in may be drained by now. Exceptions of any other kind
 * pass. */
NSException* HalvermonteExceptionRaisedBy(void (*call)(void* context),
                                          void* context) NS_RETURNS_RETAINED;

HALVERMONTE_C_END

#endif
