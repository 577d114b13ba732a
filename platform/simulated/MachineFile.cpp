#include "platform/simulated/MachineFile.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "platform/HardwareReportCommand.hpp"
#include "platform/simulated/DriveReader.hpp"
#include "platform/simulated/FanLimit.hpp"
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

/// Reads ticks in order, one by one.
class TickReader {
 public:
  TickReader(const std::string& fileName, std::deque<MachineTick>& ticks)
      : root_(fileName, none_), place_(root_.at("ticks", array_)), ticks_(ticks) {}

  void read(size_t index, const JsonValue& tick) {
    const JsonPlace place = place_.at(index, tick);
    ticks_.push_back(readTick(place, ticks_.empty() ? 0 : ticks_.back().time + 1));
    fanLimit_.check(ticks_.back(), place);
  }

 private:
  const JsonValue none_;
  const JsonValue array_{JsonValue::Array()};
  const JsonPlace root_;
  const JsonPlace place_;
  std::deque<MachineTick>& ticks_;
  FanLimit fanLimit_;
};

/// Reads all but the elements of `ticks`, which the machine has.
void readMachine(const JsonPlace& root, MachineFile& machine) {
  root.expectOnly({"name", "hostName", "sysctl", "commands", "processor", "names", "ticks"});
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
  constexpr std::string_view expectation = "an array of at least one tick";
  const JsonPlace ticks = root.required("ticks");
  if (ticks.elements(expectation).empty() && machine.ticks.empty()) ticks.refuse(expectation);
}

/// The bytes of the file at the path, or the first of them if they are too many. Absent, with errno
/// set, if it cannot be read.
std::optional<std::string> contentsOf(const std::string& path) {
  const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
  if (!file) return std::nullopt;
  std::string contents;
  std::array<char, 65536> buffer;
  while (contents.size() <= MachineFile::kMostBytes) {
    const size_t size = std::fread(buffer.data(), 1, buffer.size(), file.get());
    if (size == 0) break;
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
  if (json.size() > kMostBytes) {
    throw MachineFileError(fileName + ": expected at most " + std::to_string(kMostBytes / 1000000) +
                           " MB");
  }
  MachineFile machine;
  TickReader ticks(fileName, machine.ticks);
  const JsonValue root =
      parseJson(json, fileName, "ticks",
                [&](size_t index, const JsonValue& tick) { ticks.read(index, tick); });
  readMachine(JsonPlace(fileName, root), machine);
  return machine;
}

}  // namespace halvermonte
