// In place of the exporter in a build without it.
#include "monitor/Failure.hpp"
#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/exporter/Exporter.hpp"

namespace halvermonte {

void serve(Sampling&, const Options&) {
  throw Failure(
      "--listen: built without the exporter; install libmicrohttpd-dev and prometheus-cpp-dev, and "
      "build with -DHALVERMONTE_MONITOR_EXPORTER=ON");
}

}  // namespace halvermonte
