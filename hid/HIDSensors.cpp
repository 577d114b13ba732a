#include "hid/HIDSensors.h"

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

/// The services that match at this moment; NULL where the event system has no list.
CFArrayRef copyServices(CFDictionaryRef sensors) {
  const CFOwned client(IOHIDEventSystemClientCreate(kCFAllocatorDefault));
  IOHIDEventSystemClientSetMatching(client.get(), sensors);
  return IOHIDEventSystemClientCopyServices(client.get());
}

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
  const CFOwned event(IOHIDServiceClientCopyEvent(service, eventType, 0, 0));
  const double reading = event ? IOHIDEventGetFloatValue(event.get(), firstField(eventType)) : 0.0;
  return CFNumberCreate(kCFAllocatorDefault, kCFNumberDoubleType, &reading);
}

void appendReadings(CFArrayRef services, CFMutableArrayRef list, int32_t eventType) {
  appendForEach(services, list,
                [=](IOHIDServiceClientRef service) { return createReading(service, eventType); });
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
  const CFOwned services(copyServices(sensors));
  if (!services) return nullptr;
  const CFMutableArrayRef names = createList();
  appendForEach(services.get(), names, createName);
  return names;
}

CFMutableArrayRef getPowerValues(CFDictionaryRef sensors) {
  const CFArrayRef services = copyServices(sensors);
  const CFMutableArrayRef readings = createList();
  if (services != nullptr) appendReadings(services, readings, kPowerEvent);
  // Unchecked on purpose: a missing list of power sensors ends the process, while one of
  // temperature sensors counts as empty. Hosts tell the two apart by it.
  CFRelease(services);
  return readings;
}

CFMutableArrayRef getThermalValues(CFDictionaryRef sensors) {
  const CFOwned services(copyServices(sensors));
  const CFMutableArrayRef readings = createList();
  if (services) appendReadings(services.get(), readings, kTemperatureEvent);
  return readings;
}
