#include "engine/Questions.hpp"

#include "engine/HIDTemperatures.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"

namespace halvermonte {

Text Questions::processorName() const {
  return HalvermonteSensorsEngine::askSytemInfoForProcessorName();
}

int32_t Questions::physicalCores() const { return HalvermonteSensorsEngine::physicalCores(); }

std::vector<int32_t> Questions::thermalValues() const { return readHIDTemperatures(); }

}  // namespace halvermonte
