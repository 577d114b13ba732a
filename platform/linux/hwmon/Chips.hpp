// The chips and channels of the kernel's hardware monitoring, as the kernel lists them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

enum class Quantity : uint8_t {
  temperature,
  fan,
  voltage,
  current,
  power,
  energy,
  humidity,
  frequency
};

std::string_view nameOf(Quantity quantity);

/// The factor from the kernel's number to degrees Celsius, revolutions per minute, volts, amperes,
/// watts, joules, percent or hertz.
double unitOf(Quantity quantity);

/// One reading of a chip.
struct Channel {
  Quantity quantity = Quantity::temperature;
  int number = 0;
  std::string name;   ///< "temp3"
  std::string file;   ///< "temp3_input"
  std::string label;  ///< may be padded with blanks; "" if there is none
  bool hasFault = false;
  bool hasEnable = false;
};

/// The label, or the channel's name if there is none.
std::string_view labelOrName(const Channel& channel);

struct Chip {
  std::string driver;      ///< the chip's `name`
  std::string kind = "";   ///< the same without a number, or "(Ethernet)" for an interface's name
  std::string label = "";  ///< what the firmware calls the chip; "" if it does not
  std::string device;      ///< device path
  std::string stablePath = "";  ///< the same without what may change at a boot
  std::string parent;           ///< the device's folder; "" if there is none
  std::string folder;           ///< of the channels' files
  std::vector<Channel> channels;
};

/// Sets the chip's kind and stable path, which follow from its driver and its device.
void identify(SystemCalls& calls, const std::string& sys, Chip& chip);

/// All chips that have a channel, in the order of the hardware. The kernel's numbers for them are
/// ignored because they change from boot to boot.
std::vector<Chip> chipsIn(SystemCalls& calls, const std::string& sys);

/// The order of the hardware.
bool standsBefore(const Chip& first, const Chip& second);

/// The text's first line, without its end. A tab becomes a space, and any other character that is
/// not printable ASCII becomes "?".
std::string firstLine(std::string_view text);

}  // namespace halvermonte::linuxos
