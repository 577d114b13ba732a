#include "monitor/exporter/Connections.hpp"

#include <algorithm>
#include <utility>

namespace halvermonte {

template <class Condition>
size_t Connections::count(Condition condition) const {
  return static_cast<size_t>(std::ranges::count_if(
      connections_, [&](const Connection& each) { return !each.isLeaving && condition(each); }));
}

void Connections::dismissOne() {
  const auto countOfAddress = [this](const Connection& one) {
    return count([&](const Connection& each) {
      return each.address == one.address && each.phase != Phase::streaming;
    });
  };
  size_t most = 0;
  for (const Connection& each : connections_) most = std::max(most, countOfAddress(each));
  for (const Phase phase : {Phase::fresh, Phase::idle, Phase::answering}) {
    const auto found = std::ranges::find_if(connections_, [&](const Connection& each) {
      return !each.isLeaving && each.phase == phase && countOfAddress(each) == most;
    });
    if (found == connections_.end()) continue;
    found->isLeaving = true;
    return dismiss_(*found);
  }
}

Connections::Connection& Connections::add(std::string address, int descriptor) {
  const size_t kept =
      count([&](const Connection& each) { return !each.isPassing && each.address == address; });
  if (count([](const Connection&) { return true; }) >= limits_.all) dismissOne();
  connections_.push_back({.address = std::move(address),
                          .descriptor = descriptor,
                          .isPassing = kept >= limits_.keptOfAddress});
  return connections_.back();
}

void Connections::remove(const Connection& connection) { connections_.erase(placeOf(connection)); }

void Connections::setPhase(const Connection& connection, Phase phase) {
  const Place place = placeOf(connection);
  place->phase = phase;
  connections_.splice(connections_.end(), connections_, place);
}

bool Connections::mayStream(const Connection& connection) const {
  const auto isStream = [](const Connection& each) { return each.phase == Phase::streaming; };
  const auto isStreamOfAddress = [&](const Connection& each) {
    return isStream(each) && each.address == connection.address;
  };
  return count(isStream) < limits_.streams && count(isStreamOfAddress) < limits_.streamsOfAddress;
}

Connections::Place Connections::placeOf(const Connection& connection) {
  return std::ranges::find_if(connections_,
                              [&](const Connection& each) { return &each == &connection; });
}

}  // namespace halvermonte
