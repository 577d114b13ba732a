#include "monitor/exporter/Exporter.hpp"
#include "monitor/PassView.hpp"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "monitor/Signals.hpp"
#include "monitor/StandardStreams.hpp"
#include "monitor/exporter/ServedPass.hpp"
#include "monitor/exporter/Server.hpp"

namespace halvermonte {
namespace {

/// Three intervals, but time enough for a busy computer.
ServerTimes timesOf(const Options& options) {
  constexpr std::chrono::steady_clock::duration kLeast = std::chrono::seconds(1);
  return {.staleAfter = std::max(3 * intervalOf(options), kLeast)};
}

ServedPass servedPassOf(const PassView& view, ServedPasses& passes) {
  for (const std::string& line : view.complaints) std::fprintf(stderr, "%s\n", line.c_str());
  return passes.of(view);
}

std::unique_ptr<Server> startServer(const Options& options, ServedPass first) {
  const Signals::Blocked blocked;  // signals are for the thread that makes the passes
  return std::make_unique<Server>(*options.listen, timesOf(options), std::move(first));
}

void announce(const Server& server) {
  if (!server.isLoopback()) {
    std::fputs("halvermonte-monitor: warning: other computers can read this one's sensors\n",
               stderr);
  }
  std::fprintf(stderr, "listening on %s\n", server.url().c_str());
}

}  // namespace

void serve(Sampling& sampling, const Options& options) {
  const Pause pause(options);
  HeldMessages messages(HeldMessages::Streams::output);
  sampling.collectComplaints(messages);
  ServedPasses passes{std::chrono::duration<double>(options.interval)};
  const std::unique_ptr<Server> server =
      startServer(options, servedPassOf(sampling.pass(), passes));
  announce(*server);
  makePasses(sampling, pause, options.ticks,
             [&](const PassView& view) { server->publish(servedPassOf(view, passes)); });
}

}  // namespace halvermonte
