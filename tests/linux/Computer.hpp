// Lays out chips as the kernel does, and reads them through the engine's queries.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "halvermonte/SMC.h"
#include "platform/linux/LinuxMachine.hpp"
#include "tests/linux/Tree.hpp"

namespace halvermonte::test {

/// A channel's name such as "temp1", and the texts of its input and its label.
struct ChannelFiles {
  std::string name;
  std::string input;
  std::string label = "";
};

/// Adds a chip with the number. A device below "virtual/" gets no `device` link.
void addChip(Tree& tree, int number, const std::string& driver, const std::string& device,
             const std::vector<ChannelFiles>& channels);

/// Adds a chip of an old driver, with all its files in the device's folder.
void addOldChip(Tree& tree, int number, const std::string& driver, const std::string& device,
                const std::vector<ChannelFiles>& channels);

/// The path of a chip's file, such as "sys/class/hwmon/hwmon3/name".
std::string chipFile(int number, const std::string& file);

/// Adds a sensor of the controller to the device tree.
void addDeviceTreeSensor(Tree& tree, const std::string& node, const std::string& label);

/// Adds a processor to a package.
void addProcessorOfPackage(Tree& tree, int number, int package);

/// The text of a drive's counters.
std::string statOf(int64_t sectorsRead, int64_t sectorsWritten);

/// Adds a block device that has read that many sectors and written none.
void addDrive(Tree& tree, const std::string& name, const std::string& parent, int64_t sectorsRead);

/// An open connection to the machine's controller.
class Connection {
 public:
  explicit Connection(Machine& machine) : guard_(machine) { EXPECT_EQ(SMCOpen(&number_), 0); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { EXPECT_EQ(SMCClose(number_), 0); }

  /// In degrees. -1 if there is no reading.
  double temperature(const std::string& key) const {
    return SMCGetTemperature(key.c_str(), number_);
  }
  /// The fans' names and speeds.
  std::vector<std::pair<std::string, float>> fans() const;

 private:
  ScopedMachine guard_;
  uint32_t number_ = 0;
};

/// The readings of one pass.
double temperature(Machine& machine, const std::string& key);
std::vector<std::pair<std::string, float>> fans(Machine& machine);

/// The key of a chip's temperature, with or without a label. It does not depend on other chips.
std::string keyOf(const std::string& driver, const std::string& device,
                  const std::string& label = "");

/// The temperatures in the record of a computer's first pass, by name.
std::map<std::string, int> shown(const Tree& tree, ComputerOptions options = {});
/// Those of the short list.
std::map<std::string, int> shownInShort(const Tree& tree);

/// The inventory's entry for a driver's file.
SensorListing listed(LinuxMachine& machine, const std::string& driver, const std::string& file);

}  // namespace halvermonte::test
