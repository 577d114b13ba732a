// A pass as one thread hands it to another.
#pragma once

#include <memory>
#include <string>

#include "monitor/PassView.hpp"
#include "monitor/live/Origins.hpp"

namespace halvermonte {

struct Snapshot {
  PassView view;  ///< without the record, which the next pass changes
  std::shared_ptr<const Origins> origins;
  std::string hint;  ///< what the computer does not show, and why; "" if there is nothing to say
};

}  // namespace halvermonte
