// What a client asks for, and whether it gets it.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace halvermonte {

enum class Resource : uint8_t {
  page,
  metrics,
  record,
  recordStream,
  readings,
  readingsStream,
  health
};

struct Request {
  std::string_view method;
  std::string_view path;                                ///< without the query
  std::optional<std::string_view> host = std::nullopt;  ///< the Host header
  std::string_view accept = "";                         ///< the Accept header
  bool hasBody = false;                                 ///< or announces one
};

struct Refusal {
  unsigned status;
  std::string_view reason;  ///< constant characters: one line for the client
};

/// A server on a loopback address takes only requests that name such a host. A web site whose name
/// leads to this computer could read the answers otherwise, with the help of its visitor's browser.
enum class Hosts : uint8_t { any, loopback };

std::variant<Resource, Refusal> decide(const Request& request, Hosts hosts);

/// Whether the value of a Host header names this computer: "localhost", a name below it, or a
/// loopback address, each with or without a port.
bool isLoopbackHost(std::string_view host);

}  // namespace halvermonte
