// A socket that takes connections.
#pragma once

#include <string>
#include <utility>

#include "monitor/ListenAddress.hpp"

namespace halvermonte {

class ListenSocket {
 public:
  /// Throws a Failure if the address cannot be had.
  explicit ListenSocket(const ListenAddress& address);
  ~ListenSocket();
  ListenSocket(const ListenSocket&) = delete;
  ListenSocket& operator=(const ListenSocket&) = delete;

  /// "127.0.0.1:9000" or "[::1]:9000": where it listens.
  const std::string& name() const { return name_; }
  /// Whether it is reached from this computer alone.
  bool isLoopback() const { return isLoopback_; }
  /// The descriptor, which is the caller's from then on.
  int release() { return std::exchange(descriptor_, -1); }

 private:
  int descriptor_ = -1;
  std::string name_;
  bool isLoopback_ = false;
};

}  // namespace halvermonte
