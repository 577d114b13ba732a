// Reads what a tick says about HID sensors and drives.
#include <cmath>

#include "platform/simulated/MachineFileReaders.hpp"

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

Drive readDrive(const JsonPlace& place) {
  if (place.isNull()) return DriveWithoutStatistics{};
  const auto& content = place.value().content;
  if (const auto* text = std::get_if<std::string>(&content); text && *text == "unreadable") {
    return UnreadableDrive{};
  }
  if (!std::holds_alternative<JsonValue::Object>(content)) {
    place.refuse(R"(an object, null or "unreadable")");
  }
  place.expectOnly({"Bytes (Read)", "Bytes (Write)"});
  DriveStatistics statistics;
  if (const auto bytes = place.find("Bytes (Read)"))
    statistics.bytesRead = bytes->integer<int64_t>();
  if (const auto bytes = place.find("Bytes (Write)")) {
    statistics.bytesWritten = bytes->integer<int64_t>();
  }
  return statistics;
}

}  // namespace

Wave readWave(const JsonPlace& place) {
  place.expectOnly({"mean", "amplitude", "period", "phase"});
  Wave wave{.mean = place.required("mean").number(),
            .amplitude = place.required("amplitude").number(),
            .period = place.required("period").number()};
  if (const auto phase = place.find("phase")) wave.phase = phase->number();
  if (wave.period == 0) place.required("period").refuse("a number other than 0");
  if (!std::isfinite(wave.lowest()) || !std::isfinite(wave.highest())) {
    place.refuse("a mean that plus and minus the amplitude stays within a 64-bit float");
  }
  return wave;
}

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

DriveList readDrives(const JsonPlace& place) {
  if (place.isNull()) return std::nullopt;
  std::vector<Drive> drives;
  for (const JsonPlace& drive : place.elements("an array of drives or null")) {
    drives.push_back(readDrive(drive));
  }
  return drives;
}

}  // namespace halvermonte
