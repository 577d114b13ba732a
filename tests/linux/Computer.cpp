#include "tests/linux/Computer.hpp"

#include "tests/support/Sampler.hpp"

#include <array>

namespace halvermonte::test {
namespace {

void writeChip(Tree& tree, const std::string& folder, const std::string& driver,
               const std::vector<ChannelFiles>& channels) {
  tree.write(folder + "/name", driver + "\n");
  for (const ChannelFiles& channel : channels) {
    tree.write(folder + "/" + channel.name + "_input", channel.input + "\n");
    if (!channel.label.empty()) {
      tree.write(folder + "/" + channel.name + "_label", channel.label + "\n");
    }
  }
}

std::map<std::string, int> numbersByName(const Entries& entries) {
  std::map<std::string, int> numbers;
  for (const auto& [name, number] : entries) {
    EXPECT_FALSE(numbers.contains(name)) << name;
    numbers[name] = std::stoi(number);
  }
  return numbers;
}

std::string numbered(int number) { return "hwmon" + std::to_string(number); }

}  // namespace

void addChip(Tree& tree, int number, const std::string& driver, const std::string& device,
             const std::vector<ChannelFiles>& channels) {
  const bool isVirtual = device.starts_with("virtual/");
  const std::string parent = "sys/devices/" + device;
  const std::string folder = parent + (isVirtual ? "/" : "/hwmon/") + numbered(number);
  writeChip(tree, folder, driver, channels);
  if (!isVirtual) tree.link(folder + "/device", parent);
  tree.link("sys/class/hwmon/" + numbered(number), folder);
}

void addOldChip(Tree& tree, int number, const std::string& driver, const std::string& device,
                const std::vector<ChannelFiles>& channels) {
  const std::string parent = "sys/devices/" + device;
  const std::string folder = parent + "/hwmon/" + numbered(number);
  writeChip(tree, parent, driver, channels);
  tree.folder(folder).link(folder + "/device", parent);
  tree.link("sys/class/hwmon/" + numbered(number), folder);
}

std::string chipFile(int number, const std::string& file) {
  return "sys/class/hwmon/" + numbered(number) + "/" + file;
}

void addDeviceTreeSensor(Tree& tree, const std::string& node, const std::string& label) {
  const std::string folder = "sys/firmware/devicetree/base/soc/smc@23e400000/hwmon/" + node + "/";
  const std::string end(1, '\0');
  tree.write(folder + "apple,key-id", node.substr(node.size() - 4) + end);
  if (!label.empty()) tree.write(folder + "label", label + end);
}

void addProcessorOfPackage(Tree& tree, int number, int package) {
  tree.write(
      "sys/devices/system/cpu/cpu" + std::to_string(number) + "/topology/physical_package_id",
      std::to_string(package) + "\n");
}

std::string statOf(int64_t sectorsRead, int64_t sectorsWritten) {
  return "  10 0 " + std::to_string(sectorsRead) + " 5 20 0 " + std::to_string(sectorsWritten) +
         " 6 0 7 8 0 0 0 0 0 0\n";
}

void addDrive(Tree& tree, const std::string& name, const std::string& parent, int64_t sectorsRead) {
  const std::string device = "sys/devices/" + parent + "/" + name;
  tree.write(device + "/stat", statOf(sectorsRead, 0));
  tree.write(device + "/size", "500118192\n").write(device + "/hidden", "0\n");
  tree.folder(device + "/slaves").folder(device + "/holders");
  tree.link("sys/block/" + name, device);
}

std::vector<std::pair<std::string, float>> Connection::fans() const {
  std::vector<std::pair<std::string, float>> all;
  const auto count = static_cast<int>(SMCGetFanNumber("FNum", number_));
  for (int i = 0; i < count; ++i) {
    std::array<char, 13> name{};
    EXPECT_EQ(SMCGetFanName(i, name.data(), number_), 1);
    all.emplace_back(name.data(), SMCGetFanSpeed(i, number_));
  }
  return all;
}

double temperature(Machine& machine, const std::string& key) {
  return Connection(machine).temperature(key);
}

std::vector<std::pair<std::string, float>> fans(Machine& machine) {
  return Connection(machine).fans();
}

std::string keyOf(const std::string& driver, const std::string& device, const std::string& label) {
  Tree tree;
  addChip(tree, 0, driver, device, {{"temp1", "30000", label}});
  LinuxMachine machine(tree.roots(), {.driveTemperatures = true});
  return listed(machine, driver, "temp1_input").key;
}

std::map<std::string, int> shown(const Tree& tree, ComputerOptions options) {
  LinuxMachine machine(tree.roots(), options);
  Sampler sampler(machine);
  sampler.pass();
  return numbersByName(sampler.full());
}

std::map<std::string, int> shownInShort(const Tree& tree) {
  LinuxMachine machine(tree.roots());
  Sampler sampler(machine);
  sampler.pass();
  return numbersByName(sampler.mini());
}

SensorListing listed(LinuxMachine& machine, const std::string& driver, const std::string& file) {
  for (const SensorListing& sensor : machine.inventory()) {
    if (sensor.driver == driver && sensor.file == file) return sensor;
  }
  ADD_FAILURE() << driver << " " << file << " is not listed";
  return {};
}

}  // namespace halvermonte::test
