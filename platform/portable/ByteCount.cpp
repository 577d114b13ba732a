// Byte counts for display. Both styles count in thousands here.
#include <cstdint>
#include <iterator>
#include <string>

#include "halvermonte/CountTexts.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {
namespace {

struct Unit {
  uint64_t bytes;
  int fractionDigits;  ///< at most
  const char* name;
};
constexpr Unit kUnits[] = {
    {1'000, 0, "KB"},
    {1'000'000, 1, "MB"},
    {1'000'000'000, 2, "GB"},
    {1'000'000'000'000, 2, "TB"},
    {1'000'000'000'000'000, 2, "PB"},
    {1'000'000'000'000'000'000, 2, "EB"},
};

constexpr uint64_t powerOfTen(int exponent) {
  return exponent == 0 ? 1 : 10 * powerOfTen(exponent - 1);
}

/// The count in steps of the unit's last shown digit, half to even.
uint64_t roundedSteps(uint64_t bytes, const Unit& unit) {
  const uint64_t step = unit.bytes / powerOfTen(unit.fractionDigits);
  const uint64_t whole = bytes / step;
  const uint64_t twiceRest = bytes % step * 2;
  const bool up = twiceRest > step || (twiceRest == step && whole % 2 == 1);
  return up ? whole + 1 : whole;
}

std::string decimalText(uint64_t steps, int fractionDigits) {
  const uint64_t one = powerOfTen(fractionDigits);
  std::string text = std::to_string(steps / one);
  if (steps % one == 0) return text;
  text += '.' + std::to_string(steps % one + one).substr(1);
  text.erase(text.find_last_not_of('0') + 1);
  return text;
}

}  // namespace

std::string byteCountText(uint64_t bytes) {
  if (bytes == 0) return "Zero KB";
  if (bytes == 1) return "1 byte";
  if (bytes < 1000) return std::to_string(bytes) + " bytes";
  for (const Unit& unit : kUnits) {
    const uint64_t steps = roundedSteps(bytes, unit);
    // What rounds up to a thousand of its unit is shown as one of the next.
    const bool fits = steps < 1000 * powerOfTen(unit.fractionDigits);
    if (fits || &unit == std::end(kUnits) - 1) {
      return decimalText(steps, unit.fractionDigits) + ' ' + unit.name;
    }
  }
  return {};
}

std::string foundation::byteCountText(int64_t bytes, ByteCountStyle /*style*/) {
  if (bytes >= 0) return halvermonte::byteCountText(static_cast<uint64_t>(bytes));
  return '-' + halvermonte::byteCountText(0 - static_cast<uint64_t>(bytes));
}

}  // namespace halvermonte
