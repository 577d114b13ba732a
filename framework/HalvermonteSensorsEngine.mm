#import <HalvermonteSensorsEngine/HalvermonteSensorsEngine.h>

#include <memory>
#include <optional>
#include <string>

#include "engine/Questions.hpp"
#include "framework/HostRecord.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "platform/Foundation.hpp"
#include "platform/apple/Bridging.hpp"

using halvermonte::objectOf;
using halvermonte::valueOf;
using Engine = halvermonte::HalvermonteSensorsEngine;

namespace {

/// Whole degrees. A number is converted as the core converts it, whatever the processor does with
/// one that does not fit; any other object is asked.
int32_t degreesOf(id reading) {
  return [reading isKindOfClass:[NSNumber class]] ? valueOf(reading).asNumber().int32Value()
                                                  : [reading intValue];
}

/// Asks the host's object, so that the methods of its own class answer.
class QuestionsToObject final : public halvermonte::Questions {
 public:
  explicit QuestionsToObject(::HalvermonteSensorsEngine* object) : object_(object) {}

  halvermonte::Text processorName() const override {
    return valueOf([object_ askSytemInfoForProcessorName]).asText();
  }

  int32_t physicalCores() const override { return [object_ physicalCores]; }

  std::vector<int32_t> thermalValues() const override {
    std::vector<int32_t> degrees;
    NSEnumerator* const readings = [[object_ returnThermalValues] objectEnumerator];
    while (id reading = [readings nextObject]) degrees.push_back(degreesOf(reading));
    return degrees;
  }

 private:
  ::HalvermonteSensorsEngine* object_;  ///< not kept: it is the one that holds this
};

}  // namespace

/// What the header keeps closed.
struct HalvermonteEngine {
  explicit HalvermonteEngine(::HalvermonteSensorsEngine* object) : questions(object) {}

  QuestionsToObject questions;
  Engine engine{questions};
};

namespace {

/// The reason of the range exception that the pass raised; absent if it raised none.
std::optional<std::string> pass(Engine& engine, StatisticsData* record) {
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
  engine_ = new HalvermonteEngine(self);
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
  const std::optional<std::string> outOfRange = pass(engine_->engine, record);
  [pool drain];
  if (outOfRange) {
    [NSException raise:NSRangeException format:@"%@", halvermonte::stringOf(*outOfRange)];
  }
  return record;
}

- (NSString*)askSytemInfoForProcessorName {
  return objectOf(Engine::askSytemInfoForProcessorName());
}

- (int)physicalCores {
  return Engine::physicalCores();
}

- (float)askSystemPS:(int)processIdentifier {
  return Engine::askSystemPS(processIdentifier);
}

- (NSMutableArray*)currentArray {
  return list(Engine::currentArray());
}

- (NSMutableArray*)voltageArray {
  return list(Engine::voltageArray());
}

- (NSMutableArray*)thermalArray {
  return list(Engine::thermalArray());
}

- (NSMutableArray*)returnCurrentValues {
  return list(Engine::returnCurrentValues());
}

- (NSMutableArray*)returnVoltageValues {
  return list(Engine::returnVoltageValues());
}

- (NSMutableArray*)returnThermalValues {
  return list(Engine::returnThermalValues());
}

@end
