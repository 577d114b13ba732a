// A client that writes its requests byte by byte.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace halvermonte::test {

class HttpClient {
 public:
  /// Connects to the server of the URL, from that address of this computer.
  explicit HttpClient(const std::string& url, const std::string& from = "127.0.0.1");
  ~HttpClient();
  HttpClient(const HttpClient&) = delete;
  HttpClient& operator=(const HttpClient&) = delete;

  void send(std::string_view bytes) const;
  /// Returns what comes until the text has come, too, or until the end of the connection.
  std::string readUntil(std::string_view text) const;
  /// Returns that many bytes, or what comes until the end of the connection.
  std::string read(size_t count) const;
  /// Waits until the server has closed the connection, and returns whether it did.
  bool isClosed() const;

 private:
  int descriptor_;
};

struct Reply {
  int status = 0;
  std::string head;
  std::string body;
};

/// Reads one answer whose length is known.
Reply readReply(const HttpClient& client);

/// A request without a body. Each of the headers ends with "\r\n".
std::string requestFor(const std::string& path, const std::string& headers = "Host: localhost\r\n",
                       const std::string& method = "GET");

/// The answer to a request of its own.
Reply get(const std::string& url, const std::string& path,
          const std::string& headers = "Host: localhost\r\n", const std::string& method = "GET");

}  // namespace halvermonte::test
