#include "halvermonte/HIDSensors.h"

#include <IOKit/hidsystem/IOHIDServiceClient.h>

#include <cstdint>

#include "platform/CFOwned.hpp"
#include "platform/HIDServiceList.hpp"
#include "platform/IOHIDEventSystem.h"

using halvermonte::CFOwned;
using halvermonte::firstField;
using halvermonte::HIDServiceList;

namespace {

CFMutableArrayRef createList() {
  return CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
}

/// Calls with each service in order, and adds what it creates to the list.
template <class Create>
void appendForEach(const HIDServiceList& services, CFMutableArrayRef list, const Create& create) {
  services.forEach([&](IOHIDServiceClientRef service) {
    const CFOwned<CFTypeRef> entry(create(service));
    CFArrayAppendValue(list, entry.get());
  });
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
CFMutableArrayRef createReadings(const HIDServiceList& services, int32_t eventType) {
  const CFMutableArrayRef readings = createList();
  if (services.list() != nullptr) {
    appendForEach(services, readings,
                  [=](IOHIDServiceClientRef service) { return createReading(service, eventType); });
  }
  return readings;
}

}  // namespace

CFDictionaryRef matching(uint32_t page, uint32_t usage) {
  return halvermonte::createMatching(page, usage);
}

CFMutableArrayRef getProductNames(CFDictionaryRef sensors) {
  const HIDServiceList services(sensors);
  if (services.list() == nullptr) return nullptr;
  const CFMutableArrayRef names = createList();
  appendForEach(services, names, createName);
  return names;
}

CFMutableArrayRef getPowerValues(CFDictionaryRef sensors) {
  const HIDServiceList services(sensors);
  // A missing list of power sensors ends the process, while one of temperature sensors counts as
  // empty. Hosts tell the two apart by it.
  if (services.list() == nullptr) CFRelease(services.list());
  return createReadings(services, halvermonte::kPowerEvent);
}

CFMutableArrayRef getThermalValues(CFDictionaryRef sensors) {
  return createReadings(HIDServiceList(sensors), halvermonte::kTemperatureEvent);
}
