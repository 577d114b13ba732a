#include "platform/simulated/HIDReader.hpp"

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/simulated/HIDKindNames.hpp"
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
  place.expectOnly(kHIDKindNames);
  HIDChange change;
  for (size_t kind = 0; kind < kHIDSensorKinds; ++kind) {
    const auto list = place.find(kHIDKindNames[kind]);
    if (list) change[kind] = readServices(*list);
  }
  return change;
}

}  // namespace halvermonte
