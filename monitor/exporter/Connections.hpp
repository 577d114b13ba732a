// Which connections stay if there are too many.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <string>
#include <utility>

namespace halvermonte {

/// The open connections of a server. A client never waits for another one.
///
/// Of one address, only so many connections are kept. Further ones pass: they get an answer, and
/// are closed with it. So many scrapers behind one address all get their answers, and none of them
/// sends a request on a connection that is just being closed.
///
/// If there are too many connections in all, one has to go for a new one, of the address that has
/// most. Those that never made a request go first, then idle ones, then those whose client does not
/// take its answer.
///
/// One thread uses an object.
class Connections {
 public:
  struct Limits {
    size_t all = 64, keptOfAddress = 8;
    /// Streams are answers without end, and never have to go, so there is a limit below the others.
    size_t streams = 32, streamsOfAddress = 4;
  };

  enum class Phase : uint8_t { fresh, idle, answering, streaming };

  struct Connection {
    std::string address;
    int descriptor = -1;
    Phase phase = Phase::fresh;
    bool isPassing = false;  ///< to be closed with its first answer
    bool isLeaving = false;  ///< asked to go, but not gone yet
  };

  /// `dismiss` makes a connection go, sooner or later.
  Connections(Limits limits, std::function<void(const Connection&)> dismiss)
      : limits_(limits), dismiss_(std::move(dismiss)) {}

  /// Adds a new connection, and dismisses another if that makes too many.
  Connection& add(std::string address, int descriptor);
  void remove(const Connection& connection);
  /// Notes that something happened on the connection.
  void setPhase(const Connection& connection, Phase phase);

  /// Whether the connection may become a stream.
  bool mayStream(const Connection& connection) const;

 private:
  using Place = std::list<Connection>::iterator;
  template <class Condition>
  size_t count(Condition condition) const;
  void dismissOne();
  Place placeOf(const Connection& connection);

  Limits limits_;
  std::function<void(const Connection&)> dismiss_;
  std::list<Connection> connections_;  ///< the one at which nothing happened for longest is first
};

}  // namespace halvermonte
