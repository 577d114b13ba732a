// Tables by driver: the names of temperatures, values that are not readings, and how to read.
// docs/linux.md prints them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace halvermonte::linuxos {

/// Whether the whole text matches a pattern. "*" stands for any characters, and "|" separates
/// alternatives.
bool matches(std::string_view patterns, std::string_view text);

/// How a driver's temperatures are called. The first row that fits is used.
struct NameRow {
  std::string_view driver;  ///< pattern of the chip's kind: its driver's name without a number
  /// Pattern of the kernel's label, or of the channel's name if it has none.
  std::string_view label;
  /// The name. Words in braces are replaced; NameWords.cpp has them. What stands before "|" names
  /// the device, and is shared by its sensors. "" if the sensor is never shown.
  std::string_view name;
};
std::span<const NameRow> nameRows();

/// The kinds of chips that no driver's row fits, by the class of their device.
inline constexpr std::string_view kSomeEthernet = "(Ethernet)";
inline constexpr std::string_view kSomeWireless = "(wireless)";

/// The drivers of a Mac's own controller.
inline constexpr std::string_view kControllers = "applesmc|macsmc_hwmon";

/// The drivers of processors, whose sensors have built-in keys.
inline constexpr std::string_view kProcessors =
    "coretemp|via_cputemp|k10temp|zenpower|cpu_thermal|cpu";

/// A sensor's built-in key. The engine has the same name for it on every processor.
struct BuiltInKeyRow {
  std::string_view name;  ///< as the rows above make it
  std::string_view key;
  /// Whether the sensor also has a key of its own, because its name follows from what other devices
  /// there are. For the short list, which reads built-in keys only.
  bool isAlias = false;
};
std::span<const BuiltInKeyRow> builtInKeyRows();

/// Which values of a driver are readings.
enum class Credibility : uint8_t {
  range,      ///< those in the range
  openInput,  ///< the same, but only after one below 80 degrees: an open input drifts above that
  constantsOfFirmware,  ///< those in the range, except the constants of a zone that is not built
};

struct CredibilityRow {
  std::string_view driver;  ///< pattern of the chip's kind
  std::string_view label;   ///< as in NameRow
  int lowest, highest;      ///< degrees Celsius
  Credibility credibility = Credibility::range;
};
/// The first row that fits. There is always one.
const CredibilityRow& credibilityOf(std::string_view driver, std::string_view label);
std::span<const CredibilityRow> credibilityRows();

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
