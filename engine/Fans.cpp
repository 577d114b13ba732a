#include "engine/Fans.hpp"

#include <array>

#include "engine/NextStepEncoding.hpp"
#include "halvermonte/SMC.h"
#include "platform/Conversions.hpp"

namespace halvermonte {

std::string fanName(int fan, uint32_t conn) {
  std::array<char, 13> name{};  // stays NUL-terminated: at most 12 are written
  if (SMCGetFanName(fan, name.data(), conn) == 0) return "Fan " + std::to_string(fan + 1);
  return decodedNextStep(name.data());
}

TextPair readFans(uint32_t conn) {
  TextPair fans;
  const auto count = static_cast<int32_t>(SMCGetFanNumber("FNum", conn));
  for (int32_t fan = 0; fan < count; ++fan) {
    const std::string name = fanName(fan, conn);
    const auto speed = truncated<int32_t>(SMCGetFanSpeed(fan, conn));
    if (speed >= 0) fans.append(name, speed);
  }
  if (fans.values.empty()) fans.names = "n/a";
  return fans;
}

}  // namespace halvermonte
