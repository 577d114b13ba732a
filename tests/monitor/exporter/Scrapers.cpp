// halvermonte_scrapers PORT SCRAPERS ADDRESSES SCRAPES: clients that scrape an exporter of this
// computer, from so many addresses. Each keeps its connection if the exporter does, and asks the
// next time as soon as it has its answer. Prints what a scrape took, in milliseconds: the median,
// the 99th percentile and the longest.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::string_view kRequest =
    "GET /metrics HTTP/1.1\r\nHost: localhost\r\nAccept: text/plain; version=0.0.4\r\n\r\n";

sockaddr_in loopback(uint32_t last, uint16_t port) {
  constexpr uint32_t kLoopbackNet = 127U << 24;
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(kLoopbackNet | last);
  address.sin_port = htons(port);
  return address;
}

const sockaddr* generic(const sockaddr_in& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

/// Whether the bytes are a whole answer. Servers state its length or send it in chunks.
bool isWhole(std::string_view bytes) {
  constexpr std::string_view kEndOfHead = "\r\n\r\n", kLength = "Content-Length: ";
  const size_t headSize = bytes.find(kEndOfHead);
  if (headSize == bytes.npos) return false;
  const std::string_view head = bytes.substr(0, headSize);
  const size_t place = head.find(kLength);
  if (place == head.npos) return bytes.ends_with("\r\n0\r\n\r\n");
  size_t length = 0;
  std::from_chars(head.data() + place + kLength.size(), head.data() + head.size(), length);
  return bytes.size() == headSize + kEndOfHead.size() + length;
}

class Scraper {
 public:
  Scraper(const sockaddr_in& source, uint16_t port) : source_(source), target_(loopback(1, port)) {}
  ~Scraper() { disconnect(); }
  Scraper(const Scraper&) = delete;
  Scraper& operator=(const Scraper&) = delete;

  void ask() {
    answer_.clear();
    asked_ = Clock::now();
    if (descriptor_ < 0) connect();
    if (send(descriptor_, kRequest.data(), kRequest.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(kRequest.size())) {
      throw std::runtime_error("a request could not be sent");
    }
  }
  /// Takes what has come. Returns whether that completes the answer.
  bool receive() {
    char bytes[65536];
    const ssize_t count = recv(descriptor_, bytes, sizeof bytes, 0);
    if (count <= 0) throw std::runtime_error("a connection ended without an answer");
    answer_.append(bytes, static_cast<size_t>(count));
    if (!isWhole(answer_)) return false;
    if (!answer_.starts_with("HTTP/1.1 200 ")) throw std::runtime_error(answer_);
    if (answer_.find("\r\nConnection: close\r\n") != answer_.npos) disconnect();
    return true;
  }
  Milliseconds sinceAsked() const { return Clock::now() - asked_; }
  int descriptor() const { return descriptor_; }

 private:
  void connect() {
    descriptor_ = socket(AF_INET, SOCK_STREAM, 0);
    if (bind(descriptor_, generic(source_), sizeof source_) != 0 ||
        ::connect(descriptor_, generic(target_), sizeof target_) != 0) {
      throw std::runtime_error("no connection");
    }
  }
  void disconnect() {
    if (descriptor_ >= 0) close(std::exchange(descriptor_, -1));
  }

  sockaddr_in source_, target_;
  int descriptor_ = -1;
  std::string answer_;
  Clock::time_point asked_;
};

/// Returns what each scrape took.
std::vector<double> scrape(const std::vector<std::unique_ptr<Scraper>>& scrapers, size_t scrapes) {
  std::vector<pollfd> polled(scrapers.size(), pollfd{.fd = -1, .events = POLLIN, .revents = 0});
  const auto ask = [&](size_t i) {
    scrapers[i]->ask();
    polled[i].fd = scrapers[i]->descriptor();
  };
  for (size_t i = 0; i < scrapers.size(); ++i) ask(i);
  std::vector<double> times;
  while (times.size() < scrapes) {
    constexpr int kPatience = 60000;
    if (poll(polled.data(), polled.size(), kPatience) <= 0) throw std::runtime_error("no answer");
    for (size_t i = 0; i < scrapers.size(); ++i) {
      if (polled[i].revents == 0 || !scrapers[i]->receive()) continue;
      times.push_back(scrapers[i]->sinceAsked().count());
      ask(i);
    }
  }
  return times;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 5) {
    std::fputs("usage: halvermonte_scrapers PORT SCRAPERS ADDRESSES SCRAPES\n", stderr);
    return 2;
  }
  const auto number = [&](int i) {
    return static_cast<uint32_t>(std::max(1UL, std::strtoul(arguments[i], nullptr, 10)));
  };
  try {
    constexpr uint32_t kFirstAddress = 2;  // 127.0.0.2
    std::vector<std::unique_ptr<Scraper>> scrapers;
    for (uint32_t i = 0; i < number(2); ++i) {
      scrapers.push_back(std::make_unique<Scraper>(loopback(kFirstAddress + i % number(3), 0),
                                                   static_cast<uint16_t>(number(1))));
    }
    auto times = scrape(scrapers, number(4));
    std::ranges::sort(times);
    std::printf("%.3f %.3f %.3f\n", times[times.size() / 2], times[times.size() * 99 / 100],
                times.back());
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "halvermonte_scrapers: %s\n", problem.what());
    return 1;
  }
}
