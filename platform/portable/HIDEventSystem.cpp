// The HID event system, answered by the current machine.
#include <optional>

#include "platform/IOHIDEventSystem.h"
#include "platform/portable/Machine.hpp"
#include "platform/portable/Objects.hpp"

using halvermonte::HIDSensorKind;
using halvermonte::HIDServices;
using halvermonte::Machine;

namespace {

constexpr int64_t kTemperatureEvent = 15;
constexpr int64_t kPowerEvent = 25;

/// A sensor kind as the event system names it, and the events that its services give.
struct SensorUsage {
  int32_t page;
  int32_t usage;
  HIDSensorKind kind;
  int64_t eventType;
};
constexpr SensorUsage kSensorUsages[] = {
    {0xFF00, 5, HIDSensorKind::temperature, kTemperatureEvent},
    {0xFF08, 2, HIDSensorKind::current, kPowerEvent},
    {0xFF08, 3, HIDSensorKind::voltage, kPowerEvent},
};

int32_t entry(CFDictionaryRef matching, CFStringRef key) {
  int32_t value = 0;
  const void* const number = CFDictionaryGetValue(matching, key);
  if (number != nullptr) {
    CFNumberGetValue(static_cast<CFNumberRef>(number), kCFNumberSInt32Type, &value);
  }
  return value;
}

const SensorUsage* usageOf(CFDictionaryRef matching) {
  const int32_t page = entry(matching, CFSTR("PrimaryUsagePage"));
  const int32_t usage = entry(matching, CFSTR("PrimaryUsage"));
  for (const SensorUsage& row : kSensorUsages) {
    if (row.page == page && row.usage == usage) return &row;
  }
  return nullptr;
}

}  // namespace

struct __IOHIDEventSystemClient final : halvermonte::portable::Object {
  const SensorUsage* sensors = nullptr;
};

struct __IOHIDServiceClient final : halvermonte::portable::Object {
  __IOHIDServiceClient(std::shared_ptr<const HIDServices> all, size_t place, int64_t event)
      : services(std::move(all)), index(place), eventType(event) {}
  const halvermonte::HIDService& service() const { return (*services)[index]; }

  std::shared_ptr<const HIDServices> services;
  size_t index;
  int64_t eventType;
};

struct __IOHIDEvent final : halvermonte::portable::Object {
  __IOHIDEvent(int64_t eventType, double eventValue) : type(eventType), value(eventValue) {}
  int64_t type;
  double value;
};

IOHIDEventSystemClientRef IOHIDEventSystemClientCreate(CFAllocatorRef) {
  return new __IOHIDEventSystemClient;
}

int IOHIDEventSystemClientSetMatching(IOHIDEventSystemClientRef client, CFDictionaryRef matching) {
  client->sensors = usageOf(matching);
  return 0;
}

CFArrayRef IOHIDEventSystemClientCopyServices(IOHIDEventSystemClientRef client) {
  const SensorUsage* const sensors = client->sensors;
  if (sensors == nullptr) return new __CFArray;
  const std::shared_ptr<const HIDServices> services = Machine::current().hidServices(sensors->kind);
  if (services == nullptr) return nullptr;
  auto* const list = new __CFArray;
  list->elements.reserve(services->size());
  for (size_t i = 0; i < services->size(); ++i) {
    auto* const service = new __IOHIDServiceClient(services, i, sensors->eventType);
    CFArrayAppendValue(list, service);
    CFRelease(service);
  }
  return list;
}

CFTypeRef IOHIDServiceClientCopyProperty(IOHIDServiceClientRef service, CFStringRef key) {
  const std::optional<std::string>& product = service->service().product;
  if (!product || key->characters != "Product") return nullptr;
  return new __CFString(*product);
}

IOHIDEventRef IOHIDServiceClientCopyEvent(IOHIDServiceClientRef service, int64_t type, int32_t,
                                          int64_t) {
  const std::optional<double>& value = service->service().value;
  if (!value || type != service->eventType) return nullptr;
  return new __IOHIDEvent(type, *value);
}

double IOHIDEventGetFloatValue(IOHIDEventRef event, int32_t field) {
  return field == static_cast<int32_t>(event->type << 16) ? event->value : 0.0;
}
