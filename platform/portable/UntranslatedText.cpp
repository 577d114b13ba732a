// The host's texts where there is no gettext: each is its key.
#include <string>

#include "platform/Foundation.hpp"

namespace halvermonte {

std::string foundation::bundleText(const char* key) { return key; }

}  // namespace halvermonte
