#include "monitor/ListenAddress.hpp"

#include <gmock/gmock.h>

#include <cstdint>
#include <optional>
#include <string>

namespace halvermonte {
namespace {

void expectAddress(const std::string& text, const std::string& host, uint16_t port) {
  const std::optional<ListenAddress> address = listenAddress(text);
  ASSERT_TRUE(address) << text;
  EXPECT_EQ(address->host, host) << text;
  EXPECT_EQ(address->port, port) << text;
}

TEST(ListenAddress, PortAloneIsThisComputers) {
  expectAddress("9000", "127.0.0.1", 9000);
  expectAddress("0", "127.0.0.1", 0);
}

TEST(ListenAddress, HostStandsBeforeThePort) {
  expectAddress("localhost:0", "localhost", 0);
  expectAddress("0.0.0.0:65535", "0.0.0.0", 65535);
  expectAddress("[::1]:80", "::1", 80);
}

TEST(ListenAddress, AnythingElseIsNone) {
  for (const char* text :
       {"", ":", "localhost", "localhost:", ":80", "65536", "-1", "+1", " 1", "80 ", "0x50",
        "::1:80", "[]:80", "[::1]", "[::1:80", "::1]:80", "a:b:80", "[[::1]]:80"}) {
    EXPECT_FALSE(listenAddress(text)) << text;
  }
}

}  // namespace
}  // namespace halvermonte
