#include "monitor/exporter/SocketAddress.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <cstdint>

namespace halvermonte {
namespace {

const sockaddr_in6* asSix(const sockaddr& address) {
  return address.sa_family == AF_INET6 ? reinterpret_cast<const sockaddr_in6*>(&address) : nullptr;
}
const sockaddr_in& asFour(const sockaddr& address) {
  return reinterpret_cast<const sockaddr_in&>(address);
}

}  // namespace

std::string nameWithoutPort(const sockaddr& address) {
  char name[INET6_ADDRSTRLEN];
  const sockaddr_in6* const six = asSix(address);
  const void* const bytes = six != nullptr ? static_cast<const void*>(&six->sin6_addr)
                                           : static_cast<const void*>(&asFour(address).sin_addr);
  return inet_ntop(address.sa_family, bytes, name, sizeof name) != nullptr ? name : "";
}

std::string nameWithPort(const sockaddr& address) {
  const sockaddr_in6* const six = asSix(address);
  const std::string name = nameWithoutPort(address);
  const uint16_t port = ntohs(six != nullptr ? six->sin6_port : asFour(address).sin_port);
  return (six != nullptr ? "[" + name + "]" : name) + ":" + std::to_string(port);
}

bool isLoopback(const sockaddr& address) {
  const sockaddr_in6* const six = asSix(address);
  if (six == nullptr) return ntohl(asFour(address).sin_addr.s_addr) >> 24 == 127;
  return IN6_IS_ADDR_LOOPBACK(&six->sin6_addr);
}

}  // namespace halvermonte
