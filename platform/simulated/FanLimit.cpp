#include "platform/simulated/FanLimit.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <variant>

#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/MachineFileError.hpp"
#include "platform/FanCount.hpp"
#include "platform/simulated/SMCAnswer.hpp"
#include "platform/simulated/SMCReader.hpp"

namespace halvermonte {
namespace {

/// The most that the wave may count in its course. Of the four bytes that can hold a number, one is
/// the count.
uint32_t mostFans(const SMCWave& wave, uint32_t dataSize) {
  const SMCEncoding& encoding = *wave.encoding;
  const SMCData lowest = encoding.encode(wave.wave.lowest());
  const SMCData highest = encoding.encode(wave.wave.highest());
  const size_t counting = (dataSize - 1) % 4;
  if (static_cast<int32_t>(dataSize) <= 0 || counting >= encoding.size) return 0;
  // While a higher byte moves, the count runs through every value.
  const auto higher = encoding.isFloat ? lowest.size() : counting;
  if (!std::equal(lowest.begin(), lowest.begin() + static_cast<std::ptrdiff_t>(higher),
                  highest.begin())) {
    return UINT8_MAX;
  }
  return std::max(fanCount(dataSize, lowest), fanCount(dataSize, highest));
}

uint32_t mostFans(const SMCAnswer& answer) {
  const bool isRead = answer.infoCode == kCodeSuccess && answer.readCode == kCodeSuccess &&
                      answer.infoResult == 0 && answer.readResult == 0;
  if (!isRead) return 0;
  if (const auto* wave = std::get_if<SMCWave>(&answer.data))
    return mostFans(*wave, answer.dataSize);
  return fanCount(answer.dataSize, std::get<SMCData>(answer.data));
}

/// Whether a pass can open the controller.
bool opens(const SimulatedController& controller) {
  const ControllerState state = controller.state();
  const bool isThere = state == ControllerState::present || state == ControllerState::refused;
  return isThere && controller.openCode() == kCodeSuccess;
}

}  // namespace

void FanLimit::check(const MachineTick& tick, const JsonPlace& place) {
  controller_.apply(tick.smc);
  if (tick.smc.keys.contains(kFanCountKey)) answerPlace_ = pointerToKey(place, kFanCountKey);
  const SMCAnswer* const answer = controller_.find(kFanCountKey);
  if (answer == nullptr || !opens(controller_)) return;
  if (mostFans(*answer) <= kMostFans) return;
  throw MachineFileError(
      place.fileName(), answerPlace_,
      "at most " + std::to_string(kMostFans) + " fans, as an eleventh ends the process");
}

}  // namespace halvermonte
