// Where the exporter listens.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace halvermonte {

struct ListenAddress {
  std::string host = "127.0.0.1";  ///< a name or a numeric address; IPv6 without brackets
  uint16_t port = 0;               ///< 0: any free one
};

/// Reads "PORT", "HOST:PORT" or "[IPV6]:PORT". Absent if the text is nothing of the kind.
std::optional<ListenAddress> listenAddress(const std::string& text);

}  // namespace halvermonte
