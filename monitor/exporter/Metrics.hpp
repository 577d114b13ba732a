// A pass in the text format of Prometheus (docs/metrics.md).
#pragma once

#include <string>

#include "monitor/PassView.hpp"
#include "monitor/exporter/PassCounts.hpp"
#include "monitor/exporter/SensorIds.hpp"

namespace halvermonte {

/// REQUIRES: `ids` are those of the view.
std::string metricsText(const PassView& view, const SensorIds& ids, const PassCounts& counts);

}  // namespace halvermonte
