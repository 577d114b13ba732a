#include "monitor/exporter/Request.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace halvermonte {
namespace {

struct Route {
  std::string_view path;
  Resource resource;
  Resource stream;  ///< for a client that accepts a stream of events
};
constexpr Route kRoutes[] = {
    {"/", Resource::page, Resource::page},
    {"/metrics", Resource::metrics, Resource::metrics},
    {"/record", Resource::record, Resource::record},
    {"/records", Resource::recordStream, Resource::recordStream},
    {"/readings", Resource::readings, Resource::readingsStream},
    {"/health", Resource::health, Resource::health},
};

/// "localhost" of "localhost:80", and "::1" of "[::1]:80".
std::string_view withoutPort(std::string_view host) {
  if (!host.starts_with('[')) return host.substr(0, host.find(':'));
  const size_t end = host.find(']');
  return end == host.npos ? "" : host.substr(1, end - 1);
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool isLoopbackAddress(const std::string& text) {
  in_addr four{};
  if (inet_pton(AF_INET, text.c_str(), &four) == 1) return ntohl(four.s_addr) >> 24 == 127;
  in6_addr six{};
  return inet_pton(AF_INET6, text.c_str(), &six) == 1 && IN6_IS_ADDR_LOOPBACK(&six);
}

}  // namespace

bool isLoopbackHost(std::string_view host) {
  std::string name(withoutPort(host));
  std::ranges::transform(name, name.begin(), lower);
  return name == "localhost" || name.ends_with(".localhost") || isLoopbackAddress(name);
}

std::variant<Resource, Refusal> decide(const Request& request, Hosts hosts) {
  // Without the header it is not a browser's.
  if (hosts == Hosts::loopback && request.host && !isLoopbackHost(*request.host)) {
    return Refusal{421, "this server is for the computer that it runs on\n"};
  }
  if (request.method != "GET" && request.method != "HEAD") {
    return Refusal{405, "GET and HEAD only\n"};
  }
  if (request.hasBody) return Refusal{413, "a request has no body here\n"};
  const auto route = std::ranges::find(kRoutes, request.path, &Route::path);
  if (route == std::end(kRoutes)) return Refusal{404, "no such page; / is the first\n"};
  const bool wantsStream = request.accept.find("text/event-stream") != request.accept.npos;
  return wantsStream ? route->stream : route->resource;
}

}  // namespace halvermonte
