#include "platform/apple/Guard.h"

NSException* HalvermonteExceptionRaisedBy(void (*call)(void* context), void* context) {
  @try {
    call(context);
    return nil;
  } @catch (NSException* exception) {
    return [exception retain];
  }
}
