// IOKit's main port, which every matching call takes.
#pragma once

#include <IOKit/IOKitLib.h>

#include "platform/AnsweredBy.hpp"

namespace halvermonte {
inline namespace HALVERMONTE_PLATFORM {

/// The port, or MACH_PORT_NULL if IOKit has none. IOMasterPort is deprecated from macOS 12.0 on,
/// and its successor is missing from older ones: the old name is there on all of them.
inline mach_port_t mainPort(mach_port_t bootstrapPort) {
  mach_port_t port = MACH_PORT_NULL;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  IOMasterPort(bootstrapPort, &port);
#pragma GCC diagnostic pop
  return port;
}

}  // namespace HALVERMONTE_PLATFORM
}  // namespace halvermonte
