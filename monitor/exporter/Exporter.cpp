#include "monitor/exporter/Exporter.hpp"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "monitor/Line.hpp"
#include "monitor/MachineChoice.hpp"
#include "monitor/PassView.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/Signals.hpp"
#include "monitor/StandardStreams.hpp"
#include "monitor/exporter/ServedPass.hpp"
#include "monitor/exporter/Server.hpp"
#include "monitor/exporter/TlsFiles.hpp"
#include "monitor/exporter/Users.hpp"

namespace halvermonte {
namespace {

/// Three intervals, but time enough for a busy computer.
ServerTimes timesOf(const Options& options) {
  constexpr std::chrono::steady_clock::duration kLeast = std::chrono::seconds(1);
  return {.staleAfter = std::max(3 * intervalOf(options), kLeast)};
}

Protection protectionOf(const Options& options) {
  Protection protection;
  if (options.tlsCertificate) {
    protection.tls = readTlsFiles(*options.tlsCertificate, *options.tlsKey);
  }
  if (options.users) protection.users.emplace(*options.users);
  return protection;
}

ServedPass servedPassOf(const PassView& view, ServedPasses& passes) {
  for (const std::string& line : view.complaints) std::fprintf(stderr, "%s\n", line.c_str());
  return passes.of(view);
}

std::unique_ptr<Server> startServer(const Options& options, ServedPass first,
                                    Protection protection) {
  const Signals::Blocked blocked;  // signals are for the thread that makes the passes
  return std::make_unique<Server>(*options.listen, timesOf(options), std::move(first),
                                  std::move(protection));
}

void say(const std::string& line) {
  std::fprintf(stderr, "halvermonte-monitor: %s\n", printable(line, true).c_str());
}

void announce(const Server& server, const Options& options) {
  if (!server.isLoopback() && !options.users) {
    say("warning: whoever reaches the port can read everything (see --users, --tls-certificate)");
  } else if (!server.isLoopback() && !options.tlsCertificate) {
    say("warning: passwords cross the network as they are (see --tls-certificate)");
  }
  std::fprintf(stderr, "listening on %s\n", server.url().c_str());
}

}  // namespace

void serve(const Options& options) {
  Protection protection = protectionOf(options);
  const Pause pause(options);
  const Choice choice = chooseMachine(options);
  Sampling& sampling = *choice.sampling;
  HeldMessages messages(HeldMessages::Streams::output);
  sampling.collectComplaints(messages);
  ServedPasses passes{std::chrono::duration<double>(options.interval)};
  const std::unique_ptr<Server> server =
      startServer(options, servedPassOf(sampling.pass(), passes), std::move(protection));
  announce(*server, options);
  makePasses(sampling, pause, options.ticks,
             [&](const PassView& view) { server->publish(servedPassOf(view, passes)); });
}

}  // namespace halvermonte
