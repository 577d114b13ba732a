// What the kernel's hardware monitoring holds: chips and their channels, before any meaning is
// given to them.
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

/// What one of the kernel's units is in degrees Celsius, revolutions per minute, volts, amperes,
/// watts, joules, percent or hertz.
double unitOf(Quantity quantity);

/// One reading of a chip.
struct Channel {
  Quantity quantity = Quantity::temperature;
  int number = 0;
  std::string name;   ///< "temp3"
  std::string file;   ///< "temp3_input"
  std::string label;  ///< as the driver pads it; "" where the kernel gives none
  bool hasFault = false;
  bool hasEnable = false;
};

struct Chip {
  std::string driver;  ///< the chip's `name`
  std::string device;  ///< device path: with the driver, what the chip is known by
  std::string parent;  ///< the device's folder; "" where there is none
  std::string folder;  ///< where the channels' files lie
  std::vector<Channel> channels;
};

/// All chips that have a channel, in the order of the hardware. The numbers that the kernel gave
/// them decide nothing: they change over boots.
std::vector<Chip> chipsIn(SystemCalls& calls, const std::string& sys);

/// The text's first line, without its end; every character but printable ASCII becomes "?".
std::string firstLine(std::string_view text);

}  // namespace halvermonte::linuxos
