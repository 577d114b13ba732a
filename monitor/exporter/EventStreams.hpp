// Passes as server-sent events.
#pragma once

#include <microhttpd.h>
#include <cstddef>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "monitor/exporter/Responses.hpp"
#include "monitor/exporter/ServedPass.hpp"

namespace halvermonte {

/// Sends one event for each pass, beginning with the last, and a comment now and then, by which
/// a client knows that the connection is alive while there is no pass. A client that reads more
/// slowly than the passes come misses some.
class EventStreams {
 public:
  explicit EventStreams(std::chrono::milliseconds heartbeat);
  ~EventStreams();
  EventStreams(const EventStreams&) = delete;
  EventStreams& operator=(const EventStreams&) = delete;

  void publish(std::shared_ptr<const ServedPass> pass);
  /// Ends all streams. REQUIRED before the server stops.
  void close();

  /// Which line of a pass the events have.
  using LineOf = std::string ServedPass::*;
  /// The answer that streams to the connection. REQUIRES: the object outlives it.
  Response open(MHD_Connection* connection, LineOf line);

 private:
  struct Stream {
    EventStreams& streams;
    MHD_Connection* connection;
    LineOf line;
    uint64_t passes = 0, heartbeats = 0;  ///< the count of those that came before the last text
    std::string text = "";
    size_t sent = 0;  ///< bytes of the text
    bool isWaiting = false;
  };

  static ssize_t read(void* stream, uint64_t position, char* buffer, size_t size);
  static void forget(void* stream);
  ssize_t fill(Stream& stream, char* buffer, size_t size);
  std::string nextText(Stream& stream) const;
  void wakeAll();

  std::mutex mutex_;
  std::list<Stream> all_;
  std::shared_ptr<const ServedPass> latest_;
  uint64_t passes_ = 0, heartbeats_ = 0;
  bool isClosed_ = false;
  std::condition_variable closing_;
  std::thread heart_;
};

}  // namespace halvermonte
