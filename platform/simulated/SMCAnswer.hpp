// What the controller answers for one key, and the encodings of its data types.
#pragma once

#include <array>
#include <cstdint>
#include <variant>

#include "platform/simulated/Wave.hpp"

namespace halvermonte {

/// The data bytes of a reply; those that a key does not have are 0.
using SMCData = std::array<uint8_t, 32>;

/// A data type that numbers can be written in.
struct SMCEncoding {
  uint32_t type;
  double scale;            ///< the stored integer is value * scale, rounded half away from zero
  double least, greatest;  ///< of what is stored
  uint8_t size;            ///< in bytes, the most significant first
  bool isFloat;            ///< stored is the value itself, as a native 32-bit float

  /// The encoding of the type; null where numbers have none.
  static const SMCEncoding* ofType(uint32_t type);

  /// Whether the type can hold the value.
  bool holds(double value) const;
  /// REQUIRES: holds(value).
  SMCData encode(double value) const;

 private:
  double stored(double value) const;
};

/// A reading that moves, and how it is written.
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
