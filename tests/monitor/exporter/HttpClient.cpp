#include "tests/monitor/exporter/HttpClient.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <stdexcept>

namespace halvermonte::test {
namespace {

sockaddr_in addressOf(const std::string& numeric, int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<uint16_t>(port));
  inet_pton(AF_INET, numeric.c_str(), &address.sin_addr);
  return address;
}

int portOf(const std::string& url) { return std::stoi(url.substr(url.rfind(':') + 1)); }

const sockaddr* generic(const sockaddr_in& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

}  // namespace

HttpClient::HttpClient(const std::string& url, const std::string& from)
    : descriptor_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  const timeval patience{.tv_sec = 60, .tv_usec = 0};
  setsockopt(descriptor_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  const sockaddr_in source = addressOf(from, 0), target = addressOf("127.0.0.1", portOf(url));
  if (bind(descriptor_, generic(source), sizeof source) != 0 ||
      connect(descriptor_, generic(target), sizeof target) != 0) {
    throw std::runtime_error("no connection to " + url);
  }
}

HttpClient::~HttpClient() { close(descriptor_); }

void HttpClient::send(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t count = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) return;  // the server has closed the connection
    bytes.remove_prefix(static_cast<size_t>(count));
  }
}

std::string HttpClient::readUntil(std::string_view text) const {
  std::string bytes;
  char byte = 0;
  while (!bytes.ends_with(text) && recv(descriptor_, &byte, 1, 0) == 1) {
    bytes += byte;
  }
  return bytes;
}

std::string HttpClient::read(size_t count) const {
  std::string bytes(count, '\0');
  const ssize_t got = recv(descriptor_, bytes.data(), count, MSG_WAITALL);
  bytes.resize(got > 0 ? static_cast<size_t>(got) : 0);
  return bytes;
}

bool HttpClient::isClosed() const {
  char byte = 0;
  ssize_t count = 0;
  while ((count = recv(descriptor_, &byte, 1, 0)) == 1) continue;
  return count == 0 || errno == ECONNRESET;
}

Reply readReply(const HttpClient& client) {
  Reply reply;
  reply.head = client.readUntil("\r\n\r\n");
  if (reply.head.size() < 12) return reply;
  reply.status = std::stoi(reply.head.substr(9, 3));
  constexpr std::string_view kLength = "Content-Length: ";
  const size_t place = reply.head.find(kLength);
  if (place == reply.head.npos) return reply;
  const size_t length = std::stoul(reply.head.substr(place + kLength.size()));
  reply.body = client.read(length);
  return reply;
}

std::string requestFor(const std::string& path, const std::string& headers,
                       const std::string& method) {
  return method + " " + path + " HTTP/1.1\r\n" + headers + "\r\n";
}

Reply get(const std::string& url, const std::string& path, const std::string& headers,
          const std::string& method) {
  const HttpClient client(url);
  client.send(requestFor(path, headers, method));
  return readReply(client);
}

}  // namespace halvermonte::test
