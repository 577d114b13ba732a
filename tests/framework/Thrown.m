#include "tests/framework/Thrown.h"

void throwObject(void* object) { @throw (id)object; }

id objectThrownBy(void (*call)(void* context), void* context) {
  @try {
    call(context);
    return nil;
  } @catch (id object) {
    return object;
  }
}
