// The record as JSON lines (docs/record-json.md): numbers and order do not depend on the locale.
#pragma once

#include <string>

#include "monitor/PassView.hpp"

namespace halvermonte {

/// One pass's line, line feed included: the record, or the reason if the pass ended in an
/// exception.
std::string jsonLine(const PassView& view);

}  // namespace halvermonte
