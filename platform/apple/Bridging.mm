#include "platform/apple/Bridging.hpp"

#include <limits>

namespace halvermonte {
namespace {

Number numberOf(NSNumber* number) {
  switch (*[number objCType]) {
    case 'f':
      return Number::ofFloat32([number floatValue]);
    case 'd':
      return Number::ofFloat64([number doubleValue]);
  }
  if ([number isEqualToNumber:[NSNumber numberWithInt:[number intValue]]]) {
    return Number::ofInt32([number intValue]);
  }
  const bool negative = [number compare:[NSNumber numberWithInt:0]] == NSOrderedAscending;
  return negative ? Number::ofInt64([number longLongValue])
                  : Number::ofUInt64([number unsignedLongLongValue]);
}

Array arrayOf(NSArray* array) {
  std::vector<Value> elements;
  elements.reserve([array count]);
  NSEnumerator* const all = [array objectEnumerator];
  while (id element = [all nextObject]) elements.push_back(valueOf(element));
  return Array(std::move(elements));
}

Dictionary dictionaryOf(NSDictionary* dictionary) {
  std::vector<Dictionary::Entry> entries;
  entries.reserve([dictionary count]);
  NSEnumerator* const keys = [dictionary keyEnumerator];
  while (id key = [keys nextObject]) {
    if (![key isKindOfClass:[NSString class]]) continue;
    entries.push_back({Text(charactersOf(key)), valueOf([dictionary objectForKey:key])});
  }
  return Dictionary(std::move(entries));
}

Image imageOf(id object) {
  return Image(std::shared_ptr<const void>([object retain], [](id kept) { [kept release]; }));
}

NSNumber* objectOf(const Number& number) {
  switch (number.form()) {
    case Number::Form::int32:
      return [NSNumber numberWithInt:number.int32Value()];
    case Number::Form::int64:
      return [NSNumber numberWithLongLong:number.int64Value()];
    case Number::Form::uint64:
      return [NSNumber numberWithUnsignedLongLong:number.uint64Value()];
    case Number::Form::float32:
      return [NSNumber numberWithFloat:number.float32Value()];
    case Number::Form::float64:
      return [NSNumber numberWithDouble:number.float64Value()];
  }
  return nil;
}

NSArray* objectOf(const Array& array) {
  NSMutableArray* const objects = [NSMutableArray arrayWithCapacity:array.size()];
  for (const Value& element : array) [objects addObject:objectOf(element)];
  return [NSArray arrayWithArray:objects];
}

NSDictionary* objectOf(const Dictionary& dictionary) {
  NSMutableDictionary* const objects =
      [NSMutableDictionary dictionaryWithCapacity:dictionary.size()];
  for (const Dictionary::Entry& entry : dictionary) {
    [objects setObject:objectOf(entry.value) forKey:stringOf(entry.key.view())];
  }
  return [NSDictionary dictionaryWithDictionary:objects];
}

}  // namespace

NSString* stringOf(std::string_view characters) {
  return [[[NSString alloc] initWithBytes:characters.data()
                                   length:characters.size()
                                 encoding:NSUTF8StringEncoding] autorelease];
}

std::string charactersOf(NSString* string) {
  NSData* const bytes = [string dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  return std::string(static_cast<const char*>([bytes bytes]), [bytes length]);
}

Value valueOf(id object) {
  if (object == nil) return {};
  if ([object isKindOfClass:[NSString class]]) return Text(charactersOf(object));
  if ([object isKindOfClass:[NSNumber class]]) return numberOf(object);
  if ([object isKindOfClass:[NSArray class]]) return arrayOf(object);
  if ([object isKindOfClass:[NSDictionary class]]) return dictionaryOf(object);
  if ([object isKindOfClass:[NSDate class]]) return Date([object timeIntervalSince1970]);
  return imageOf(object);
}

id objectOf(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::absent:
      return nil;
    case Value::Kind::text: {
      const Text text = value.asText();
      return stringOf(text.view());
    }
    case Value::Kind::number:
      return objectOf(value.asNumber());
    case Value::Kind::array:
      return objectOf(value.asArray());
    case Value::Kind::dictionary:
      return objectOf(value.asDictionary());
    case Value::Kind::date:
      return [NSDate dateWithTimeIntervalSince1970:value.asDate().secondsSince1970()];
    case Value::Kind::image:
      return static_cast<id>(const_cast<void*>(value.asImage().picture().get()));
  }
  return nil;
}

}  // namespace halvermonte
