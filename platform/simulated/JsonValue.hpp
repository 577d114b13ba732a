// A JSON text as a tree. Members keep their order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
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

/// What a text may have at most, so that none takes much more memory than its own size.
struct JsonLimits {
  size_t levels = 32;       ///< of nested containers
  size_t entries = 500000;  ///< of one container
  size_t values = 3000000;
};

/// Takes the element of an array, and its index there.
using TakeElement = std::function<void(size_t, const JsonValue&)>;

/// Parses a JSON text (RFC 8259, UTF-8). Throws MachineFileError if the text is not JSON, gives a
/// member of an object twice, exceeds a limit or has a number beyond the range of a double.
///
/// If the root's member `taken` is an array, `take` gets each of its elements as soon as it is
/// read, and the tree is without them.
JsonValue parseJson(std::string_view text, const std::string& fileName, std::string_view taken = "",
                    const TakeElement& take = nullptr, const JsonLimits& limits = {});

/// Appends one step to a JSON pointer. Control characters are escaped as in JSON, so that a pointer
/// stays on one line.
void appendToPointer(std::string& pointer, std::string_view token);

}  // namespace halvermonte
