#import <HalvermonteSensorsEngine/StatisticsData.h>

#include "platform/Foundation.hpp"
#include "platform/apple/Bridging.hpp"

namespace {

/// For a property that keeps what it has.
struct Nothing {};

// What a fresh record holds, by the names of the table.
NSString* emptyText() { return @""; }
NSString* dash() { return @"-"; }
NSString* localizedHostName() {
  return halvermonte::objectOf(halvermonte::foundation::localizedHostName());
}
NSNumber* zero() { return [NSNumber numberWithInt:0]; }
NSNumber* one() { return [NSNumber numberWithInt:1]; }
NSArray* emptyArray() { return [NSArray array]; }
NSDictionary* emptyDictionary() { return [NSDictionary dictionary]; }
NSDate* now() { return halvermonte::objectOf(halvermonte::foundation::currentDate()); }
constexpr signed char no() { return NO; }
constexpr int minusOne() { return -1; }
Nothing unset() { return {}; }

// How a property of the source is copied, by the names of the table.
NSString* newText(NSString* source) {
  return [[[NSString alloc] initWithString:source] autorelease];
}
NSArray* newArray(NSArray* source) { return [NSArray arrayWithArray:source]; }
NSDictionary* newDictionary(NSDictionary* source) {
  return [NSDictionary dictionaryWithDictionary:source];
}
constexpr auto same = [](auto source) { return source; };
constexpr Nothing notCopied;

template <class Object, class Initial>
void initialise(Object*& property, Initial* value) {
  property = [value retain];
}
void initialise(signed char& property, signed char value) { property = value; }
void initialise(int& property, int value) { property = value; }
template <class Stored>
void initialise(Stored& /*property*/, Nothing /*value*/) {}

void release(id object) { [object release]; }
void release(int /*scalar*/) {}

template <class Rule, class Getter, class Setter>
void copyBy(const Rule& rule, const Getter& get, const Setter& set) {
  set(rule(get()));
}
template <class Getter, class Setter>
void copyBy(Nothing /*rule*/, const Getter& /*get*/, const Setter& /*set*/) {}

}  // namespace

@implementation StatisticsData

#define PROPERTY(name, Name, Type, initial, copy, turn) @synthesize name = name##_;
#include "halvermonte/properties.def"

- (instancetype)init {
  self = [super init];
  if (self == nil) return nil;
#define PROPERTY(name, Name, Type, initial, copy, turn) initialise(name##_, initial());
#include "halvermonte/properties.def"
  return self;
}

- (void)dealloc {
#define PROPERTY(name, Name, Type, initial, copy, turn) release(name##_);
#include "halvermonte/properties.def"
  [super dealloc];
}

- (void)populateStatisticsDataFrom:(StatisticsData*)source {
  for (int current = 1; current <= 5; ++current) {
#define PROPERTY(name, Name, Type, initial, copy, turn)                                    \
  if (current == (turn)) {                                                                 \
    copyBy(                                                                                \
        copy, [&] { return [source name]; }, [&](auto value) { [self set##Name:value]; }); \
  }
#include "halvermonte/properties.def"
  }
}

@end
