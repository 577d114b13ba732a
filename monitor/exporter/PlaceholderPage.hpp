// The first page.
#pragma once

#include <string_view>

namespace halvermonte {

/// A document that leads to the others.
constexpr std::string_view pageText() {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<title>Halvermonte</title>\n"
         "<h1>Halvermonte</h1>\n"
         "<p><a href=\"/metrics\">Metrics</a>, <a href=\"/record\">record</a>, "
         "<a href=\"/health\">health</a>\n";
}

/// The value of its Content-Security-Policy header.
constexpr const char* pagePolicy() {
  return "default-src 'none'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";
}

}  // namespace halvermonte
