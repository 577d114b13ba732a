#include "monitor/exporter/Server.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "monitor/Failure.hpp"
#include "monitor/page/Page.hpp"
#include "tests/monitor/exporter/HttpClient.hpp"

namespace halvermonte::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;
using ::testing::Throws;

const std::string kEventHeaders = "Host: localhost\r\nAccept: text/event-stream\r\n";

ServedPass pass(const std::string& name) {
  return {.metrics = name + "_metrics 1\n",
          .record = "{\"record\":\"" + name + "\"}\n",
          .readings = "{\"readings\":\"" + name + "\"}\n",
          .lastGood = std::chrono::steady_clock::now()};
}

ListenAddress freePort() { return {.host = "127.0.0.1", .port = 0}; }

/// A server on a free port with one pass, whose heart beats only if a test wants it to.
class ServerTest : public ::testing::Test {
 protected:
  static constexpr ServerTimes kTimes{.heartbeat = std::chrono::hours(1)};
  Server server{freePort(), kTimes, pass("first")};
  const std::string url = server.url();
};

TEST_F(ServerTest, NamesTheFreePortThatItTook) {
  EXPECT_THAT(url, MatchesRegex("http://127\\.0\\.0\\.1:[1-9][0-9]*/"));
}

TEST_F(ServerTest, GivesTheLastPass) {
  EXPECT_EQ(get(url, "/metrics").body, "first_metrics 1\n");
  EXPECT_EQ(get(url, "/record").body, "{\"record\":\"first\"}\n");
  EXPECT_EQ(get(url, "/readings").body, "{\"readings\":\"first\"}\n");
  server.publish(pass("second"));
  EXPECT_EQ(get(url, "/metrics").body, "second_metrics 1\n");
  EXPECT_EQ(get(url, "/record").body, "{\"record\":\"second\"}\n");
  EXPECT_EQ(get(url, "/readings").body, "{\"readings\":\"second\"}\n");
}

TEST_F(ServerTest, SaysWhatEachAnswerIs) {
  EXPECT_THAT(get(url, "/metrics").head,
              HasSubstr("Content-Type: text/plain; version=0.0.4; charset=utf-8\r\n"));
  EXPECT_THAT(get(url, "/record").head, HasSubstr("Content-Type: application/json\r\n"));
  EXPECT_THAT(get(url, "/readings").head, HasSubstr("Content-Type: application/json\r\n"));
  EXPECT_THAT(get(url, "/").head, HasSubstr("Content-Type: text/html; charset=utf-8\r\n"));
  for (const char* path : {"/metrics", "/record", "/readings", "/", "/health", "/none"}) {
    const std::string head = get(url, path).head;
    EXPECT_THAT(head, HasSubstr("Cache-Control: no-store\r\n"));
    EXPECT_THAT(head, HasSubstr("X-Content-Type-Options: nosniff\r\n"));
    EXPECT_THAT(head, Not(HasSubstr("Access-Control-")));
  }
}

TEST_F(ServerTest, GivesThePageWithItsPolicy) {
  const Reply reply = get(url, "/");
  EXPECT_EQ(reply.body, kPage);
  EXPECT_THAT(reply.head,
              HasSubstr("Content-Security-Policy: " + std::string(kPagePolicy) + "\r\n"));
}

TEST_F(ServerTest, AnswersSeveralRequestsOfOneConnection) {
  const HttpClient client(url);
  for (const char* name : {"second", "third"}) {
    server.publish(pass(name));
    client.send(requestFor("/metrics"));
    EXPECT_EQ(readReply(client).body, std::string(name) + "_metrics 1\n");
  }
}

TEST_F(ServerTest, AnswersHeadWithoutTheBody) {
  const HttpClient client(url);
  client.send(requestFor("/metrics", "Host: localhost\r\nConnection: close\r\n", "HEAD"));
  const std::string all = client.readUntil("first");
  EXPECT_THAT(all, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(all, HasSubstr("Content-Length: 16\r\n"));
  EXPECT_THAT(all, EndsWith("\r\n\r\n"));
}

TEST_F(ServerTest, RefusesOtherMethodsAndBodiesAndEndsTheConnection) {
  for (const char* method : {"POST", "PUT", "DELETE", "OPTIONS", "TRACE", "BREW"}) {
    const HttpClient client(url);
    client.send(requestFor("/metrics", "Host: localhost\r\n", method));
    const Reply reply = readReply(client);
    EXPECT_EQ(reply.status, 405) << method;
    EXPECT_THAT(reply.head, HasSubstr("Allow: GET, HEAD\r\n"));
    EXPECT_TRUE(client.isClosed());
  }
  const HttpClient client(url);
  const std::string inner = requestFor("/metrics");
  client.send(requestFor("/record", "Host: localhost\r\nContent-Length: " +
                                        std::to_string(inner.size()) + "\r\n") +
              inner);
  EXPECT_EQ(readReply(client).status, 413);
  EXPECT_TRUE(client.isClosed());
}

TEST_F(ServerTest, RefusesTheHostsOfOthersOnALoopbackAddress) {
  EXPECT_EQ(get(url, "/metrics", "Host: example.com\r\n").status, 421);
  EXPECT_EQ(get(url, "/metrics", "Host: 127.0.0.1:80\r\n").status, 200);
}

TEST(Server, TakesAnyHostBeyondLoopback) {
  const Server server({.host = "0.0.0.0", .port = 0}, {}, pass("first"));
  EXPECT_FALSE(server.isLoopback());
  EXPECT_EQ(get(server.url(), "/metrics", "Host: example.com\r\n").status, 200);
}

TEST_F(ServerTest, IsHealthyWhileTheLastGoodPassIsYoung) {
  EXPECT_EQ(get(url, "/health").status, 200);
  ServedPass old = pass("old");
  old.lastGood -= std::chrono::seconds(100);
  server.publish(old);
  const Reply reply = get(url, "/health");
  EXPECT_EQ(reply.status, 503);
  EXPECT_THAT(reply.body, MatchesRegex("the last complete pass ended 10[0-9]\\.. seconds ago\n"));
}

TEST_F(ServerTest, IsNotHealthyBeforeTheFirstGoodPass) {
  ServedPass none = pass("none");
  none.lastGood = {};
  server.publish(none);
  EXPECT_EQ(get(url, "/health").status, 503);
  EXPECT_EQ(get(url, "/health").body, "no pass was complete yet\n");
}

TEST_F(ServerTest, StreamsEachPassBeginningWithTheLast) {
  const HttpClient records(url), readings(url);
  records.send(requestFor("/records"));
  readings.send(requestFor("/readings", kEventHeaders));
  EXPECT_THAT(records.readUntil("\r\n\r\n"), HasSubstr("Content-Type: text/event-stream\r\n"));
  for (const char* name : {"first", "second", "third"}) {
    if (name != std::string("first")) server.publish(pass(name));
    const std::string event = std::string(name) + "\"}\n\n";
    EXPECT_THAT(records.readUntil(event), HasSubstr("data: {\"record\":\"" + event));
    EXPECT_THAT(readings.readUntil(event), HasSubstr("data: {\"readings\":\"" + event));
  }
}

TEST(Server, StreamsHaveAHeartbeatWhileThereIsNoPass) {
  const Server server(freePort(), {.heartbeat = std::chrono::milliseconds(1)}, pass("first"));
  const HttpClient client(server.url());
  client.send(requestFor("/records"));
  EXPECT_THAT(client.readUntil("\n:\n\n"), HasSubstr("first"));
}

TEST_F(ServerTest, LongEventsArriveWhole) {
  ServedPass large = pass("large");
  large.record = std::string(1'000'000, 'x') + "\n";
  server.publish(large);
  const HttpClient client(url);
  client.send(requestFor("/records", "Host: localhost\r\nConnection: close\r\n"));
  client.readUntil("\r\n\r\n");
  const std::string event = client.readUntil("\n\n\r\n");
  size_t letters = 0;
  for (const char c : event) letters += c == 'x' ? 1 : 0;
  EXPECT_EQ(letters, 1'000'000U);
}

TEST_F(ServerTest, RefusesMoreStreamsOfOneAddressThanFour) {
  std::vector<std::unique_ptr<HttpClient>> clients;
  for (int i = 0; i < 4; ++i) {
    clients.push_back(std::make_unique<HttpClient>(url));
    clients.back()->send(requestFor("/records"));
    clients.back()->readUntil("first");
  }
  EXPECT_EQ(get(url, "/readings", kEventHeaders).status, 503);
  EXPECT_EQ(get(url, "/metrics").status, 200);
  const HttpClient other(url, "127.0.0.2");
  other.send(requestFor("/records"));
  EXPECT_THAT(other.readUntil("first"), HasSubstr(" 200 OK"));
}

std::vector<std::unique_ptr<HttpClient>> keptClients(const std::string& url) {
  std::vector<std::unique_ptr<HttpClient>> clients;
  for (int i = 0; i < 8; ++i) {
    clients.push_back(std::make_unique<HttpClient>(url));
    clients.back()->send(requestFor("/metrics"));
    EXPECT_THAT(readReply(*clients.back()).head, Not(HasSubstr("Connection: close")));
  }
  return clients;
}

TEST_F(ServerTest, NinthConnectionOfAnAddressEndsWithItsAnswer) {
  const auto clients = keptClients(url);
  for (const char* path : {"/metrics", "/", "/health", "/none"}) {
    const HttpClient ninth(url);
    ninth.send(requestFor(path));
    EXPECT_THAT(readReply(ninth).head, HasSubstr("Connection: close\r\n")) << path;
    EXPECT_TRUE(ninth.isClosed());
  }
  for (const auto& client : clients) {
    client->send(requestFor("/metrics"));
    EXPECT_EQ(readReply(*client).status, 200);
  }
}

TEST_F(ServerTest, NinthConnectionOfAnAddressHasToAskSoon) {
  const auto clients = keptClients(url);
  const HttpClient ninth(url);
  ninth.send("GET /metr");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(ninth.isClosed());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));  // not 30
}

/// Asks a hundred times, over a connection that it keeps as long as the server does.
void scrape(const std::string& url) {
  auto client = std::make_unique<HttpClient>(url);
  for (int i = 0; i < 100; ++i) {
    client->send(requestFor("/metrics"));
    const Reply reply = readReply(*client);
    EXPECT_EQ(reply.body, "first_metrics 1\n");
    const bool isKept = reply.head.find("Connection: close") == reply.head.npos;
    if (!isKept) client = std::make_unique<HttpClient>(url);
  }
}

TEST_F(ServerTest, SixteenScrapersAreFineWithTwoPagesOfTheirAddress) {
  const HttpClient steady(url), page(url), otherPage(url);
  for (const HttpClient* each : {&page, &otherPage}) {
    each->send(requestFor("/readings", kEventHeaders));
    each->readUntil("first\"}\n\n");
  }
  std::vector<std::jthread> scrapers;
  for (int i = 0; i < 16; ++i) scrapers.emplace_back(scrape, url);
  scrapers.clear();
  steady.send(requestFor("/metrics"));
  EXPECT_EQ(readReply(steady).status, 200);
  server.publish(pass("second"));
  for (const HttpClient* each : {&page, &otherPage}) {
    EXPECT_THAT(each->readUntil("second\"}\n\n"), HasSubstr("data: {\"readings\":\"second"));
  }
}

TEST_F(ServerTest, ClosesAConnectionThatStaysIdle) {
  const Server impatient(freePort(), {.idleSeconds = 1}, pass("first"));
  const HttpClient client(impatient.url());
  client.send("GET /metr");
  EXPECT_TRUE(client.isClosed());
}

TEST_F(ServerTest, RefusesHeadersThatDoNotFit) {
  const HttpClient client(url);
  client.send(requestFor("/metrics", "Host: localhost\r\nX: " + std::string(20'000, 'x') + "\r\n"));
  EXPECT_THAT(client.readUntil("\r\n"), HasSubstr(" 431 "));
  EXPECT_EQ(get(url, "/metrics").status, 200);
}

TEST(Server, EndsWhileStreamsAreOpen) {
  auto server = std::make_unique<Server>(freePort(), ServerTimes(), pass("first"));
  const HttpClient client(server->url());
  client.send(requestFor("/records"));
  client.readUntil("first");
  server.reset();
  EXPECT_TRUE(client.isClosed());
}

TEST_F(ServerTest, SaysThatThePortIsTaken) {
  const auto port = static_cast<uint16_t>(std::stoi(url.substr(url.rfind(':') + 1)));
  EXPECT_THAT(
      [&] { Server({.host = "127.0.0.1", .port = port}, {}, pass("second")); },
      Throws<Failure>(::testing::Property(&Failure::what, HasSubstr("Address already in use"))));
}

TEST(Server, SaysThatThereIsNoSuchHost) {
  EXPECT_THROW(Server({.host = "256.0.0.1", .port = 0}, {}, pass("first")), Failure);
}

}  // namespace
}  // namespace halvermonte::test
