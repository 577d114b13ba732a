// The content of a machine file: what one computer answers, tick by tick. docs/machine-files.md
// describes the format. All values are checked, and nothing refers to the JSON.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/MachineFileError.hpp"
#include "platform/SensorNames.hpp"
#include "platform/simulated/HIDKindNames.hpp"
#include "platform/simulated/SMCAnswer.hpp"
#include "platform/simulated/Wave.hpp"

namespace halvermonte {

/// The state of AppleSMC: it is missing, cannot be opened, cannot be matched, or works.
enum class ControllerState { missing, refused, unmatched, present };

/// What a tick changes of the controller. Absent members stay as they were.
struct SMCChange {
  std::optional<ControllerState> service;
  std::optional<uint32_t> code;
  std::optional<uint32_t> absentCode;
  std::optional<bool> answersWideCalls;
  /// Whether the tick gives `keys`, even as an empty object.
  bool givesKeys = false;
  /// The answers by key. If an answer is absent, the controller loses the key.
  std::map<uint32_t, std::optional<SMCAnswer>> keys;
};

/// A HID sensor service. Its reading is fixed, a wave or absent.
struct HIDServiceDescription {
  std::optional<std::string> product;
  std::variant<std::monostate, double, Wave> reading;
};

/// The services of a kind, in order. Absent if the event system returns no list.
using HIDServiceList = std::optional<std::vector<HIDServiceDescription>>;
/// What a tick changes of the services, by HIDSensorKind. Absent lists stay as they were.
using HIDChange = std::array<std::optional<HIDServiceList>, kHIDSensorKinds>;

/// The block-storage drivers. Absent if the matching call fails.
using DriveList = std::optional<std::vector<Drive>>;

/// One state of the machine, as changes from the state before.
struct MachineTick {
  double time = 0;  ///< of the clock, in seconds
  SMCChange smc;
  HIDChange hid;
  std::optional<DriveList> drives;
  std::optional<std::string> drivesRaise;  ///< reading the drives raises this reason
};

struct MachineFile {
  std::string name;
  std::optional<std::string> hostName;
  std::map<std::string, int64_t> kernelVariables;
  /// Outputs by exact command. If an output is absent, the command cannot be started.
  std::map<std::string, std::optional<std::string>> commands;
  std::vector<SensorName> sensorNames;
  std::deque<MachineTick> ticks;  ///< at least one

  static constexpr size_t kMostBytes = 64'000'000;

  /// Reads the file at the path, or the text of a file. Both throw MachineFileError, also if a pass
  /// over a tick would end the process. `fileName` is the file's name in the error message.
  static MachineFile fromFile(const std::string& path);
  static MachineFile fromText(std::string_view json, const std::string& fileName);
};

}  // namespace halvermonte
