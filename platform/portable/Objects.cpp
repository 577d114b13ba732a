#include "platform/portable/Objects.hpp"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "platform/portable/LiveCounters.hpp"

namespace halvermonte::portable {
namespace {

std::atomic<size_t> liveObjectCount{0};

/// The objects that ended last. Each takes the place of an older one, whose memory is freed.
constexpr size_t kEndedObjects = 512;
std::array<std::atomic<const Object*>, kEndedObjects> endedObjects;
std::atomic<size_t> endings{0};

void keepForAWhile(const Object* object) {
  const size_t place = endings.fetch_add(1, std::memory_order_relaxed) % kEndedObjects;
  delete endedObjects[place].exchange(object, std::memory_order_acq_rel);
}

}  // namespace

size_t liveObjects() { return liveObjectCount.load(); }

void refuse(const char* call, const char* expected) {
  std::fprintf(stderr, "%s: expected %s\n", call, expected);
  std::abort();
}

Object::Object(ObjectKind kind, Life life) : kind_(kind), life_(life) {
  if (life_ == Life::counted) ++liveObjectCount;
}

Object::~Object() = default;

void Object::retain() const { references_.fetch_add(1, std::memory_order_relaxed); }

void Object::release() const {
  if (life_ == Life::constant) return;
  if (references_.fetch_sub(1, std::memory_order_acq_rel) > 1) return;
  const_cast<Object*>(this)->end();
  kind_ = ObjectKind::ended;
  --liveObjectCount;
  keepForAWhile(this);
}

}  // namespace halvermonte::portable

void __CFArray::add(CFTypeRef element) {
  elements.push_back(retains ? CFRetain(element) : element);
}

void __CFArray::end() {
  if (retains) {
    for (CFTypeRef element : elements) CFRelease(element);
  }
  elements = {};
}

void __CFDictionary::add(CFStringRef key, CFTypeRef value) {
  if (retainsKeys) CFRetain(key);
  if (retainsValues) CFRetain(value);
  entries.push_back({key, value});
}

void __CFDictionary::end() {
  for (const Entry& entry : entries) {
    if (retainsKeys) CFRelease(entry.key);
    if (retainsValues) CFRelease(entry.value);
  }
  entries = {};
}
