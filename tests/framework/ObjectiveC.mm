#include "tests/framework/ObjectiveC.hpp"

#include <atomic>

#include "platform/apple/Bridging.hpp"
#include "platform/apple/Guard.h"

namespace {

std::atomic<int> counted{0};

using Text = NSString*;
using Number = NSNumber*;
using Array = NSArray*;
using Dictionary = NSDictionary*;
using Date = NSDate*;
using Image = NSImage*;
using Flag = signed char;
using Int = int;

}  // namespace

@implementation Counted

+ (int)alive {
  return counted;
}

- (instancetype)init {
  self = [super init];
  ++counted;
  return self;
}

- (void)dealloc {
  --counted;
  [super dealloc];
}

@end

@implementation LoggingRecord

- (instancetype)init {
  self = [super init];
  log_ = [[NSMutableArray alloc] init];
  return self;
}

- (void)dealloc {
  [log_ release];
  [accessor_ release];
  [exception_ release];
  [super dealloc];
}

- (NSArray*)log {
  return log_;
}

- (void)raise:(NSException*)exception at:(NSString*)accessor {
  exception_ = [exception retain];
  accessor_ = [accessor retain];
}

- (void)note:(NSString*)accessor {
  [log_ addObject:accessor];
  if ([accessor isEqual:accessor_]) [exception_ raise];
}

#define PROPERTY(name, Name, Type, initial, copy, turn) \
  -(Type)name {                                         \
    [self note:@ #name];                                \
    return [super name];                                \
  }                                                     \
  -(void)set##Name : (Type)value {                      \
    [self note:@"set" #Name];                           \
    [super set##Name:value];                            \
  }
#include "halvermonte/properties.def"

@end

NSException* raisedBy(const std::function<void()>& call) {
  auto context = call;
  const auto calling = [](void* function) { (*static_cast<std::function<void()>*>(function))(); };
  return [HalvermonteExceptionRaisedBy(calling, &context) autorelease];
}

std::vector<std::string> textsOf(NSArray* array) {
  std::vector<std::string> texts;
  for (NSUInteger i = 0; i < [array count]; ++i) {
    texts.push_back(halvermonte::charactersOf([array objectAtIndex:i]));
  }
  return texts;
}
