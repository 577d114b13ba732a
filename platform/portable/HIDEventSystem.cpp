// The HID event system, answered by the current machine.
#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/hidsystem/IOHIDEventSystemClient.h>
#include <IOKit/hidsystem/IOHIDServiceClient.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "platform/IOHIDEventSystem.h"
#include "platform/portable/Objects.hpp"

using halvermonte::HIDSensorKind;
using halvermonte::HIDServices;
using halvermonte::Machine;
using halvermonte::portable::Object;
using halvermonte::portable::ObjectKind;
using halvermonte::portable::objectOf;

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

/// The entry of a matching dictionary: a 32-bit number, as a usage is matched by its exact form.
std::optional<int32_t> entry(CFDictionaryRef matching, CFStringRef key) {
  const void* const found = CFDictionaryGetValue(matching, key);
  if (found == nullptr) return std::nullopt;
  const auto& number = objectOf<__CFNumber>(found, "IOHIDEventSystemClientSetMatching");
  if (number.type != kCFNumberSInt32Type) return std::nullopt;
  return static_cast<int32_t>(std::get<int64_t>(number.value));
}

const SensorUsage* usageOf(CFDictionaryRef matching) {
  const std::optional<int32_t> page = entry(matching, CFSTR("PrimaryUsagePage"));
  const std::optional<int32_t> usage = entry(matching, CFSTR("PrimaryUsage"));
  for (const SensorUsage& row : kSensorUsages) {
    if (row.page == page && row.usage == usage) return &row;
  }
  return nullptr;
}

/// The services that a client gave. They answer no longer than their client is alive.
struct ServiceList {
  std::shared_ptr<const HIDServices> services;
  int64_t eventType;
  std::shared_ptr<const std::atomic<bool>> clientIsAlive;
};

}  // namespace

struct __IOHIDEventSystemClient final : Object {
  static constexpr auto kKind = ObjectKind::hidClient;
  static constexpr const char* kExpected = "a live client of the HID event system";

  __IOHIDEventSystemClient() : Object(kKind) {}
  void end() override { *isAlive = false; }

  const SensorUsage* sensors = nullptr;
  std::shared_ptr<std::atomic<bool>> isAlive = std::make_shared<std::atomic<bool>>(true);
};

struct __IOHIDServiceClient final : Object {
  static constexpr auto kKind = ObjectKind::hidService;
  static constexpr const char* kExpected = "a live HID service";

  __IOHIDServiceClient(std::shared_ptr<const ServiceList> all, size_t place)
      : Object(kKind), list(std::move(all)), index(place) {}
  void end() override { list = nullptr; }

  /// Null if the client is gone.
  const halvermonte::HIDService* service() const {
    return *list->clientIsAlive ? &(*list->services)[index] : nullptr;
  }

  std::shared_ptr<const ServiceList> list;
  size_t index;
};

struct __IOHIDEvent final : Object {
  static constexpr auto kKind = ObjectKind::hidEvent;
  static constexpr const char* kExpected = "a live HID event";

  __IOHIDEvent(int64_t eventType, double eventValue)
      : Object(kKind), type(eventType), value(eventValue) {}

  int64_t type;
  double value;
};

IOHIDEventSystemClientRef IOHIDEventSystemClientCreate(CFAllocatorRef) {
  return new __IOHIDEventSystemClient;
}

void IOHIDEventSystemClientSetMatching(IOHIDEventSystemClientRef client, CFDictionaryRef matching) {
  auto& own = objectOf<__IOHIDEventSystemClient>(client, "IOHIDEventSystemClientSetMatching");
  own.sensors = usageOf(matching);
}

CFArrayRef IOHIDEventSystemClientCopyServices(IOHIDEventSystemClientRef client) {
  const auto& own =
      objectOf<__IOHIDEventSystemClient>(client, "IOHIDEventSystemClientCopyServices");
  if (own.sensors == nullptr) return new __CFArray;
  auto services = Machine::current().hidServices(own.sensors->kind);
  if (services == nullptr) return nullptr;
  const size_t count = services->size();
  const auto all = std::make_shared<const ServiceList>(
      ServiceList{std::move(services), own.sensors->eventType, own.isAlive});
  auto* const list = new __CFArray;
  list->elements.reserve(count);
  for (size_t i = 0; i < count; ++i) {
    auto* const service = new __IOHIDServiceClient(all, i);
    list->add(service);
    CFRelease(service);
  }
  return list;
}

CFTypeRef IOHIDServiceClientCopyProperty(IOHIDServiceClientRef service, CFStringRef key) {
  constexpr const char* kCall = "IOHIDServiceClientCopyProperty";
  const auto* const asked = objectOf<__IOHIDServiceClient>(service, kCall).service();
  const bool isProduct = objectOf<__CFString>(key, kCall).characters == "Product";
  if (asked == nullptr || !asked->product || !isProduct) return nullptr;
  return new __CFString(*asked->product);
}

IOHIDEventRef IOHIDServiceClientCopyEvent(IOHIDServiceClientRef service, int64_t type,
                                          IOHIDEventRef matching, uint32_t options) {
  const auto& own = objectOf<__IOHIDServiceClient>(service, "IOHIDServiceClientCopyEvent");
  const auto* const asked = own.service();
  if (asked == nullptr || !asked->value || type != own.list->eventType) return nullptr;
  if (matching != nullptr || options != 0) return nullptr;
  return new __IOHIDEvent(type, *asked->value);
}

double IOHIDEventGetFloatValue(IOHIDEventRef event, int32_t field) {
  const auto& own = objectOf<__IOHIDEvent>(event, "IOHIDEventGetFloatValue");
  return field == static_cast<int32_t>(own.type << 16) ? own.value : 0.0;
}
