#include "platform/simulated/WaveReader.hpp"

#include <cmath>

namespace halvermonte {

Wave readWave(const JsonPlace& place) {
  place.expectOnly({"mean", "amplitude", "period", "phase"});
  Wave wave{.mean = place.required("mean").number(),
            .amplitude = place.required("amplitude").number(),
            .period = place.required("period").number()};
  if (const auto phase = place.find("phase")) wave.phase = phase->number();
  if (wave.period == 0) place.required("period").refuse("a number other than 0");
  if (!std::isfinite(wave.lowest()) || !std::isfinite(wave.highest())) {
    place.refuse("mean - amplitude and mean + amplitude within the range of a 64-bit float");
  }
  return wave;
}

}  // namespace halvermonte
