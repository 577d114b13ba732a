#include "engine/CFConversions.hpp"
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace halvermonte {
namespace {

template <class Convert>
Array converted(CFArrayRef list, const Convert& convert) {
  const CFIndex count = CFArrayGetCount(list);
  std::vector<Value> values;
  values.reserve(static_cast<size_t>(count));
  for (CFIndex i = 0; i < count; ++i) values.push_back(convert(CFArrayGetValueAtIndex(list, i)));
  return Array(std::move(values));
}

}  // namespace

void copyCharacters(CFStringRef text, std::string& buffer) {
  const CFIndex length = CFStringGetLength(text);
  const CFIndex room = CFStringGetMaximumSizeForEncoding(length, kCFStringEncodingUTF8);
  CFIndex used = 0;
  buffer.resize(static_cast<size_t>(room));
  CFStringGetBytes(text, CFRange{0, length}, kCFStringEncodingUTF8, 0, 0,
                   reinterpret_cast<uint8_t*>(buffer.data()), room, &used);
  buffer.resize(static_cast<size_t>(used));
}

double doubleOf(CFNumberRef number) {
  double value = 0;
  CFNumberGetValue(number, kCFNumberDoubleType, &value);
  return value;
}

Array textsOf(CFArrayRef list) {
  if (list == nullptr) return {};
  std::string characters;
  return converted(list, [&](const void* element) {
    copyCharacters(static_cast<CFStringRef>(element), characters);
    return Text(characters);
  });
}

Array numbersOf(CFArrayRef list) {
  return converted(list, [](const void* element) {
    return Number::ofFloat64(doubleOf(static_cast<CFNumberRef>(element)));
  });
}

}  // namespace halvermonte
