// Which catalogue key each of the kernel's temperatures is shown by, and how each driver wants to
// be read: two tables. docs/linux.md prints them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace halvermonte::linuxos {

/// The whole text by a pattern in which "*" stands for any characters, or by one of several with
/// "|" between them.
bool matches(std::string_view patterns, std::string_view text);

/// How the sensors of a row are told apart.
enum class Spread : uint8_t {
  each,     ///< the next sensor in the order of the hardware has the next free key
  package,  ///< the first chip of each processor package has the package's key
};

struct KeyRow {
  std::string_view driver;  ///< pattern
  /// Pattern of the kernel's label, or of the channel's name where it has none. Of several, the
  /// first that the chip has counts.
  std::string_view label;
  std::string_view keys;  ///< in order, a blank between them; or one of the two below
  int lowest, highest;    ///< degrees Celsius; what the driver tells outside them is no reading
  Spread spread = Spread::each;
};

/// The drivers of a Mac's own controller.
inline constexpr std::string_view kControllers = "applesmc|macsmc_hwmon";

/// The controller's own keys: the label itself, and `apple,key-id` of the device tree.
inline constexpr std::string_view kLabelIsKey = "(its label)";
inline constexpr std::string_view kKeyInDeviceTree = "(its apple,key-id)";

/// Earlier rows take their keys first.
std::span<const KeyRow> keyRows();

/// How a driver wants to be read.
enum class ReadPolicy : uint8_t {
  everyPass,
  command,    ///< each reading is a command to the device: at most one in ten seconds
  onRequest,  ///< the same, and only where the program's user asked for it
  maySleep,   ///< the device may sleep, and reading would wake it
};

struct ReadPolicyRow {
  std::string_view driver;  ///< pattern
  ReadPolicy policy;
};

/// A driver in no row is read in every pass.
std::span<const ReadPolicyRow> readPolicyRows();

}  // namespace halvermonte::linuxos
