#include "platform/linux/hwmon/ProcessorPlaces.hpp"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "platform/linux/StablePath.hpp"
#include "platform/linux/Text.hpp"
#include "platform/linux/hwmon/NameTable.hpp"
#include "platform/linux/hwmon/NameWords.hpp"

namespace halvermonte::linuxos {
namespace {

constexpr std::string_view kAMD = "k10temp|zenpower";

/// The number of AMD's chip: its processors are the PCI devices from 18 on. 0 for any other device.
size_t nodeNumber(const Chip& chip) {
  constexpr size_t kFirst = 0x18;
  const std::string_view path = chip.device;
  const auto address = pciAddressOf(path.substr(path.rfind('/') + 1));
  if (!address) return 0;
  size_t device = 0;
  std::from_chars(address->function.data(), address->function.data() + 2, device, 16);
  return device < kFirst ? 0 : device - kFirst;
}

size_t numberOr0(std::string_view text) {
  return static_cast<size_t>(unsignedInteger(numberAtEnd(text)).value_or(0));
}

bool isCore(const Channel& channel) { return matches("Core *", trimmed(channel.label)); }

int64_t coreNumber(const Channel& channel) {
  return integer(numberAtEnd(trimmed(channel.label))).value_or(-1);
}

}  // namespace

ProcessorPlaces::Node ProcessorPlaces::node() const {
  if (matches(kAMD, chip_.kind)) return nodeOfAMD();
  if (chip_.kind == "coretemp") {  // on "platform/coretemp.1"
    const size_t die = numberOr0(chip_.device);
    return {.package = topology_.packageOfDie(die),
            .die = topology_.isFirstOfPackage(die) ? size_t{0} : size_t{1}};
  }
  const std::string_view driver = chip_.driver;  // "peci_cputemp.cpu1.30"
  const std::string_view rest = driver.substr(std::min(driver.find(".cpu"), driver.size()));
  return {.package = numberOr0(rest.substr(0, rest.find('.', 1)))};
}

ProcessorPlaces::Node ProcessorPlaces::nodeOfAMD() const {
  size_t nodes = 1;
  for (const Chip& chip : chips_) {
    if (matches(kAMD, chip.kind)) nodes = std::max(nodes, nodeNumber(chip) + 1);
  }
  const size_t number = nodeNumber(chip_), packages = topology_.packages();
  const size_t dies = packages > 0 && nodes > packages ? nodes / packages : 1;
  return {.package = number / dies, .die = number % dies, .diesPerPackage = dies};
}

std::string ProcessorPlaces::socket() const { return "CPU " + std::to_string(node().package + 1); }

std::string ProcessorPlaces::processor() const { return node().package == 0 ? "CPU" : socket(); }

std::string ProcessorPlaces::die() const {
  const Node place = node();
  return place.diesPerPackage == 1 ? "Package" : "Die " + std::to_string(place.die + 1);
}

std::string ProcessorPlaces::core(const Channel& channel) const {
  const int64_t number = coreNumber(channel);
  const size_t package = node().package;
  ProcessorTopology::Core core{.place = rankInChip(number)};
  if (knowsAllCores(package)) core = topology_.core(package, number).value_or(core);
  return (core.isEfficient ? "Efficiency Core " : "Core ") + std::to_string(core.place + 1);
}

bool ProcessorPlaces::knowsAllCores(size_t package) const {
  return std::all_of(chip_.channels.begin(), chip_.channels.end(), [&](const Channel& channel) {
    return !isCore(channel) || topology_.core(package, coreNumber(channel)).has_value();
  });
}

size_t ProcessorPlaces::rankInChip(int64_t number) const {
  return static_cast<size_t>(std::count_if(
      chip_.channels.begin(), chip_.channels.end(),
      [&](const Channel& channel) { return isCore(channel) && coreNumber(channel) < number; }));
}

}  // namespace halvermonte::linuxos
