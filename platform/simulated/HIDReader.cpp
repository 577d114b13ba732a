#include "platform/simulated/HIDReader.hpp"

#include <string_view>
#include <utility>

#include "platform/simulated/WaveReader.hpp"

namespace halvermonte {
namespace {

HIDServiceDescription readService(const JsonPlace& place) {
  place.expectOnly({"product", "value", "wave"});
  HIDServiceDescription service;
  if (const auto product = place.find("product")) service.product = product->text();
  if (const auto reading = place.atMostOneOf({"value", "wave"})) {
    if (reading->name == "value") {
      service.reading = reading->place.number();
    } else {
      service.reading = readWave(reading->place);
    }
  }
  return service;
}

HIDServiceList readServices(const JsonPlace& place) {
  if (place.isNull()) return std::nullopt;
  std::vector<HIDServiceDescription> services;
  for (const JsonPlace& service : place.elements("an array of services or null")) {
    services.push_back(readService(service));
  }
  return services;
}

}  // namespace

HIDChange readHID(const JsonPlace& place) {
  place.expectOnly({"temperature", "current", "voltage"});
  HIDChange change;
  const std::pair<std::string_view, HIDSensorKind> kinds[] = {
      {"temperature", HIDSensorKind::temperature},
      {"current", HIDSensorKind::current},
      {"voltage", HIDSensorKind::voltage}};
  for (const auto& [name, kind] : kinds) {
    if (const auto list = place.find(name)) change[static_cast<size_t>(kind)] = readServices(*list);
  }
  return change;
}

}  // namespace halvermonte
