#include "platform/simulated/MachineFile.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "platform/HardwareReportCommand.hpp"
#include "platform/simulated/DriveReader.hpp"
#include "platform/simulated/HIDReader.hpp"
#include "platform/simulated/HardwareReportReader.hpp"
#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/JsonValue.hpp"
#include "platform/simulated/SMCReader.hpp"
#include "platform/simulated/SensorNamesReader.hpp"

namespace halvermonte {
namespace {

std::optional<std::string> readCommandAnswer(const JsonPlace& place) {
  place.expectOnly({"output", "outputHex", "launches"});
  const auto [kind, answer] = place.exactlyOneOf({"output", "outputHex", "launches"});
  if (kind == "output") return answer.text();
  if (kind == "outputHex") return answer.hexBytes("hex digits, two for a byte");
  const auto* launches = std::get_if<bool>(&answer.value().content);
  if (launches == nullptr || *launches) answer.refuse("false");
  return std::nullopt;
}

MachineTick readTick(const JsonPlace& place, double defaultTime) {
  place.expectOnly({"time", "smc", "hid", "drives", "drivesRaise"});
  MachineTick tick;
  const auto time = place.find("time");
  tick.time = time ? time->number() : defaultTime;
  if (const auto smc = place.find("smc")) tick.smc = readSMC(*smc);
  if (const auto hid = place.find("hid")) tick.hid = readHID(*hid);
  if (const auto drives = place.find("drives")) tick.drives = readDrives(*drives);
  if (const auto reason = place.find("drivesRaise")) tick.drivesRaise = reason->text();
  return tick;
}

std::vector<MachineTick> readTicks(const JsonPlace& place) {
  constexpr std::string_view expectation = "an array of at least one tick";
  std::vector<MachineTick> ticks;
  for (const JsonPlace& tick : place.elements(expectation)) {
    ticks.push_back(readTick(tick, ticks.empty() ? 0 : ticks.back().time + 1));
  }
  if (ticks.empty()) place.refuse(expectation);
  return ticks;
}

MachineFile readMachine(const JsonPlace& root) {
  root.expectOnly({"name", "hostName", "sysctl", "commands", "processor", "names", "ticks"});
  MachineFile machine;
  machine.name = root.required("name").text();
  machine.hostName = machine.name;
  if (const auto hostName = root.find("hostName")) {
    machine.hostName.reset();
    if (!hostName->isNull()) machine.hostName = hostName->text("a text or null");
  }
  if (const auto sysctl = root.find("sysctl")) {
    for (const auto& [name, value] : sysctl->members()) {
      machine.kernelVariables.emplace(name, value.integer<int64_t>());
    }
  }
  if (const auto commands = root.find("commands")) {
    for (const auto& [command, answer] : commands->members()) {
      machine.commands.emplace(command, readCommandAnswer(answer));
    }
  }
  // emplace() keeps an answer that `commands` gives for the report's command.
  if (const auto processor = root.find("processor")) {
    machine.commands.emplace(kHardwareReportCommand, readHardwareReport(*processor));
  }
  if (const auto names = root.find("names")) machine.sensorNames = readSensorNames(*names);
  machine.ticks = readTicks(root.required("ticks"));
  return machine;
}

/// The bytes of the file at the path. Absent, with errno set, if it cannot be read.
std::optional<std::string> contentsOf(const std::string& path) {
  const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
  if (!file) return std::nullopt;
  std::string contents;
  std::array<char, 65536> buffer;
  while (const size_t size = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
    contents.append(buffer.data(), size);
  }
  if (std::ferror(file.get())) return std::nullopt;
  return contents;
}

}  // namespace

MachineFile MachineFile::fromFile(const std::string& path) {
  const std::optional<std::string> json = contentsOf(path);
  if (!json) {
    throw MachineFileError(path + ": expected a file that can be read (" + std::strerror(errno) +
                           ")");
  }
  return fromText(*json, path);
}

MachineFile MachineFile::fromText(std::string_view json, const std::string& fileName) {
  const JsonValue root = parseJson(json, fileName);
  return readMachine(JsonPlace(fileName, root));
}

}  // namespace halvermonte
