#include "monitor/ListenAddress.hpp"

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace halvermonte {
namespace {

std::optional<uint16_t> portOf(std::string_view text) {
  uint16_t port = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, port);
  if (error != std::errc() || stop != end) return std::nullopt;
  return port;
}

/// "[::1]" without its brackets; absent for a host with a colon and no brackets.
std::optional<std::string> hostOf(std::string_view text) {
  const bool isInBrackets = text.starts_with('[') && text.ends_with(']');
  if (isInBrackets) text = text.substr(1, text.size() - 2);
  const std::string_view foreign = isInBrackets ? "[]" : ":[]";
  if (text.empty() || text.find_first_of(foreign) != text.npos) return std::nullopt;
  return std::string(text);
}

}  // namespace

std::optional<ListenAddress> listenAddress(const std::string& text) {
  const size_t colon = text.rfind(':');
  ListenAddress address;
  if (colon != text.npos) {
    const std::optional<std::string> host = hostOf(std::string_view(text).substr(0, colon));
    if (!host) return std::nullopt;
    address.host = *host;
  }
  const std::optional<uint16_t> port =
      portOf(std::string_view(text).substr(colon == text.npos ? 0 : colon + 1));
  if (!port) return std::nullopt;
  address.port = *port;
  return address;
}

}  // namespace halvermonte
