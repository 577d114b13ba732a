// The HTTP server: it gives out the last pass, and never makes one.
#pragma once

#include <microhttpd.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "monitor/ListenAddress.hpp"
#include "monitor/exporter/Connections.hpp"
#include "monitor/exporter/CredentialChecks.hpp"
#include "monitor/exporter/EventStreams.hpp"
#include "monitor/exporter/ListenSocket.hpp"
#include "monitor/exporter/Request.hpp"
#include "monitor/exporter/Responses.hpp"
#include "monitor/exporter/ServedPass.hpp"
#include "monitor/exporter/TlsFiles.hpp"
#include "monitor/exporter/Users.hpp"

namespace halvermonte {

/// How patient a server is.
struct ServerTimes {
  /// The age from which the last complete pass is too old.
  std::chrono::steady_clock::duration staleAfter = std::chrono::seconds(3);
  std::chrono::milliseconds heartbeat = std::chrono::seconds(5);
  /// After so many seconds without a byte, a connection is closed.
  unsigned idleSeconds = 30;
};

/// What keeps strangers out.
struct Protection {
  std::optional<TlsFiles> tls;
  std::optional<Users> users;
};

/// A thread of its own answers all clients. What they ask for is made before, so no answer takes
/// long.
class Server {
 public:
  /// Accepts connections from then on. Throws a Failure if it cannot.
  Server(const ListenAddress& address, ServerTimes times, ServedPass first,
         Protection protection = {});
  /// Ends all connections.
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// Any thread may call it.
  void publish(ServedPass next);

  /// "http://127.0.0.1:9000/".
  std::string url() const { return (tls_ ? "https://" : "http://") + socket_.name() + "/"; }
  /// Whether it is reached from this computer alone.
  bool isLoopback() const { return socket_.isLoopback(); }

 private:
  struct StopDaemon {
    void operator()(MHD_Daemon* daemon) const { MHD_stop_daemon(daemon); }
  };
  using Connection = Connections::Connection;
  struct Asked;

  void start();
  // What the daemon calls.
  static void noteConnection(void* server, MHD_Connection* connection, void** context,
                             MHD_ConnectionNotificationCode code);
  static MHD_Result take(void* server, MHD_Connection* connection, const char* path,
                         const char* method, const char* version, const char* body,
                         size_t* bodySize, void** context);
  static void noteEnd(void* server, MHD_Connection* connection, void** context,
                      MHD_RequestTerminationCode code);

  MHD_Result begin(MHD_Connection* connection, const Request& request, void** context);
  MHD_Result answer(MHD_Connection* connection, Asked& asked);
  MHD_Result check(MHD_Connection* connection, Asked& asked);
  MHD_Result give(MHD_Connection* connection, Resource resource);
  MHD_Result giveText(MHD_Connection* connection, EventStreams::LineOf text, const char* type);
  MHD_Result stream(MHD_Connection* connection, EventStreams::LineOf line);
  MHD_Result giveHealth(MHD_Connection* connection) const;
  std::shared_ptr<const ServedPass> latest() const;

  ListenSocket socket_;
  ServerTimes times_;
  std::optional<TlsFiles> tls_;
  Connections connections_;
  EventStreams streams_;
  std::optional<CredentialChecks> checks_;  ///< absent: everyone may ask
  mutable std::mutex mutex_;
  std::shared_ptr<const ServedPass> latest_;
  std::unique_ptr<MHD_Daemon, StopDaemon> daemon_;  ///< ends first
};

}  // namespace halvermonte
