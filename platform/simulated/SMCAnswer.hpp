// The controller's answer for one key, and the encodings of data types.
#pragma once

#include <array>
#include <cstdint>
#include <variant>

#include "platform/simulated/Wave.hpp"

namespace halvermonte {

/// The data bytes of a reply. Bytes beyond the key's size are 0.
using SMCData = std::array<uint8_t, 32>;

/// How a data type stores numbers.
struct SMCEncoding {
  uint32_t type;
  double scale;  ///< the stored integer is value * scale, rounded to nearest, halves away from zero
  double least, greatest;  ///< of the stored number
  uint8_t size;            ///< in bytes, the most significant first
  bool isFloat;            ///< the value is stored as it is, as a native 32-bit float

  /// The encoding of the type. Null if the type does not hold numbers.
  static const SMCEncoding* ofType(uint32_t type);

  /// Whether the type can hold the value.
  bool holds(double value) const;
  /// REQUIRES: holds(value).
  SMCData encode(double value) const;

 private:
  double stored(double value) const;
};

/// A reading that moves, and its encoding.
struct SMCWave {
  Wave wave;
  const SMCEncoding* encoding;
};

struct SMCAnswer {
  uint32_t dataType = 0;
  uint32_t dataSize = 0;
  std::variant<SMCData, SMCWave> data;
  uint32_t infoCode = 0;
  uint32_t readCode = 0;
  uint8_t infoResult = 0;
  uint8_t readResult = 0;

  /// The data bytes when the clock shows `time`.
  SMCData bytesAt(double time) const;
};

}  // namespace halvermonte
