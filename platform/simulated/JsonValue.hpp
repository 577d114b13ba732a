// A JSON text as a tree, its members in the order of the text.
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

  /// An integer is what is written without fraction and exponent and fits 64 bits with a sign;
  /// every other number is a double.
  std::variant<std::nullptr_t, bool, int64_t, double, std::string, Array, Object> content;
};

struct JsonMember {
  std::string name;
  JsonValue value;
};

/// Containers nest no deeper.
inline constexpr size_t kDeepestJson = 32;

/// Reads one JSON text (RFC 8259, UTF-8) with nothing behind it. Throws MachineFileError where it
/// is none, names a member of an object twice, nests too deep or has a number beyond a double.
JsonValue parseJson(std::string_view text, const std::string& fileName);

/// Appends one step to a JSON pointer. Control characters are written as in JSON, so that a pointer
/// stays on its line.
void appendToPointer(std::string& pointer, std::string_view token);

}  // namespace halvermonte
