#include "platform/Foundation.hpp"

#import <Foundation/Foundation.h>

#include <cstdio>

#include "platform/apple/Bridging.hpp"
#include "platform/apple/Guard.h"

namespace halvermonte {

namespace {

bool start(NSTask* task) {
  if ([task respondsToSelector:@selector(launchAndReturnError:)]) {  // not in GNUstep
    NSError* error = nil;
    return [task launchAndReturnError:&error];
  }
  [task launch];
  return true;
}

}  // namespace

namespace foundation {
inline namespace HALVERMONTE_PLATFORM {

Text localizedHostName() {
  NSString* const name = [[NSHost currentHost] localizedName];
  return name != nil ? Text(charactersOf(name)) : Text();
}

Date currentDate() { return Date([[NSDate date] timeIntervalSince1970]); }

std::string byteCountText(int64_t bytes, ByteCountStyle style) {
  return charactersOf([NSByteCountFormatter
      stringFromByteCount:bytes
               countStyle:static_cast<NSByteCountFormatterCountStyle>(style)]);
}

std::string bundleText(const char* key) {
  return charactersOf([[NSBundle mainBundle] localizedStringForKey:stringOf(key)
                                                             value:@""
                                                             table:nil]);
}

std::string formatted(const std::string& format, const std::string& argument) {
  return charactersOf([NSString stringWithFormat:stringOf(format), stringOf(argument)]);
}

bool standsBefore(std::string_view first, std::string_view second) {
  return [stringOf(first) localizedStandardCompare:stringOf(second)] == NSOrderedAscending;
}

std::optional<std::string> outputOfCommand(const std::string& command) {
  NSTask* const task = [[[NSTask alloc] init] autorelease];
  [task setLaunchPath:@"/bin/sh"];
  [task setArguments:[NSArray arrayWithObjects:@"-c", stringOf(command), nil]];
  NSPipe* const pipe = [NSPipe pipe];
  [task setStandardOutput:pipe];
  if (!start(task)) return std::nullopt;
  NSFileHandle* const reading = [pipe fileHandleForReading];
  NSData* const output = [reading readDataToEndOfFile];
  [reading closeFile];  // at once, however often a host asks before its pool is drained
  return std::string(static_cast<const char*>([output bytes]), [output length]);
}

Value propertyList(std::string_view bytes) {
  NSData* const data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
  return valueOf([NSPropertyListSerialization
      propertyListWithData:data
                   options:NSPropertyListMutableContainersAndLeaves
                    format:nullptr
                     error:nullptr]);
}

void print(const std::string& line) { std::puts(line.c_str()); }

void log(std::string_view line) { NSLog(@"%@", stringOf(line)); }

std::optional<std::string> reasonRaisedBy(const std::function<void()>& call) {
  const auto calling = [](void* context) {
    (*static_cast<const std::function<void()>*>(context))();
  };
  try {
    auto context = call;
    NSException* const exception = [HalvermonteExceptionRaisedBy(calling, &context) autorelease];
    if (exception == nil) return std::nullopt;
    return charactersOf([NSString stringWithFormat:@"%@", [exception reason]]);
  } catch (const PlatformException& exception) {
    return exception.reason();
  }
}

}  // namespace HALVERMONTE_PLATFORM
}  // namespace foundation
}  // namespace halvermonte
