// In place of the exporter in a build without it.
#include "monitor/Failure.hpp"
#include "monitor/Options.hpp"
#include "monitor/exporter/Exporter.hpp"

namespace halvermonte {

void serve(const Options& /*options*/) {
  throw Failure(
      "--listen: this build has no exporter; install libmicrohttpd-dev, prometheus-cpp-dev, "
      "libgnutls28-dev and libcrypt-dev, and build with HALVERMONTE_MONITOR_EXPORTER=ON");
}

}  // namespace halvermonte
