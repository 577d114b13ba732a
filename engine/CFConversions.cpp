#include "engine/CFConversions.hpp"

#include <cstddef>
#include <string>
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
