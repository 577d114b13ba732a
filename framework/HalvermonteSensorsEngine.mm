#import <HalvermonteSensorsEngine/HalvermonteSensorsEngine.h>

#include <memory>
#include <optional>
#include <string>

#include "engine/HalvermonteSensorsEngine.hpp"
#include "framework/HostRecord.hpp"
#include "platform/Foundation.hpp"
#include "platform/apple/Bridging.hpp"

using halvermonte::objectOf;

/// What the header keeps closed.
struct HalvermonteEngine final : halvermonte::HalvermonteSensorsEngine {};

namespace {

/// The reason of the range exception that the pass raised; absent where it raised none.
std::optional<std::string> pass(HalvermonteEngine& engine, StatisticsData* record) {
  try {
    engine.getSensorsInfo(std::make_shared<halvermonte::HostRecord>(record));
    return std::nullopt;
  } catch (const halvermonte::RangeException& exception) {
    return exception.reason();
  }
}

NSMutableArray* list(const halvermonte::Array& array) {
  return [[objectOf(array) mutableCopy] autorelease];
}

}  // namespace

@implementation HalvermonteSensorsEngine

- (instancetype)init {
  self = [super init];
  if (self == nil) return nil;
  NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
  engine_ = new HalvermonteEngine();
  [pool drain];
  return self;
}

- (void)dealloc {
  delete engine_;
  [super dealloc];
}

- (StatisticsData*)getSensorsInfo:(StatisticsData*)record {
  // What the host's own setters raise passes by here, and leaves the pool to the one around it, for
  // the exception itself is in it.
  NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
  const std::optional<std::string> outOfRange = pass(*engine_, record);
  [pool drain];
  if (outOfRange) {
    [NSException raise:NSRangeException format:@"%@", halvermonte::stringOf(*outOfRange)];
  }
  return record;
}

- (NSString*)askSytemInfoForProcessorName {
  return objectOf(engine_->askSytemInfoForProcessorName());
}

- (int)physicalCores {
  return engine_->physicalCores();
}

- (float)askSystemPS:(int)processIdentifier {
  return engine_->askSystemPS(processIdentifier);
}

- (NSMutableArray*)currentArray {
  return list(engine_->currentArray());
}

- (NSMutableArray*)voltageArray {
  return list(engine_->voltageArray());
}

- (NSMutableArray*)thermalArray {
  return list(engine_->thermalArray());
}

- (NSMutableArray*)returnCurrentValues {
  return list(engine_->returnCurrentValues());
}

- (NSMutableArray*)returnVoltageValues {
  return list(engine_->returnVoltageValues());
}

- (NSMutableArray*)returnThermalValues {
  return list(engine_->returnThermalValues());
}

@end
