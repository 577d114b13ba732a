#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "monitor/exporter/Server.hpp"
#include "tests/monitor/exporter/HttpClient.hpp"
#include "tests/monitor/exporter/PasswordFile.hpp"

namespace halvermonte::test {
namespace {

using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::Ge;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr unsigned kSlow = 10;  ///< the cost of a check that takes tens of milliseconds
const ListenAddress kFreePort{.host = "127.0.0.1", .port = 0};

ServedPass pass() {
  return {.metrics = "first_metrics 1\n",
          .record = "{\"record\":\"first\"}\n",
          .readings = "{\"readings\":\"first\"}\n",
          .lastGood = std::chrono::steady_clock::now()};
}

/// A server for one user, whose password is "one".
class UsersServerTest : public ::testing::Test {
 protected:
  static Protection usersAlone(unsigned cost = 4) {
    const PasswordFile file("ann:" + hashOf("one", cost) + "\n");
    return {.tls = std::nullopt, .users = Users(file.path())};
  }
  Reply ask(const std::string& path, const std::string& basic) const {
    return get(server.url(), path, "Host: localhost\r\nAuthorization: Basic " + basic + "\r\n");
  }

  // What "ann:one", "ann:two" and "ben:one" are in Base64.
  const std::string right = "YW5uOm9uZQ==", wrong = "YW5uOnR3bw==", stranger = "YmVuOm9uZQ==";
  Server server{kFreePort, {}, pass(), usersAlone()};
};

TEST_F(UsersServerTest, AnswersItsUsers) {
  for (const char* path : {"/", "/metrics", "/record", "/readings", "/health", "/metrics"}) {
    EXPECT_EQ(ask(path, right).status, 200) << path;
  }
}

TEST_F(UsersServerTest, AsksEverybodyElseForAPassword) {
  for (const char* path : {"/", "/metrics", "/record", "/records", "/readings", "/health"}) {
    for (const Reply& reply : {get(server.url(), path), ask(path, wrong), ask(path, stranger),
                               ask(path, "?"), ask(path, "YW5u")}) {
      EXPECT_EQ(reply.status, 401) << path;
      EXPECT_THAT(reply.head, HasSubstr("WWW-Authenticate: Basic realm=\"halvermonte-monitor\", "
                                        "charset=\"UTF-8\"\r\n"));
      EXPECT_THAT(reply.body, Not(HasSubstr("first")));
    }
  }
}

TEST_F(UsersServerTest, StreamsToItsUsers) {
  const HttpClient client(server.url());
  client.send(requestFor("/records", "Host: localhost\r\nAuthorization: Basic " + right + "\r\n"));
  EXPECT_THAT(client.readUntil("first"), HasSubstr(" 200 OK"));
}

TEST_F(UsersServerTest, ManyWrongPasswordsCostAUserNothing) {
  const Server slow(kFreePort, {}, pass(), usersAlone(kSlow));
  const std::string user = "Host: localhost\r\nAuthorization: Basic " + right + "\r\n";
  const std::string guesser = "Host: localhost\r\nAuthorization: Basic " + wrong + "\r\n";
  EXPECT_EQ(get(slow.url(), "/metrics", user).status, 200);
  std::vector<std::unique_ptr<HttpClient>> guessers;
  for (int i = 0; i < 40; ++i) {
    guessers.push_back(
        std::make_unique<HttpClient>(slow.url(), "127.0.1." + std::to_string(1 + i)));
  }
  for (const auto& each : guessers) each->send(requestFor("/metrics", guesser));
  for (int i = 0; i < 20; ++i) EXPECT_EQ(get(slow.url(), "/metrics", user).status, 200);
  std::vector<int> statuses;
  for (const auto& each : guessers) statuses.push_back(readReply(*each).status);
  EXPECT_THAT(statuses, Each(AnyOf(401, 503)));
  EXPECT_THAT(statuses, Contains(401).Times(Ge(8)));  // as many as may wait
  EXPECT_THAT(statuses, Contains(503));
}

TEST_F(UsersServerTest, EndsWhilePasswordsAreChecked) {
  auto other = std::make_unique<Server>(kFreePort, ServerTimes(), pass(), usersAlone(kSlow));
  std::vector<std::unique_ptr<HttpClient>> clients;
  for (int i = 0; i < 8; ++i) {
    clients.push_back(std::make_unique<HttpClient>(other->url()));
    clients.back()->send(
        requestFor("/metrics", "Host: localhost\r\nAuthorization: Basic " + wrong + "\r\n"));
  }
  EXPECT_EQ(get(other->url(), "/metrics").status, 401);  // it has read the others' requests
  other.reset();
  for (const auto& client : clients) EXPECT_TRUE(client->isClosed());
}

}  // namespace
}  // namespace halvermonte::test
