// The lists that a pass builds: entries of a name and a value, as two texts of equal line count.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace halvermonte {

struct TextPair {
  std::string names;   ///< a name and a line feed per entry
  std::string values;  ///< a decimal integer and a line feed per entry

  void append(std::string_view name, int32_t value) {
    names.append(name) += '\n';
    values.append(std::to_string(value)) += '\n';
  }
  /// True if the name stands anywhere in the names, also within another one.
  bool mentions(std::string_view name) const { return names.find(name) != std::string::npos; }
};

/// The temperatures of one pass, in whole degrees Celsius.
struct TemperatureLists {
  TextPair full;
  TextPair mini;
};

}  // namespace halvermonte
