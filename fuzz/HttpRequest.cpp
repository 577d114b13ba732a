// What clients of the exporter send: only reading requests that name this computer are answered.
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>

#include "fuzz/Passes.hpp"
#include "monitor/exporter/Request.hpp"

using namespace halvermonte;

namespace {

/// The bytes up to the next line feed, which it takes off the text.
std::string_view takeLine(std::string_view& text) {
  const size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == text.npos ? text.size() : end + 1);
  return line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  Request request{.method = takeLine(text), .path = takeLine(text)};
  request.host = takeLine(text);
  request.accept = text;
  const auto decision = decide(request, Hosts::loopback);
  if (std::holds_alternative<Resource>(decision)) {
    require(request.method == "GET" || request.method == "HEAD", "only reading is allowed");
    require(isLoopbackHost(*request.host), "the host is this computer");
    require(std::holds_alternative<Resource>(decide(request, Hosts::any)), "fewer rules allow it");
  } else {
    require(std::get<Refusal>(decision).status >= 400, "a refusal is an error");
  }
  request.hasBody = true;
  require(std::holds_alternative<Refusal>(decide(request, Hosts::any)), "a body is refused");
  return 0;
}
