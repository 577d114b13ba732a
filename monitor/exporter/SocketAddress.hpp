// What a socket's address says.
#pragma once

#include <sys/socket.h>

#include <string>

namespace halvermonte {

/// "127.0.0.1" or "::1".
std::string nameWithoutPort(const sockaddr& address);
/// "127.0.0.1:80" or "[::1]:80".
std::string nameWithPort(const sockaddr& address);
/// Whether only this computer reaches the address.
bool isLoopback(const sockaddr& address);

}  // namespace halvermonte
