// Chips laid out as the kernel lays them out, and what the engine's own queries read from them.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/LinuxMachine.hpp"
#include "smc/SMC.h"
#include "tests/linux/Tree.hpp"

namespace halvermonte::test {

/// A channel's files: "temp1", the text of its input, and its label.
struct ChannelFiles {
  std::string name;
  std::string input;
  std::string label = "";
};

/// Adds a chip of the given number. A device below "virtual/" gets no `device` link.
void addChip(Tree& tree, int number, const std::string& driver, const std::string& device,
             const std::vector<ChannelFiles>& channels);

/// Adds a chip of the old style, with all its files at the device.
void addOldChip(Tree& tree, int number, const std::string& driver, const std::string& device,
                const std::vector<ChannelFiles>& channels);

/// Where the chip's files are, "sys/class/hwmon/hwmon3/" and the rest.
std::string chipFile(int number, const std::string& file);

/// Adds a sensor of the controller to the device tree.
void addDeviceTreeSensor(Tree& tree, const std::string& node, const std::string& label);

/// Adds a processor of a package.
void addProcessorOfPackage(Tree& tree, int number, int package);

/// The text of a drive's counters.
std::string statOf(int64_t sectorsRead, int64_t sectorsWritten);

/// Adds a block device whose counters are that many sectors read, and none written.
void addDrive(Tree& tree, const std::string& name, const std::string& parent, int64_t sectorsRead);

/// A connection to the machine's controller, from its opening on.
class Connection {
 public:
  explicit Connection(Machine& machine) : guard_(machine) { EXPECT_EQ(SMCOpen(&number_), 0); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { EXPECT_EQ(SMCClose(number_), 0); }

  /// Degrees; -1 where there is no reading.
  double temperature(const std::string& key) const {
    return SMCGetTemperature(key.c_str(), number_);
  }
  /// The fans' names and speeds.
  std::vector<std::pair<std::string, float>> fans() const;

 private:
  ScopedMachine guard_;
  uint32_t number_ = 0;
};

/// One pass's reading.
double temperature(Machine& machine, const std::string& key);
std::vector<std::pair<std::string, float>> fans(Machine& machine);

/// What the inventory tells of a file: "driver file".
SensorListing listed(LinuxMachine& machine, const std::string& driver, const std::string& file);

}  // namespace halvermonte::test
