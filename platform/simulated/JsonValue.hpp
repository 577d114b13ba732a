// A JSON text as a tree. Members keep their order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace halvermonte {

struct JsonMember;

struct JsonValue {
  using Array = std::vector<JsonValue>;
  using Object = std::vector<JsonMember>;

  /// A number is an integer if it is written without fraction and exponent and fits a signed 64-bit
  /// integer. Every other number is a double.
  std::variant<std::nullptr_t, bool, int64_t, double, std::string, Array, Object> content;
};

struct JsonMember {
  std::string name;
  JsonValue value;
};

/// The deepest nesting of containers.
inline constexpr size_t kDeepestJson = 32;

/// Parses a JSON text (RFC 8259, UTF-8). Throws MachineFileError if the text is not JSON, gives a
/// member of an object twice, nests too deep or has a number beyond the range of a double.
JsonValue parseJson(std::string_view text, const std::string& fileName);

/// Appends one step to a JSON pointer. Control characters are escaped as in JSON, so that a pointer
/// stays on one line.
void appendToPointer(std::string& pointer, std::string_view token);

}  // namespace halvermonte
