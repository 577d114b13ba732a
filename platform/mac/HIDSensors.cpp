#include "platform/mac/HIDSensors.hpp"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/hidsystem/IOHIDServiceClient.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "halvermonte/HIDSensors.h"
#include "platform/CFOwned.hpp"
#include "platform/CFValues.hpp"
#include "platform/HIDServiceList.hpp"
#include "platform/IOHIDEventSystem.h"

namespace halvermonte::macos {
namespace {

struct SensorUsage {
  uint32_t page;
  uint32_t usage;
  int32_t eventType;
};
/// By HIDSensorKind.
constexpr SensorUsage kSensorUsages[] = {
    {kSensorsPage, kTemperatureUsage, kTemperatureEvent},
    {kPowerSensorsPage, kCurrentUsage, kPowerEvent},
    {kPowerSensorsPage, kVoltageUsage, kPowerEvent},
};

std::optional<std::string> productOf(IOHIDServiceClientRef service) {
  const CFOwned product(IOHIDServiceClientCopyProperty(service, CFSTR("Product")));
  if (!product) return std::nullopt;
  std::string characters;
  copyCharacters(static_cast<CFStringRef>(product.get()), characters);
  return characters;
}

std::optional<double> valueOf(IOHIDServiceClientRef service, int32_t eventType) {
  const CFOwned event(IOHIDServiceClientCopyEvent(service, eventType, nullptr, 0));
  if (!event) return std::nullopt;
  return IOHIDEventGetFloatValue(event.get(), firstField(eventType));
}

}  // namespace

std::shared_ptr<const HIDServices> readServices(HIDSensorKind kind) {
  const SensorUsage& sensors = kSensorUsages[static_cast<size_t>(kind)];
  const CFOwned matching(createMatching(sensors.page, sensors.usage));
  const HIDServiceList found(matching.get());
  if (found.list() == nullptr) return nullptr;
  auto services = std::make_shared<HIDServices>();
  found.forEach([&](IOHIDServiceClientRef service) {
    services->push_back({productOf(service), valueOf(service, sensors.eventType)});
  });
  return services;
}

}  // namespace halvermonte::macos
