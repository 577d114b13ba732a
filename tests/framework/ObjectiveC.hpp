// What a host of the framework does in these tests: its own subclass of the record, objects that
// are counted, exceptions that are caught.
#pragma once

#import <HalvermonteSensorsEngine/HalvermonteSensorsEngine.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/framework/Pool.hpp"

/// An object that is counted while it is alive.
@interface Counted : NSObject
+ (int)alive;
@end

/// A host's own kind of record: remembers which of its accessors were called, in order, as
/// "hostName" and "setHostName".
@interface LoggingRecord : StatisticsData {
 @private
  NSMutableArray* log_;
  NSString* accessor_;
  NSException* exception_;
}
- (NSArray*)log;
/// Raises the exception from now on when the accessor is called.
- (void)raise:(NSException*)exception at:(NSString*)accessor;
@end

class ObjectiveCTest : public ::testing::Test {
 private:
  Pool pool_;
};

/// Lets the thread that has it send messages: GNUstep wants to know of threads that it did not
/// start.
class ForeignThread {
 public:
#ifdef GNUSTEP
  ForeignThread() { GSRegisterCurrentThread(); }
  ~ForeignThread() { GSUnregisterCurrentThread(); }
#else
  ForeignThread() {}
#endif
  ForeignThread(const ForeignThread&) = delete;
  ForeignThread& operator=(const ForeignThread&) = delete;
};

/// The exception that the call raises; nil if it raises none.
NSException* raisedBy(const std::function<void()>& call);

/// The strings of the array.
std::vector<std::string> textsOf(NSArray* array);
