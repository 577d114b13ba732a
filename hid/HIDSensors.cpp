#include "halvermonte/HIDSensors.h"
#include <IOKit/hidsystem/IOHIDEventSystemClient.h>
#include <IOKit/hidsystem/IOHIDServiceClient.h>
#include <cstdint>

#include "platform/CFOwned.hpp"
#include "platform/IOHIDEventSystem.h"

using halvermonte::CFOwned;

namespace {

constexpr int32_t kTemperatureEvent = 15;
constexpr int32_t kPowerEvent = 25;

/// The first field of an event of the type.
constexpr int32_t firstField(int32_t eventType) { return eventType << 16; }

CFStringRef createKey(const char* characters) {
  return CFStringCreateWithCString(kCFAllocatorDefault, characters, CFStringGetSystemEncoding());
}

CFNumberRef createNumber(uint32_t number) {
  const auto signedNumber = static_cast<int32_t>(number);
  return CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &signedNumber);
}

/// The services that match at this moment, and the client that gave them. A service may answer no
/// longer than its client lives, so the client is released last.
class Services {
 public:
  explicit Services(CFDictionaryRef sensors)
      : client_(IOHIDEventSystemClientCreate(kCFAllocatorDefault)),
        list_(client_ ? copyList(client_.get(), sensors) : nullptr) {}

  /// NULL if there is no client, or the event system has no list.
  CFArrayRef list() const { return list_.get(); }

 private:
  static CFArrayRef copyList(IOHIDEventSystemClientRef client, CFDictionaryRef sensors) {
    IOHIDEventSystemClientSetMatching(client, sensors);
    return IOHIDEventSystemClientCopyServices(client);
  }

  CFOwned<IOHIDEventSystemClientRef> client_;
  CFOwned<CFArrayRef> list_;
};

CFMutableArrayRef createList() {
  return CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
}

/// Calls with each service in order, and adds what it creates to the list.
template <class Create>
void appendForEach(CFArrayRef services, CFMutableArrayRef list, const Create& create) {
  const CFIndex count = CFArrayGetCount(services);
  for (CFIndex i = 0; i < count; ++i) {
    const void* const service = CFArrayGetValueAtIndex(services, i);
    const CFOwned<CFTypeRef> entry(
        create(static_cast<IOHIDServiceClientRef>(const_cast<void*>(service))));
    CFArrayAppendValue(list, entry.get());
  }
}

CFTypeRef createName(IOHIDServiceClientRef service) {
  const CFTypeRef product = IOHIDServiceClientCopyProperty(service, CFSTR("Product"));
  return product != nullptr ? product : CFRetain(CFSTR("Unknown"));
}

/// A service without an event counts as 0.0, so that values stay aligned with names.
CFNumberRef createReading(IOHIDServiceClientRef service, int32_t eventType) {
  const CFOwned event(IOHIDServiceClientCopyEvent(service, eventType, nullptr, 0));
  const double reading = event ? IOHIDEventGetFloatValue(event.get(), firstField(eventType)) : 0.0;
  return CFNumberCreate(kCFAllocatorDefault, kCFNumberDoubleType, &reading);
}

/// The readings of all services; none without a list.
CFMutableArrayRef createReadings(const Services& services, int32_t eventType) {
  const CFMutableArrayRef readings = createList();
  if (services.list() != nullptr) {
    appendForEach(services.list(), readings,
                  [=](IOHIDServiceClientRef service) { return createReading(service, eventType); });
  }
  return readings;
}

}  // namespace

CFDictionaryRef matching(uint32_t page, uint32_t usage) {
  const CFOwned pageKey(createKey("PrimaryUsagePage"));
  const CFOwned usageKey(createKey("PrimaryUsage"));
  const CFOwned pageNumber(createNumber(page));
  const CFOwned usageNumber(createNumber(usage));
  const void* keys[] = {pageKey.get(), usageKey.get()};
  const void* values[] = {pageNumber.get(), usageNumber.get()};
  return CFDictionaryCreate(kCFAllocatorDefault, keys, values, 2, &kCFTypeDictionaryKeyCallBacks,
                            &kCFTypeDictionaryValueCallBacks);
}

CFMutableArrayRef getProductNames(CFDictionaryRef sensors) {
  const Services services(sensors);
  if (services.list() == nullptr) return nullptr;
  const CFMutableArrayRef names = createList();
  appendForEach(services.list(), names, createName);
  return names;
}

CFMutableArrayRef getPowerValues(CFDictionaryRef sensors) {
  const Services services(sensors);
  // A missing list of power sensors ends the process, while one of temperature sensors counts as
  // empty. Hosts tell the two apart by it.
  if (services.list() == nullptr) CFRelease(services.list());
  return createReadings(services, kPowerEvent);
}

CFMutableArrayRef getThermalValues(CFDictionaryRef sensors) {
  return createReadings(Services(sensors), kTemperatureEvent);
}
