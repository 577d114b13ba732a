#include "monitor/Failure.hpp"
#include "monitor/live/LiveView.hpp"

namespace halvermonte {

bool canShowLive(const Output& /*output*/) { return false; }

void showLive(const Options& /*options*/, const Output& /*output*/) {
  throw Failure(
      "--live: this build has no live view; install libncurses-dev and build with "
      "HALVERMONTE_MONITOR_LIVE=ON");
}

}  // namespace halvermonte
