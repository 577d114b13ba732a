#include "monitor/exporter/ServedPass.hpp"

#include "monitor/exporter/Metrics.hpp"
#include "monitor/exporter/ReadingsJson.hpp"
#include "monitor/exporter/SensorIds.hpp"
#include "monitor/json/JsonWriter.hpp"

namespace halvermonte {

ServedPass ServedPasses::of(const PassView& view) {
  ++counts_.passes;
  if (view.exception) {
    ++counts_.errors;
  } else {
    counts_.lastGood = std::chrono::system_clock::now();
    lastGood_ = std::chrono::steady_clock::now();
  }
  const SensorIds ids = sensorIds(view);
  return {.metrics = metricsText(view, ids, counts_),
          .record = jsonLine(view),
          .readings = readingsJson(view, ids, interval_),
          .lastGood = lastGood_};
}

}  // namespace halvermonte
