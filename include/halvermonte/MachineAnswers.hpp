// What a Machine answers, as values. Their members are the caller's own, and every default is what
// an empty computer answers.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace halvermonte {

/// The codes of IOKit that the portable platform itself gives.
inline constexpr uint32_t kCodeSuccess = 0;
inline constexpr uint32_t kCodeError = 0xE00002BC;
inline constexpr uint32_t kCodeBadArgument = 0xE00002C2;
inline constexpr uint32_t kCodeInvalidDestination = 0x10000003;

/// The result bytes of a controller that has no such key, and of one whose key has another size.
inline constexpr uint8_t kSMCKeyNotFound = 0x84;
inline constexpr uint8_t kSMCKeySizeMismatch = 0x87;

/// Whether "AppleSMC" can be matched: the code of the matching call and, if that is 0, whether it
/// found a service.
struct SMCService {
  uint32_t code = kCodeSuccess;
  bool present = false;
};

/// The answer to the key-info command. A nonzero `code` leaves the caller's reply unwritten; a
/// nonzero `result` comes in a reply whose other fields are 0.
struct SMCKeyInfo {
  uint32_t code = kCodeSuccess;
  uint8_t result = 0;
  uint32_t dataSize = 0;
  uint32_t dataType = 0;  ///< four-character code
};

/// The answer to the read command; `code` and `result` as in SMCKeyInfo.
struct SMCKeyBytes {
  uint32_t code = kCodeSuccess;
  uint8_t result = 0;
  std::array<uint8_t, 32> bytes{};
};

/// The HID sensor kinds, each a usage page and a usage.
enum class HIDSensorKind { temperature, current, voltage };

/// One HID sensor service. No `product`: it has no such property. No `value`: it gives no event.
struct HIDService {
  std::optional<std::string> product;
  std::optional<double> value;  ///< degrees Celsius, amperes or volts
};
using HIDServices = std::vector<HIDService>;

/// A block-storage driver whose properties cannot be read.
struct UnreadableDrive {};
/// A block-storage driver without a Statistics dictionary.
struct DriveWithoutStatistics {};
/// A driver's Statistics: bytes since it started, each of them optional.
struct DriveStatistics {
  std::optional<int64_t> bytesRead;
  std::optional<int64_t> bytesWritten;
};
using Drive = std::variant<UnreadableDrive, DriveWithoutStatistics, DriveStatistics>;

/// A display name that a machine adds to the built-in ones.
struct SensorName {
  std::string key;   ///< of the controller: four printable ASCII characters
  std::string name;  ///< for people: UTF-8, one line, not empty
};

/// One sensor that a machine knows. A machine that knows its sensors only as keys of its controller
/// fills in `key` and leaves the rest empty.
struct SensorListing {
  std::string driver;
  std::string device;    ///< device path: "pci0000:00/0000:00:18.3"
  std::string file;      ///< "temp1_input"
  std::string label;     ///< the kernel's; "" if it gives none
  std::string quantity;  ///< "temperature", "fan", "voltage", "current", "power", "energy",
                         ///< "humidity" or "frequency"
  std::string key;       ///< reads the sensor; "" if it has none
  std::string reason;    ///< why it has no key
  std::string state;     ///< "read", "opened each time", or why there is no reading
  std::string raw;       ///< the file's text; "" if there is none
  /// The reading in degrees Celsius, revolutions per minute, volts, amperes, watts, joules, percent
  /// or hertz; absent if there is none.
  std::optional<double> number = std::nullopt;
};
using SensorInventory = std::vector<SensorListing>;

/// A computer's memory, in bytes.
struct MemoryFacts {
  uint64_t total = 0;
  uint64_t free = 0;
  uint64_t used = 0;
  uint64_t inactive = 0;
  uint64_t wired = 0;  ///< never paged out
  uint64_t other = 0;  ///< what is left
};

/// What a machine says about itself besides its sensors. Each fact is absent if the machine does
/// not know it.
struct HostFacts {
  std::optional<std::string> modelName;
  std::optional<std::string> modelIdentifier;
  std::optional<int32_t> logicalCores;
  std::optional<uint64_t> uptime;  ///< seconds
  std::optional<MemoryFacts> memory;
};

/// No process has the identifier, or the one that has it has ended.
struct NoProcess {};
/// The machine cannot say.
struct UnreadableProcess {
  std::string reason;  ///< such as "Permission denied"
};
struct ProcessTimes {
  double cpuSeconds = 0;  ///< what all its threads have used since it started
  /// When it started, in a unit of the machine's own. A process that gets the same identifier later
  /// has another value.
  uint64_t start = 0;
};
using Process = std::variant<NoProcess, UnreadableProcess, ProcessTimes>;

}  // namespace halvermonte
