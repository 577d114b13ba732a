#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <variant>

#include "halvermonte/Values.hpp"
#include "platform/ASCII.hpp"
#include "platform/Conversions.hpp"
#include "platform/portable/Objects.hpp"

using halvermonte::truncated;
using halvermonte::portable::Object;
using halvermonte::portable::ObjectKind;
using halvermonte::portable::objectOf;
using halvermonte::portable::refuse;

const CFArrayCallBacks kCFTypeArrayCallBacks = {0};
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {0};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {0};

namespace {

const Object& liveObject(CFTypeRef object, const char* call) {
  if (object == nullptr) std::abort();
  const auto& live = *static_cast<const Object*>(object);
  if (live.kind() == ObjectKind::ended) refuse(call, "a live object");
  return live;
}

/// Whether a container made with the callbacks retains: with the platform's own it does, without
/// any it does not, and there are no others here.
template <class CallBacks>
bool retains(const CallBacks* callBacks, const CallBacks& platforms, const char* call) {
  if (callBacks != nullptr && callBacks != &platforms) refuse(call, "the platform's callbacks");
  return callBacks != nullptr;
}

}  // namespace

CFTypeRef CFRetain(CFTypeRef object) {
  liveObject(object, "CFRetain").retain();
  return object;
}

void CFRelease(CFTypeRef object) { liveObject(object, "CFRelease").release(); }

CFStringEncoding CFStringGetSystemEncoding() { return kCFStringEncodingMacRoman; }

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* characters,
                                      CFStringEncoding encoding) {
  switch (encoding) {
    case kCFStringEncodingMacRoman:
      return halvermonte::isASCII(characters) ? new __CFString(characters) : nullptr;
    case kCFStringEncodingUTF8:
      return halvermonte::Text::fromUTF8(characters) ? new __CFString(characters) : nullptr;
    default:
      return nullptr;
  }
}

CFStringRef CFStringMakeConstantString_(const char* characters) {
  static std::mutex lock;
  static std::map<std::string, CFStringRef> constants;
  std::lock_guard guard(lock);
  CFStringRef& constant = constants[characters];
  if (constant == nullptr) constant = new __CFString(characters, Object::Life::constant);
  return constant;
}

CFIndex CFStringGetLength(CFStringRef text) {
  return static_cast<CFIndex>(objectOf<__CFString>(text, "CFStringGetLength").characters.size());
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) { return length; }

CFIndex CFStringGetBytes(CFStringRef text, CFRange range, CFStringEncoding encoding, uint8_t,
                         Boolean, uint8_t* buffer, CFIndex size, CFIndex* usedSize) {
  const std::string& characters = objectOf<__CFString>(text, "CFStringGetBytes").characters;
  const auto length = static_cast<CFIndex>(characters.size());
  if (range.location != 0 || range.length != length || encoding != kCFStringEncodingUTF8) {
    refuse("CFStringGetBytes", "the whole text, as UTF-8");
  }
  *usedSize = 0;
  if (size < length) return 0;
  std::memcpy(buffer, characters.data(), characters.size());
  *usedSize = length;
  return length;
}

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
  switch (type) {
    case kCFNumberSInt32Type:
      return new __CFNumber(type, int64_t{*static_cast<const int32_t*>(value)});
    case kCFNumberSInt64Type:
      return new __CFNumber(type, *static_cast<const int64_t*>(value));
    case kCFNumberDoubleType:
      return new __CFNumber(type, *static_cast<const double*>(value));
    default:
      return nullptr;
  }
}

namespace {

/// Integers that do not fit keep their low bits; floats are truncated.
template <class Target>
Boolean storeNumber(const std::variant<int64_t, double>& number, void* value) {
  const Target converted = std::visit(
      [](auto source) {
        if constexpr (std::is_same_v<decltype(source), double> && std::is_integral_v<Target>) {
          return truncated<Target>(source);
        } else {
          return static_cast<Target>(source);
        }
      },
      number);
  std::memcpy(value, &converted, sizeof converted);
  // A long double holds every value of both.
  return std::visit(
      [&](auto source) {
        return static_cast<long double>(converted) == static_cast<long double>(source);
      },
      number);
}

}  // namespace

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
  const auto& content = objectOf<__CFNumber>(number, "CFNumberGetValue").value;
  switch (type) {
    case kCFNumberSInt32Type:
      return storeNumber<int32_t>(content, value);
    case kCFNumberSInt64Type:
      return storeNumber<int64_t>(content, value);
    case kCFNumberDoubleType:
      return storeNumber<double>(content, value);
    default:
      return 0;
  }
}

CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef, CFIndex, const CFArrayCallBacks* callBacks) {
  return new __CFArray(retains(callBacks, kCFTypeArrayCallBacks, "CFArrayCreateMutable"));
}

void CFArrayAppendValue(CFMutableArrayRef array, const void* value) {
  objectOf<__CFArray>(array, "CFArrayAppendValue").add(value);
}

CFIndex CFArrayGetCount(CFArrayRef array) {
  return static_cast<CFIndex>(objectOf<__CFArray>(array, "CFArrayGetCount").elements.size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
  const auto& elements = objectOf<__CFArray>(array, "CFArrayGetValueAtIndex").elements;
  if (static_cast<size_t>(index) >= elements.size()) {
    refuse("CFArrayGetValueAtIndex", "an index within the array");
  }
  return elements[static_cast<size_t>(index)];
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values,
                                   CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
  constexpr const char* kCall = "CFDictionaryCreate";
  auto* const dictionary =
      new __CFDictionary(retains(keyCallBacks, kCFTypeDictionaryKeyCallBacks, kCall),
                         retains(valueCallBacks, kCFTypeDictionaryValueCallBacks, kCall));
  for (CFIndex i = 0; i < count; ++i) {
    dictionary->add(&objectOf<__CFString>(keys[i], kCall), values[i]);
  }
  return dictionary;
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary) {
  const auto& entries = objectOf<__CFDictionary>(dictionary, "CFDictionaryGetCount").entries;
  return static_cast<CFIndex>(entries.size());
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
  constexpr const char* kCall = "CFDictionaryGetValue";
  const auto& map = objectOf<__CFDictionary>(dictionary, kCall);
  const auto& wanted = objectOf<__CFString>(key, kCall);
  const auto found = std::ranges::find_if(map.entries, [&](const __CFDictionary::Entry& entry) {
    return map.retainsKeys ? entry.key->characters == wanted.characters : entry.key == &wanted;
  });
  return found != map.entries.end() ? found->value : nullptr;
}
