#include "monitor/exporter/Server.hpp"

#include <sys/socket.h>

#include <cstdint>
#include <cstdio>
#include <utility>
#include <variant>
#include <vector>

#include "monitor/Failure.hpp"
#include "monitor/exporter/SocketAddress.hpp"
#include "monitor/page/Page.hpp"

namespace halvermonte {
namespace {

constexpr unsigned kOk = 200, kUnauthorized = 401, kBusy = 503;

/// A request's line and headers have to fit in, and the head of the answer.
constexpr size_t kMemoryOfConnection = 16384;
/// More than the table of connections holds: those that are asked to go are still there.
constexpr unsigned kMostSockets = 128;
/// How long a connection that is not kept may take to send its request.
constexpr unsigned kPassingSeconds = 1;

/// In GnuTLS's words: what it finds secure, from TLS 1.2 on.
constexpr const char* kTlsPriorities = "NORMAL:-VERS-ALL:+VERS-TLS1.3:+VERS-TLS1.2";

const MHD_ConnectionInfo& about(MHD_Connection* connection, MHD_ConnectionInfoType type) {
  return *MHD_get_connection_info(connection, type);
}

const Connections::Connection& tracked(MHD_Connection* connection) {
  return *static_cast<const Connections::Connection*>(
      about(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT).socket_context);
}

const char* header(MHD_Connection* connection, const char* name) {
  return MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
}

Request requestOf(MHD_Connection* connection, const char* method, const char* path) {
  Request request{.method = method, .path = path};
  if (const char* host = header(connection, MHD_HTTP_HEADER_HOST)) request.host = host;
  if (const char* accept = header(connection, MHD_HTTP_HEADER_ACCEPT)) request.accept = accept;
  const char* const length = header(connection, MHD_HTTP_HEADER_CONTENT_LENGTH);
  request.hasBody = (length != nullptr && std::string_view(length) != "0") ||
                    header(connection, MHD_HTTP_HEADER_TRANSFER_ENCODING) != nullptr;
  return request;
}

struct FreeText {
  void operator()(char* text) const { MHD_free(text); }
};
using DecodedText = std::unique_ptr<char, FreeText>;

std::optional<Credentials> credentialsOf(MHD_Connection* connection) {
  char* decoded = nullptr;
  const DecodedText user(MHD_basic_auth_get_username_password(connection, &decoded));
  const DecodedText password(decoded);
  if (!user || !password) return std::nullopt;
  return Credentials{.user = user.get(), .password = password.get()};
}

MHD_Result send(MHD_Connection* connection, unsigned status, const Response& response) {
  if (tracked(connection).isPassing) {
    MHD_add_response_header(response.get(), MHD_HTTP_HEADER_CONNECTION, "close");
  }
  return MHD_queue_response(connection, status, response.get());
}

MHD_Result refuse(MHD_Connection* connection, const Refusal& refusal) {
  const Response response = responseOf(refusal.reason, kPlainType);
  if (refusal.status == MHD_HTTP_METHOD_NOT_ALLOWED) {
    MHD_add_response_header(response.get(), MHD_HTTP_HEADER_ALLOW, "GET, HEAD");
  }
  if (refusal.status == kUnauthorized) {
    MHD_add_response_header(response.get(), MHD_HTTP_HEADER_WWW_AUTHENTICATE,
                            "Basic realm=\"halvermonte-monitor\", charset=\"UTF-8\"");
  }
  return send(connection, refusal.status, response);
}

MHD_Result givePage(MHD_Connection* connection) {
  const Response response = responseOf(kPage, kPageType);
  MHD_add_response_header(response.get(), "Content-Security-Policy", kPagePolicy.data());
  MHD_add_response_header(response.get(), "Referrer-Policy", "no-referrer");
  return send(connection, kOk, response);
}

/// The daemon closes a connection whose other end seems to have gone.
void dismiss(const Connections::Connection& connection) {
  shutdown(connection.descriptor, SHUT_RDWR);
}

}  // namespace

/// A request on its way to its answer.
struct Server::Asked {
  enum class Trust : uint8_t { unknown, given, refused };

  Resource resource;
  Trust trust;
};

Server::Server(const ListenAddress& address, ServerTimes times, ServedPass first,
               Protection protection)
    : socket_(address),
      times_(times),
      tls_(std::move(protection.tls)),
      connections_(Connections::Limits(), dismiss),
      streams_(times.heartbeat) {
  if (protection.users) checks_.emplace(std::move(*protection.users));
  publish(std::move(first));
  start();
}

Server::~Server() {
  streams_.close();
  if (checks_) checks_->close();
}

void Server::start() {
  std::vector<MHD_OptionItem> more;
  if (tls_) {
    more.push_back({MHD_OPTION_HTTPS_MEM_CERT, 0, tls_->certificate.data()});
    more.push_back({MHD_OPTION_HTTPS_MEM_KEY, 0, tls_->key.data()});
    more.push_back({MHD_OPTION_HTTPS_PRIORITIES, 0, const_cast<char*>(kTlsPriorities)});
  }
  more.push_back({MHD_OPTION_END, 0, nullptr});
  // Not epoll: libmicrohttpd waits only for new bytes there, and misses the end of a connection
  // that comes together with the last ones.
  const unsigned flags = MHD_USE_POLL_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME |
                         (tls_ ? static_cast<unsigned>(MHD_USE_TLS) : 0U);
  daemon_.reset(MHD_start_daemon(flags, 0, nullptr, nullptr, take, this,                   //
                                 MHD_OPTION_LISTEN_SOCKET, socket_.release(),              //
                                 MHD_OPTION_NOTIFY_CONNECTION, noteConnection, this,       //
                                 MHD_OPTION_NOTIFY_COMPLETED, noteEnd, this,               //
                                 MHD_OPTION_CONNECTION_LIMIT, kMostSockets,                //
                                 MHD_OPTION_CONNECTION_TIMEOUT, times_.idleSeconds,        //
                                 MHD_OPTION_CONNECTION_MEMORY_LIMIT, kMemoryOfConnection,  //
                                 MHD_OPTION_ARRAY, more.data(), MHD_OPTION_END));
  if (daemon_ == nullptr) throw Failure("--listen: the HTTP server does not start");
}

void Server::publish(ServedPass next) {
  auto pass = std::make_shared<const ServedPass>(std::move(next));
  streams_.publish(pass);
  const std::lock_guard lock(mutex_);
  latest_.swap(pass);
}

std::shared_ptr<const ServedPass> Server::latest() const {
  const std::lock_guard lock(mutex_);
  return latest_;
}

void Server::noteConnection(void* server, MHD_Connection* connection, void** context,
                            MHD_ConnectionNotificationCode code) {
  Connections& connections = static_cast<Server*>(server)->connections_;
  if (code == MHD_CONNECTION_NOTIFY_CLOSED) {
    return connections.remove(*static_cast<const Connection*>(*context));
  }
  const sockaddr& client = *about(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS).client_addr;
  const Connection& added = connections.add(
      nameWithoutPort(client), about(connection, MHD_CONNECTION_INFO_CONNECTION_FD).connect_fd);
  *context = const_cast<Connection*>(&added);
  if (added.isPassing) {
    MHD_set_connection_option(connection, MHD_CONNECTION_OPTION_TIMEOUT, kPassingSeconds);
  }
}

MHD_Result Server::take(void* server, MHD_Connection* connection, const char* path,
                        const char* method, const char*, const char*, size_t*, void** context) {
  auto& itself = *static_cast<Server*>(server);
  if (*context == nullptr) {
    return itself.begin(connection, requestOf(connection, method, path), context);
  }
  return itself.answer(connection, *static_cast<Asked*>(*context));
}

void Server::noteEnd(void* server, MHD_Connection* connection, void** context,
                     MHD_RequestTerminationCode) {
  delete static_cast<Asked*>(*context);
  static_cast<Server*>(server)->connections_.setPhase(tracked(connection),
                                                      Connections::Phase::idle);
}

// The daemon closes a connection that is answered here, in the first of its calls for a request:
// what follows a refused one may be its body.
MHD_Result Server::begin(MHD_Connection* connection, const Request& request, void** context) {
  const auto decision = decide(request, isLoopback() ? Hosts::loopback : Hosts::any);
  if (const auto* refusal = std::get_if<Refusal>(&decision)) return refuse(connection, *refusal);
  *context = new Asked{.resource = std::get<Resource>(decision),
                       .trust = checks_ ? Asked::Trust::unknown : Asked::Trust::given};
  connections_.setPhase(tracked(connection), Connections::Phase::answering);
  if (tracked(connection).isPassing) {
    MHD_set_connection_option(connection, MHD_CONNECTION_OPTION_TIMEOUT, times_.idleSeconds);
  }
  return MHD_YES;
}

MHD_Result Server::answer(MHD_Connection* connection, Asked& asked) {
  switch (asked.trust) {
    case Asked::Trust::given:
      return give(connection, asked.resource);
    case Asked::Trust::refused:
      return refuse(connection, {kUnauthorized, "wrong user or password\n"});
    case Asked::Trust::unknown:
      return check(connection, asked);
  }
  return MHD_NO;
}

MHD_Result Server::check(MHD_Connection* connection, Asked& asked) {
  std::optional<Credentials> credentials = credentialsOf(connection);
  if (!credentials) return refuse(connection, {kUnauthorized, "a password is needed\n"});
  if (checks_->remember(*credentials)) return give(connection, asked.resource);
  if (!checks_->haveRoom()) {
    return refuse(connection, {kBusy, "too many passwords wait to be checked\n"});
  }
  MHD_suspend_connection(connection);
  checks_->start(std::move(*credentials), [connection, &asked](bool areRight) {
    asked.trust = areRight ? Asked::Trust::given : Asked::Trust::refused;
    MHD_resume_connection(connection);
  });
  return MHD_YES;
}

MHD_Result Server::give(MHD_Connection* connection, Resource resource) {
  switch (resource) {
    case Resource::page:
      return givePage(connection);
    case Resource::metrics:
      return giveText(connection, &ServedPass::metrics, kMetricsType);
    case Resource::record:
      return giveText(connection, &ServedPass::record, kJsonType);
    case Resource::readings:
      return giveText(connection, &ServedPass::readings, kJsonType);
    case Resource::recordStream:
      return stream(connection, &ServedPass::record);
    case Resource::readingsStream:
      return stream(connection, &ServedPass::readings);
    case Resource::health:
      return giveHealth(connection);
  }
  return MHD_NO;
}

MHD_Result Server::giveText(MHD_Connection* connection, EventStreams::LineOf text,
                            const char* type) {
  const std::shared_ptr<const ServedPass> pass = latest();
  return send(connection, kOk, responseOf((*pass).*text, type, pass));
}

MHD_Result Server::stream(MHD_Connection* connection, EventStreams::LineOf line) {
  if (!connections_.mayStream(tracked(connection))) {
    return refuse(connection, {kBusy, "there are too many streams already\n"});
  }
  connections_.setPhase(tracked(connection), Connections::Phase::streaming);
  return send(connection, kOk, streams_.open(connection, line));
}

MHD_Result Server::giveHealth(MHD_Connection* connection) const {
  const auto lastGood = latest()->lastGood;
  if (lastGood == std::chrono::steady_clock::time_point()) {
    return refuse(connection, {kBusy, "no pass was complete yet\n"});
  }
  const std::chrono::duration<double> age = std::chrono::steady_clock::now() - lastGood;
  if (age < times_.staleAfter) return send(connection, kOk, responseOf("ok\n", kPlainType));
  char reason[100];
  std::snprintf(reason, sizeof reason, "the last complete pass ended %.1f seconds ago\n",
                age.count());
  return send(connection, kBusy, responseOfCopy(reason, kPlainType));
}

}  // namespace halvermonte
