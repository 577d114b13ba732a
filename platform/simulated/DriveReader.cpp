#include "platform/simulated/DriveReader.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte {
namespace {

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

DriveList readDrives(const JsonPlace& place) {
  if (place.isNull()) return std::nullopt;
  std::vector<Drive> drives;
  for (const JsonPlace& drive : place.elements("an array of drives or null")) {
    drives.push_back(readDrive(drive));
  }
  return drives;
}

}  // namespace halvermonte
