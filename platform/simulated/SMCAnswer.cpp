#include "platform/simulated/SMCAnswer.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>

#include "halvermonte/FourCharacterCode.hpp"

namespace halvermonte {
namespace {

constexpr double kLargestFloat = std::numeric_limits<float>::max();

// type, scale, least and greatest stored, size, whether a float
constexpr SMCEncoding kEncodings[] = {
    {fourCharacterCode("flt "), 1, -kLargestFloat, kLargestFloat, 4, true},
    {fourCharacterCode("sp78"), 256, -32768, 32767, 2, false},
    {fourCharacterCode("fpe2"), 4, 0, 65535, 2, false},
    {fourCharacterCode("ui8 "), 1, 0, 255, 1, false},
    {fourCharacterCode("ui16"), 1, 0, 65535, 2, false},
    {fourCharacterCode("ui32"), 1, 0, 4294967295.0, 4, false},
};

}  // namespace

const SMCEncoding* SMCEncoding::ofType(uint32_t type) {
  const auto* const found = std::find_if(std::begin(kEncodings), std::end(kEncodings),
                                         [&](const SMCEncoding& row) { return row.type == type; });
  return found == std::end(kEncodings) ? nullptr : found;
}

double SMCEncoding::stored(double value) const {
  return isFloat ? value : std::round(value * scale);
}

bool SMCEncoding::holds(double value) const {
  return stored(value) >= least && stored(value) <= greatest;
}

SMCData SMCEncoding::encode(double value) const {
  SMCData data{};
  if (isFloat) {
    const auto bytes = std::bit_cast<std::array<uint8_t, 4>>(static_cast<float>(value));
    std::copy(bytes.begin(), bytes.end(), data.begin());
    return data;
  }
  const auto bits = static_cast<uint64_t>(static_cast<int64_t>(stored(value)));
  for (int i = 0; i < size; ++i)
    data[static_cast<size_t>(i)] = static_cast<uint8_t>(bits >> 8 * (size - 1 - i));
  return data;
}

SMCData SMCAnswer::bytesAt(double time) const {
  if (const auto* bytes = std::get_if<SMCData>(&data)) return *bytes;
  const auto& [wave, encoding] = std::get<SMCWave>(data);
  return encoding->encode(wave.at(time));
}

}  // namespace halvermonte
