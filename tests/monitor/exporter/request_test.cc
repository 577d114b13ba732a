#include "monitor/exporter/Request.hpp"

#include <gmock/gmock.h>

#include <string_view>
#include <variant>

namespace halvermonte {
namespace {

using ::testing::VariantWith;

unsigned statusOf(const Request& request, Hosts hosts = Hosts::loopback) {
  const auto decision = decide(request, hosts);
  const auto* refusal = std::get_if<Refusal>(&decision);
  return refusal != nullptr ? refusal->status : 200;
}

TEST(Request, EachPathIsAResource) {
  const auto resourceAt = [](std::string_view path, std::string_view accept) {
    return decide({.method = "GET", .path = path, .accept = accept}, Hosts::loopback);
  };
  EXPECT_THAT(resourceAt("/", "*/*"), VariantWith<Resource>(Resource::page));
  EXPECT_THAT(resourceAt("/metrics", "*/*"), VariantWith<Resource>(Resource::metrics));
  EXPECT_THAT(resourceAt("/record", "*/*"), VariantWith<Resource>(Resource::record));
  EXPECT_THAT(resourceAt("/records", "*/*"), VariantWith<Resource>(Resource::recordStream));
  EXPECT_THAT(resourceAt("/health", "*/*"), VariantWith<Resource>(Resource::health));
  EXPECT_THAT(resourceAt("/readings", "*/*"), VariantWith<Resource>(Resource::readings));
  EXPECT_THAT(resourceAt("/readings", "text/event-stream"),
              VariantWith<Resource>(Resource::readingsStream));
}

TEST(Request, OtherPathsAreNotFound) {
  for (const char* path : {"", "//", "/metrics/", "/Metrics", "/../metrics", "/index.html", "*"}) {
    EXPECT_EQ(statusOf({.method = "GET", .path = path}), 404U) << path;
  }
}

TEST(Request, OnlyGetAndHeadAreAllowed) {
  for (const char* method : {"GET", "HEAD"}) {
    EXPECT_EQ(statusOf({.method = method, .path = "/metrics"}), 200U);
  }
  for (const char* method : {"POST", "get", "OPTIONS", ""}) {
    EXPECT_EQ(statusOf({.method = method, .path = "/metrics"}), 405U);
  }
}

TEST(Request, BodyIsRefused) {
  EXPECT_EQ(statusOf({.method = "GET", .path = "/metrics", .hasBody = true}), 413U);
}

TEST(Request, OnLoopbackTheHostHasToBeThisComputer) {
  for (const char* host : {"localhost", "LocalHost:80", "desk.localhost", "127.0.0.1:9000",
                           "127.1.2.3", "[::1]", "[::1]:9000"}) {
    EXPECT_EQ(statusOf({.method = "GET", .path = "/", .host = host}), 200U) << host;
  }
  for (const char* host : {"", "example.com", "localhost.example.com", "notlocalhost", "128.0.0.1",
                           "127.0.0.1.example.com", "127.1", "[::2]", "[::1", "[", "0.0.0.0", "::1",
                           "[::ffff:127.0.0.1]", "localhost@example.com"}) {
    EXPECT_EQ(statusOf({.method = "GET", .path = "/", .host = host}), 421U) << host;
  }
}

TEST(Request, ClientWithoutAHostIsNoBrowser) {
  EXPECT_EQ(statusOf({.method = "GET", .path = "/"}), 200U);
}

TEST(Request, BeyondLoopbackAnyHostIsAllowed) {
  EXPECT_EQ(statusOf({.method = "GET", .path = "/", .host = "example.com"}, Hosts::any), 200U);
}

}  // namespace
}  // namespace halvermonte
