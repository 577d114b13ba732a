#include "monitor/exporter/EventStreams.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

namespace halvermonte {

EventStreams::EventStreams(std::chrono::milliseconds heartbeat)
    : heart_([this, heartbeat] {
        std::unique_lock lock(mutex_);
        while (!closing_.wait_for(lock, heartbeat, [this] { return isClosed_; })) {
          ++heartbeats_;
          wakeAll();
        }
      }) {}

EventStreams::~EventStreams() {
  close();
  heart_.join();
}

void EventStreams::publish(std::shared_ptr<const ServedPass> pass) {
  const std::lock_guard lock(mutex_);
  latest_ = std::move(pass);
  ++passes_;
  wakeAll();
}

void EventStreams::close() {
  const std::lock_guard lock(mutex_);
  isClosed_ = true;
  wakeAll();
  closing_.notify_all();
}

Response EventStreams::open(MHD_Connection* connection, LineOf line) {
  constexpr size_t kBlock = 16384;
  Stream* stream = nullptr;
  {
    const std::lock_guard lock(mutex_);
    stream = &all_.emplace_back(Stream{
        .streams = *this, .connection = connection, .line = line, .heartbeats = heartbeats_});
  }
  return withHeaders(
      MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, kBlock, read, stream, forget),
      "text/event-stream");
}

ssize_t EventStreams::read(void* stream, uint64_t, char* buffer, size_t size) {
  auto& itself = *static_cast<Stream*>(stream);
  return itself.streams.fill(itself, buffer, size);
}

void EventStreams::forget(void* stream) {
  EventStreams& streams = static_cast<Stream*>(stream)->streams;
  const std::lock_guard lock(streams.mutex_);
  streams.all_.remove_if([stream](const Stream& each) { return &each == stream; });
}

ssize_t EventStreams::fill(Stream& stream, char* buffer, size_t size) {
  const std::lock_guard lock(mutex_);
  if (isClosed_) return MHD_CONTENT_READER_END_OF_STREAM;
  if (stream.sent == stream.text.size()) {
    stream.text = nextText(stream);
    stream.sent = 0;
  }
  if (stream.text.empty()) {
    stream.isWaiting = true;
    MHD_suspend_connection(stream.connection);
    return 0;
  }
  const size_t count = std::min(size, stream.text.size() - stream.sent);
  std::memcpy(buffer, stream.text.data() + stream.sent, count);
  stream.sent += count;
  return static_cast<ssize_t>(count);
}

std::string EventStreams::nextText(Stream& stream) const {
  if (std::exchange(stream.passes, passes_) != passes_) {
    return "data: " + (*latest_).*stream.line + "\n";  // the line has a line feed of its own
  }
  return std::exchange(stream.heartbeats, heartbeats_) != heartbeats_ ? ":\n\n" : "";
}

void EventStreams::wakeAll() {
  for (Stream& stream : all_) {
    if (std::exchange(stream.isWaiting, false)) MHD_resume_connection(stream.connection);
  }
}

}  // namespace halvermonte
