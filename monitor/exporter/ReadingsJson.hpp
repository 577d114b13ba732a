// A pass as JSON for the page: what it draws, and no more.
#pragma once

#include <chrono>
#include <string>

#include "monitor/PassView.hpp"
#include "monitor/exporter/SensorIds.hpp"

namespace halvermonte {

/// One object in one line, line feed included. REQUIRES: `ids` are those of the view.
std::string readingsJson(const PassView& view, const SensorIds& ids,
                         std::chrono::duration<double> interval);

}  // namespace halvermonte
