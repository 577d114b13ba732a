#include "monitor/exporter/ListenSocket.hpp"

#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "monitor/Failure.hpp"
#include "monitor/exporter/SocketAddress.hpp"

namespace halvermonte {
namespace {

struct FreeAddresses {
  void operator()(addrinfo* list) const { freeaddrinfo(list); }
};
using Addresses = std::unique_ptr<addrinfo, FreeAddresses>;

[[noreturn]] void fail(const ListenAddress& address, const std::string& reason) {
  throw Failure("--listen: " + address.host + " port " + std::to_string(address.port) + ": " +
                reason);
}

Addresses resolved(const ListenAddress& address) {
  addrinfo wanted{};
  wanted.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* list = nullptr;
  const int code =
      getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &wanted, &list);
  if (code == EAI_SYSTEM) fail(address, std::strerror(errno));
  if (code != 0) fail(address, gai_strerror(code));
  return Addresses(list);
}

bool listenAt(int descriptor, const addrinfo& address) {
  const int yes = 1;
  setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  return bind(descriptor, address.ai_addr, address.ai_addrlen) == 0 &&
         listen(descriptor, SOMAXCONN) == 0;
}

}  // namespace

ListenSocket::ListenSocket(const ListenAddress& address) {
  const Addresses first = resolved(address);
  descriptor_ = socket(first->ai_family, SOCK_STREAM, 0);
  if (descriptor_ < 0) fail(address, std::strerror(errno));
  fcntl(descriptor_, F_SETFD, FD_CLOEXEC);
  fcntl(descriptor_, F_SETFL, O_NONBLOCK);
  if (!listenAt(descriptor_, *first)) {
    const int error = errno;
    close(descriptor_);
    fail(address, std::strerror(error));
  }
  sockaddr_storage bound{};
  socklen_t size = sizeof bound;
  getsockname(descriptor_, reinterpret_cast<sockaddr*>(&bound), &size);
  const auto& itself = reinterpret_cast<const sockaddr&>(bound);
  name_ = nameWithPort(itself);
  isLoopback_ = halvermonte::isLoopback(itself);
}

ListenSocket::~ListenSocket() {
  if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace halvermonte
