#include "monitor/exporter/Connections.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace halvermonte {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Phase = Connections::Phase;

/// Room for three connections, two kept of one address, and two streams, one of an address.
class ConnectionsTest : public ::testing::Test {
 protected:
  Connections::Connection& add(const std::string& address, Phase phase = Phase::fresh) {
    Connections::Connection& added = connections.add(address, next++);
    if (phase != Phase::fresh) connections.setPhase(added, phase);
    return added;
  }

  int next = 0;  ///< the descriptor of the next connection
  std::vector<int> dismissed;
  Connections connections{
      {.all = 3, .keptOfAddress = 2, .streams = 2, .streamsOfAddress = 1},
      [this](const Connections::Connection& one) { dismissed.push_back(one.descriptor); }};
};

TEST_F(ConnectionsTest, NobodyHasToGoWhileThereIsRoom) {
  for (const char* address : {"a", "b", "b"}) add(address);
  EXPECT_THAT(dismissed, IsEmpty());
}

TEST_F(ConnectionsTest, OldestGoesForANewOne) {
  for (const char* address : {"a", "b", "c", "d", "e"}) add(address);
  EXPECT_THAT(dismissed, ElementsAre(0, 1));
}

TEST_F(ConnectionsTest, OneOfTheAddressThatHasMostGoes) {
  for (const char* address : {"a", "b", "b", "c"}) add(address);
  EXPECT_THAT(dismissed, ElementsAre(1));
}

TEST_F(ConnectionsTest, AddressKeepsSoManyAndFurtherOnesPass) {
  Connections::Connection& first = add("a", Phase::idle);
  EXPECT_FALSE(first.isPassing);
  EXPECT_FALSE(add("a").isPassing);
  EXPECT_TRUE(add("a").isPassing);
  EXPECT_THAT(dismissed, IsEmpty());
  connections.remove(first);
  EXPECT_FALSE(add("a").isPassing);
  EXPECT_FALSE(add("b").isPassing);
}

TEST_F(ConnectionsTest, ThoseWithoutARequestGoFirstAndThoseThatAreAnsweredLast) {
  add("a", Phase::answering);
  add("b", Phase::idle);
  add("c");
  add("d", Phase::answering);
  EXPECT_THAT(dismissed, ElementsAre(2));
  add("e", Phase::answering);
  EXPECT_THAT(dismissed, ElementsAre(2, 1));
  add("f");
  EXPECT_THAT(dismissed, ElementsAre(2, 1, 0));
}

TEST_F(ConnectionsTest, IdleOneThatWasUsedLastStays) {
  Connections::Connection& first = add("a", Phase::idle);
  add("b", Phase::idle);
  add("c", Phase::idle);
  connections.setPhase(first, Phase::idle);
  add("d");
  EXPECT_THAT(dismissed, ElementsAre(1));
}

TEST_F(ConnectionsTest, OneThatHasGoneMakesRoom) {
  Connections::Connection& first = add("a");
  add("b");
  add("c");
  connections.remove(first);
  add("d");
  EXPECT_THAT(dismissed, IsEmpty());
}

TEST_F(ConnectionsTest, StreamsStay) {
  add("a", Phase::streaming);
  add("b", Phase::streaming);
  add("c", Phase::answering);
  add("d");
  EXPECT_THAT(dismissed, ElementsAre(2));
}

TEST_F(ConnectionsTest, StreamsAreLimitedInAllAndForAnAddress) {
  Connections::Connection& first = add("a");
  EXPECT_TRUE(connections.mayStream(first));
  connections.setPhase(first, Phase::streaming);
  EXPECT_FALSE(connections.mayStream(add("a")));
  Connections::Connection& other = add("b");
  EXPECT_TRUE(connections.mayStream(other));
  connections.setPhase(other, Phase::streaming);
  EXPECT_FALSE(connections.mayStream(add("c")));
}

}  // namespace
}  // namespace halvermonte
