/* Objects that are thrown without being exceptions. Plain Objective-C, like platform/apple/Guard.m.
 */
#import <Foundation/Foundation.h>

#include "halvermonte/Export.h"

HALVERMONTE_C_BEGIN

void throwObject(void* object);

/* What the call throws, of any class; nil if it throws no object. */
id objectThrownBy(void (*call)(void* context), void* context);

HALVERMONTE_C_END
