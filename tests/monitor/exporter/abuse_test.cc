// Clients that mean no good, or are just slow, on the server that is asked by others meanwhile.
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "monitor/exporter/Server.hpp"
#include "tests/monitor/exporter/HttpClient.hpp"

namespace halvermonte::test {
namespace {

size_t openDescriptors() {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                                           std::filesystem::directory_iterator()));
}

/// Connections are idle for longer than a client here waits.
class AbuseTest : public ::testing::Test {
 protected:
  AbuseTest()
      : server({.host = "127.0.0.1", .port = 0}, {.idleSeconds = 600},
               {.metrics = "metric 1\n",
                .record = "{}\n",
                .readings = "{}\n",
                .lastGood = std::chrono::steady_clock::now()}) {}

  void expectAnAnswer() const { EXPECT_EQ(get(server.url(), "/metrics").body, "metric 1\n"); }

  /// Waits until no more descriptors are open than before.
  void expectDescriptors(size_t count) const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (openDescriptors() > count) {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "connections stay open";
      expectAnAnswer();
    }
  }

  Server server;
};

/// A request in which something is wrong.
std::string badRequest(std::mt19937& random) {
  const std::string good = "GET /metrics HTTP/1.1\r\nHost: localhost\r\nAccept: */*\r\n\r\n";
  std::string bad = good;
  const size_t place = random() % good.size();
  switch (random() % 5) {
    case 0:
      return good.substr(0, place);
    case 1:
      bad[place] = static_cast<char>(random());
      return bad;
    case 2:
      return bad.insert(place, 1 + random() % 20'000, 'x');
    case 3:
      return bad.insert(place, "\r\nContent-Length: 99999999999999999999\r\n");
    default:
      std::ranges::generate(bad, [&random] { return static_cast<char>(random()); });
      return bad;
  }
}

TEST_F(AbuseTest, TenThousandBadRequestsLeaveNothingBehind) {
  expectAnAnswer();
  const size_t before = openDescriptors();
  std::mt19937 random(1);
  for (int i = 0; i < 10'000; ++i) {
    HttpClient(server.url()).send(badRequest(random));
    if (i % 1'000 == 0) expectAnAnswer();
  }
  expectDescriptors(before);
}

TEST_F(AbuseTest, BadRequestEndsItsConnectionAtOnce) {
  for (const std::string& request :
       {std::string("nonsense\r\n\r\n"), std::string(100, '\x80') + "\r\n\r\n",
        requestFor("/metrics", "no header\r\n"), requestFor("/metrics", "", "GET\t"),
        requestFor("/metrics", "Host: localhost\r\nContent-Length: -1\r\n"),
        requestFor("/metrics", "Host: localhost\r\nTransfer-Encoding: chunked\r\n") + "x\r\n",
        requestFor("/metrics", "X: " + std::string(20'000, 'x') + "\r\n"),
        requestFor("/" + std::string(20'000, 'x')), requestFor("/metrics", "", "POST"),
        requestFor("/metrics", "Host: example.com\r\n")}) {
    const HttpClient client(server.url());
    client.send(request);
    EXPECT_TRUE(client.isClosed()) << request.substr(0, 60);
  }
}

TEST_F(AbuseTest, TwoHundredSlowClientsCostNoScrape) {
  std::vector<std::unique_ptr<HttpClient>> clients;
  const HttpClient steady(server.url());
  for (int i = 0; i < 200; ++i) {
    const std::string address = "127.0.1." + std::to_string(1 + i % 100);
    clients.push_back(std::make_unique<HttpClient>(server.url(), address));
    clients.back()->send(i % 2 == 0 ? "GET /metrics HTT" : "");
    expectAnAnswer();
    steady.send(requestFor("/metrics"));
    EXPECT_EQ(readReply(steady).body, "metric 1\n");
  }
}

TEST_F(AbuseTest, ClientsThatDoNotTakeTheirAnswersCostNoScrape) {
  server.publish({.metrics = "metric 1\n",
                  .record = std::string(8'000'000, 'x') + "\n",
                  .readings = "{}\n",
                  .lastGood = std::chrono::steady_clock::now()});
  std::vector<std::unique_ptr<HttpClient>> clients;
  for (int i = 0; i < 200; ++i) {
    const std::string address = "127.0.1." + std::to_string(1 + i % 40);
    clients.push_back(std::make_unique<HttpClient>(server.url(), address));
    clients.back()->send(requestFor(i % 3 == 0 ? "/records" : "/record"));
    expectAnAnswer();
  }
}

TEST_F(AbuseTest, PassesComeWhileManyAsk) {
  std::vector<std::jthread> clients;
  for (int i = 0; i < 4; ++i) {
    clients.emplace_back([this] {
      for (int j = 0; j < 50; ++j) expectAnAnswer();
      const HttpClient stream(server.url());
      stream.send(requestFor("/records"));
      for (int j = 0; j < 3; ++j) stream.readUntil("data: {}\n\n");
    });
  }
  std::jthread passes([this](const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      server.publish({.metrics = "metric 1\n",
                      .record = "{}\n",
                      .readings = "{}\n",
                      .lastGood = std::chrono::steady_clock::now()});
    }
  });
  clients.clear();
}

}  // namespace
}  // namespace halvermonte::test
