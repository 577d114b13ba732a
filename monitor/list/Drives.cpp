#include "monitor/list/Drives.hpp"

#include <cstddef>
#include <variant>

#include "halvermonte/Exceptions.hpp"
#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte {
namespace {

ListedDrive listed(Machine& machine, size_t index) {
  const std::string source = machine.driveSource(index);
  ListedDrive drive{.source =
                        source.empty() ? "drive " + std::to_string(index + 1) : "block " + source};
  const Drive answer = machine.drive(index);
  if (const auto* const statistics = std::get_if<DriveStatistics>(&answer)) {
    drive.bytesRead = statistics->bytesRead.value_or(0);
    drive.bytesWritten = statistics->bytesWritten.value_or(0);
  } else {
    drive.reason = std::holds_alternative<UnreadableDrive>(answer) ? "unreadable" : "no statistics";
  }
  return drive;
}

}  // namespace

std::vector<ListedDrive> listedDrives(Machine& machine) {
  const size_t count = machine.driveCount().value_or(0);
  std::vector<ListedDrive> drives;
  try {
    machine.beginDriveWalk();
    for (size_t i = 0; i < count; ++i) drives.push_back(listed(machine, i));
  } catch (const PlatformException& exception) {
    drives.push_back({.source = "drives", .reason = exception.reason()});
  }
  return drives;
}

}  // namespace halvermonte
