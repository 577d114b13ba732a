// How much of the portable platform is alive in this process, so that tests can prove that a pass
// leaks nothing. Exact when no other thread is inside a platform call.
#pragma once

#include <cstddef>

namespace halvermonte::portable {

/// CoreFoundation and HID objects not yet released.
size_t liveObjects();
/// IOKit handles (services, iterators, connections) not yet released or closed.
size_t liveHandles();

}  // namespace halvermonte::portable
