// A machine file, read: what one computer answers, tick by tick. docs/machine-files.md is the
// format. Everything here is checked and ready to be answered from; nothing refers to the JSON any
// more.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/portable/Machine.hpp"
#include "platform/simulated/HIDKindNames.hpp"
#include "platform/simulated/MachineFileError.hpp"
#include "platform/simulated/SMCAnswer.hpp"
#include "platform/simulated/Wave.hpp"

namespace halvermonte {

/// How AppleSMC shows itself: absent, refusing to be opened, failing to be matched, or at work.
enum class ControllerState { missing, refused, unmatched, present };

/// What a tick says about the controller. Absent: as before.
struct SMCChange {
  std::optional<ControllerState> service;
  std::optional<uint32_t> code;
  std::optional<uint32_t> absentCode;
  std::optional<bool> answersWideCalls;
  /// Whether the tick gives `keys`, be it an empty object.
  bool givesKeys = false;
  /// By key; absent: the controller loses the key.
  std::map<uint32_t, std::optional<SMCAnswer>> keys;
};

/// A HID sensor service, its reading fixed, moving or absent.
struct HIDServiceDescription {
  std::optional<std::string> product;
  std::variant<std::monostate, double, Wave> reading;
};

/// The services of a kind in service order; absent: the event system returns no list.
using HIDServiceList = std::optional<std::vector<HIDServiceDescription>>;
/// By HIDSensorKind, what a tick says about the services; absent: as before.
using HIDChange = std::array<std::optional<HIDServiceList>, kHIDSensorKinds>;

/// The block-storage drivers; absent: the matching call fails.
using DriveList = std::optional<std::vector<Drive>>;

/// One state of the machine, as the difference from the state before.
struct MachineTick {
  double time = 0;  ///< what the clock shows, in seconds
  SMCChange smc;
  HIDChange hid;
  std::optional<DriveList> drives;
  std::optional<std::string> drivesRaise;  ///< the reason that reading the drives raises
};

struct MachineFile {
  std::string name;
  std::optional<std::string> hostName;
  std::map<std::string, int64_t> kernelVariables;
  /// Output by exact command; absent output: the command cannot be started.
  std::map<std::string, std::optional<std::string>> commands;
  std::vector<MachineTick> ticks;  ///< at least one

  /// Reads the file at the path, or the text of one. Both throw MachineFileError; `fileName` is
  /// only what its message calls the file.
  static MachineFile fromFile(const std::string& path);
  static MachineFile fromText(std::string_view json, const std::string& fileName);
};

}  // namespace halvermonte
