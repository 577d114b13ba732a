// The page that shows the readings in a browser.
#pragma once

#include <string_view>

namespace halvermonte {

/// One HTML document in UTF-8, with its style and its script inside.
extern const std::string_view kPage;

/// The value of the page's Content-Security-Policy header.
extern const std::string_view kPagePolicy;

}  // namespace halvermonte
