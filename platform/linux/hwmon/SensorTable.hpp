// Two tables: the catalogue keys for the kernel's temperatures, and how to read each driver.
// docs/linux.md prints them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace halvermonte::linuxos {

/// Whether the whole text matches a pattern. "*" stands for any characters, and "|" separates
/// alternatives.
bool matches(std::string_view patterns, std::string_view text);

/// How the sensors of a row share its keys.
enum class Spread : uint8_t {
  each,     ///< in the order of the hardware, each sensor gets the next free key
  package,  ///< the first chip of each processor package gets the package's key
};

struct KeyRow {
  std::string_view driver;  ///< pattern
  /// Pattern of the kernel's label, or of the channel's name if it has none. The first listed label
  /// that the chip has is used.
  std::string_view label;
  std::string_view keys;  ///< in order, separated by spaces; or one of the two below
  int lowest, highest;    ///< degrees Celsius; a value outside is not a reading
  Spread spread = Spread::each;
};

/// The drivers of a Mac's own controller.
inline constexpr std::string_view kControllers = "applesmc|macsmc_hwmon";

/// For the controller's own keys: the key is the label, or is in the device tree.
inline constexpr std::string_view kLabelIsKey = "(its label)";
inline constexpr std::string_view kKeyInDeviceTree = "(its apple,key-id)";

/// If two rows have the same key, the earlier row takes it.
std::span<const KeyRow> keyRows();

/// How to read a driver.
enum class ReadPolicy : uint8_t {
  everyPass,
  command,    ///< each reading sends a command to the device: at most one in ten seconds
  onRequest,  ///< the same, and only if the program asks for it
  maySleep,   ///< the device may be asleep, and reading would wake it
};

struct ReadPolicyRow {
  std::string_view driver;  ///< pattern
  ReadPolicy policy;
};

/// A driver without a row is read in every pass.
std::span<const ReadPolicyRow> readPolicyRows();

}  // namespace halvermonte::linuxos
