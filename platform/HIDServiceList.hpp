// The HID event system's services of one kind of sensor, and the events that they give.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/hidsystem/IOHIDEventSystemClient.h>
#include <IOKit/hidsystem/IOHIDServiceClient.h>

#include <cstdint>

#include "platform/AnsweredBy.hpp"
#include "platform/CFOwned.hpp"
#include "platform/IOHIDEventSystem.h"

namespace halvermonte {

inline constexpr int32_t kTemperatureEvent = 15;
inline constexpr int32_t kPowerEvent = 25;

/// The first field of an event of the type.
constexpr int32_t firstField(int32_t eventType) { return eventType << 16; }

inline namespace HALVERMONTE_PLATFORM {

/// A matching dictionary with the entries "PrimaryUsagePage" and "PrimaryUsage". The caller
/// releases it.
inline CFDictionaryRef createMatching(uint32_t page, uint32_t usage) {
  const auto createKey = [](const char* characters) {
    return CFStringCreateWithCString(kCFAllocatorDefault, characters, CFStringGetSystemEncoding());
  };
  const auto createNumber = [](uint32_t number) {
    const auto signedNumber = static_cast<int32_t>(number);
    return CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &signedNumber);
  };
  const CFOwned pageKey(createKey("PrimaryUsagePage"));
  const CFOwned usageKey(createKey("PrimaryUsage"));
  const CFOwned pageNumber(createNumber(page));
  const CFOwned usageNumber(createNumber(usage));
  const void* keys[] = {pageKey.get(), usageKey.get()};
  const void* values[] = {pageNumber.get(), usageNumber.get()};
  return CFDictionaryCreate(kCFAllocatorDefault, keys, values, 2, &kCFTypeDictionaryKeyCallBacks,
                            &kCFTypeDictionaryValueCallBacks);
}

/// The services that match at this moment, and the client that gave them. A service may answer no
/// longer than its client lives, so the client is released last.
class HIDServiceList {
 public:
  explicit HIDServiceList(CFDictionaryRef sensors)
      : client_(IOHIDEventSystemClientCreate(kCFAllocatorDefault)),
        list_(client_ ? copyList(client_.get(), sensors) : nullptr) {}

  /// NULL if there is no client, or the event system has no list.
  CFArrayRef list() const { return list_.get(); }

  /// Calls with each service in order. REQUIRES: there is a list.
  template <class Call>
  void forEach(const Call& call) const {
    const CFIndex count = CFArrayGetCount(list());
    for (CFIndex i = 0; i < count; ++i) {
      const void* const service = CFArrayGetValueAtIndex(list(), i);
      call(static_cast<IOHIDServiceClientRef>(const_cast<void*>(service)));
    }
  }

 private:
  static CFArrayRef copyList(IOHIDEventSystemClientRef client, CFDictionaryRef sensors) {
    IOHIDEventSystemClientSetMatching(client, sensors);
    return IOHIDEventSystemClientCopyServices(client);
  }

  CFOwned<IOHIDEventSystemClientRef> client_;
  CFOwned<CFArrayRef> list_;
};

}  // namespace HALVERMONTE_PLATFORM
}  // namespace halvermonte
