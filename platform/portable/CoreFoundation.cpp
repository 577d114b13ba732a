#include <CoreFoundation/CoreFoundation.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>

#include "platform/Conversions.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "platform/portable/Objects.hpp"

namespace halvermonte::portable {
namespace {
std::atomic<size_t> liveObjectCount{0};
}  // namespace

size_t liveObjects() { return liveObjectCount.load(); }

Object::Object(Life life) : life_(life) {
  if (life_ == Life::counted) ++liveObjectCount;
}

Object::~Object() {
  if (life_ == Life::counted) --liveObjectCount;
}

void Object::retain() const { references_.fetch_add(1, std::memory_order_relaxed); }

void Object::release() const {
  if (life_ == Life::constant) return;
  if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

}  // namespace halvermonte::portable

using halvermonte::truncated;
using halvermonte::portable::Object;
using halvermonte::portable::Retained;

const CFArrayCallBacks kCFTypeArrayCallBacks = {0};
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {0};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {0};

CFTypeRef CFRetain(CFTypeRef object) {
  if (object == nullptr) std::abort();
  static_cast<const Object*>(object)->retain();
  return object;
}

void CFRelease(CFTypeRef object) {
  if (object == nullptr) std::abort();
  static_cast<const Object*>(object)->release();
}

CFStringEncoding CFStringGetSystemEncoding() { return kCFStringEncodingMacRoman; }

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* characters, CFStringEncoding) {
  return new __CFString(characters);
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
  return static_cast<CFIndex>(text->characters.size());
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) { return length; }

CFIndex CFStringGetBytes(CFStringRef text, CFRange, CFStringEncoding, uint8_t, Boolean,
                         uint8_t* buffer, CFIndex size, CFIndex* usedSize) {
  const std::string& characters = text->characters;
  *usedSize = 0;
  if (size < CFStringGetLength(text)) return 0;
  std::memcpy(buffer, characters.data(), characters.size());
  *usedSize = CFStringGetLength(text);
  return *usedSize;
}

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
  switch (type) {
    case kCFNumberSInt32Type:
      return new __CFNumber(int64_t{*static_cast<const int32_t*>(value)});
    case kCFNumberSInt64Type:
      return new __CFNumber(*static_cast<const int64_t*>(value));
    case kCFNumberDoubleType:
      return new __CFNumber(*static_cast<const double*>(value));
    default:
      return nullptr;
  }
}

namespace {

/// Integers keep their low bits where they do not fit; floats are truncated.
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
  switch (type) {
    case kCFNumberSInt32Type:
      return storeNumber<int32_t>(number->value, value);
    case kCFNumberSInt64Type:
      return storeNumber<int64_t>(number->value, value);
    case kCFNumberDoubleType:
      return storeNumber<double>(number->value, value);
    default:
      return 0;
  }
}

CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef, CFIndex, const CFArrayCallBacks*) {
  return new __CFArray;
}

void CFArrayAppendValue(CFMutableArrayRef array, const void* value) {
  array->elements.emplace_back(value);
}

CFIndex CFArrayGetCount(CFArrayRef array) { return static_cast<CFIndex>(array->elements.size()); }

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
  return array->elements[static_cast<size_t>(index)].get();
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values,
                                   CFIndex count, const CFDictionaryKeyCallBacks*,
                                   const CFDictionaryValueCallBacks*) {
  auto* dictionary = new __CFDictionary;
  for (CFIndex i = 0; i < count; ++i) {
    dictionary->entries.push_back({Retained(keys[i]), Retained(values[i])});
  }
  return dictionary;
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary) {
  return static_cast<CFIndex>(dictionary->entries.size());
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
  const std::string& wanted = static_cast<CFStringRef>(key)->characters;
  for (const __CFDictionary::Entry& entry : dictionary->entries) {
    if (static_cast<CFStringRef>(entry.key.get())->characters == wanted) return entry.value.get();
  }
  return nullptr;
}
