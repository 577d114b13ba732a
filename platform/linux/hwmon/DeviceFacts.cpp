#include "platform/linux/hwmon/DeviceFacts.hpp"

#include <cstddef>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/DevicePath.hpp"
#include "platform/linux/Files.hpp"
#include "platform/linux/StablePath.hpp"
#include "platform/linux/Text.hpp"
#include "platform/linux/hwmon/NameWords.hpp"

namespace halvermonte::linuxos {
namespace {

/// The model in a SATA drive's own description of itself, all 40 characters of it; the kernel's
/// `model` has only 16.
std::string wholeModel(SystemCalls& calls, const std::string& device) {
  constexpr size_t kModelStart = 114, kModelSize = 40;
  std::string model = textOf(calls, device + "/vpd_pg89").value_or("");
  if (model.size() < kModelStart + kModelSize) return "";
  model = model.substr(kModelStart, kModelSize);
  for (size_t i = 0; i < kModelSize; i += 2) std::swap(model[i], model[i + 1]);
  return printableWords(model);
}

std::string scsiModel(SystemCalls& calls, const std::string& device) {
  const std::string vendor = trimmedTextOf(calls, device + "/vendor");
  std::string model = printableWords(trimmedTextOf(calls, device + "/model"));
  if (model.empty()) return model;
  if (vendor != "ATA") return printableWords(vendor) + " " + model;
  const std::string whole = wholeModel(calls, device);
  return whole.starts_with(model) ? whole : model;
}

/// The PCI addresses of a device path, from the root on.
std::vector<std::string_view> pciSteps(std::string_view devicePath) {
  std::vector<std::string_view> steps;
  for (const std::string_view step : split(devicePath, '/')) {
    if (pciAddressOf(step)) steps.push_back(step);
  }
  return steps;
}

/// The way to a PCI device as `lspci -P` prints it, without steps that lead to the only device
/// behind a bridge: "00:01.2/03.0". "" if it is not a PCI device.
std::string pciPath(std::string_view devicePath) {
  std::string path;
  for (const std::string_view step : pciSteps(devicePath)) {
    const std::string_view function = pciAddressOf(step)->function;
    if (path.empty()) {
      path = step.starts_with("0000:") ? step.substr(5) : step;
    } else if (function != "00.0") {
      path.append("/").append(function);
    }
  }
  return path;
}

/// The number that is printed at the slot. "" if the device is not in one by itself.
std::string slotOf(SystemCalls& calls, const std::string& sys, std::string_view devicePath) {
  const std::vector<std::string_view> steps = pciSteps(devicePath);
  if (steps.empty()) return "";
  const std::string slots = sys + "/bus/pci/slots";
  for (const std::string& slot : namesOrNone(calls, slots)) {
    const std::string address = trimmedTextOf(calls, slots + "/" + slot + "/address");
    if (pciAddressOf(steps.back())->slot == address) return slot;
  }
  return "";
}

bool hasManySATAControllers(SystemCalls& calls, const std::string& sys) {
  std::set<std::string> controllers;
  const std::string ports = sys + "/class/ata_port";
  for (const std::string& port : namesOrNone(calls, ports)) {
    controllers.insert(pciPath(devicePath(sys, ports + "/" + port).value_or("")));
  }
  return controllers.size() > 1;
}

std::string joined(const std::string& first, const std::string& second) {
  return first.empty() || second.empty() ? first + second : first + " " + second;
}

/// The ports on the way from the bus to the device: "4.2" is the second one of a hub at the fourth.
std::string portsOnUSB(std::string_view devicePath) {
  std::string bus = "usb";
  std::string_view ports;
  for (const std::string_view step : split(devicePath, '/')) {
    if (isNumbered(step, "usb")) bus = std::string(step.substr(3)) + "-";
    const bool isInterface = step.find(':') != step.npos;
    if (step.starts_with(bus) && !isInterface) ports = step.substr(bus.size());
  }
  return std::string(ports);
}

/// The adapters on the way to the device, and its address: "0-48", or "0-2-48" behind a
/// multiplexer.
std::string addressOnI2C(std::span<const std::string_view> steps) {
  std::string way;
  for (const std::string_view step : steps) {
    if (!isNumbered(step, "i2c-"))
      return way + std::string(step.substr(step.starts_with("00") ? 2 : 0));
    way.append(step.substr(4)).append("-");
  }
  return way;
}

/// The place on a bus other than PCI. "" if the device is on none.
std::string placeOnBus(SystemCalls& calls, const std::string& sys, const Chip& chip) {
  const std::vector<std::string_view> steps = split(chip.stablePath, '/');
  const std::string pci = pciPath(chip.device);
  for (size_t i = 0; i < steps.size(); ++i) {
    if (isNumbered(steps[i], "ata")) {
      const std::string port = "SATA " + std::string(steps[i].substr(3));
      return hasManySATAControllers(calls, sys) ? joined(pci, port) : port;
    }
    if (steps[i].starts_with("bay")) {
      return "Bay " + std::string(steps[i].substr(3, steps[i].find('@') - 3));
    }
    if (steps[i].starts_with("usb")) return joined(pci, "USB " + portsOnUSB(chip.device));
    if (isNumbered(steps[i], "i2c-")) {
      return joined(pci, "I2C " + addressOnI2C(std::span(steps).subspan(i)));
    }
  }
  return "";
}

}  // namespace

std::string driveModel(SystemCalls& calls, const Chip& chip) {
  const bool isNVMe = chip.kind == "nvme";
  std::string model = isNVMe ? printableWords(trimmedTextOf(calls, chip.parent + "/model"))
                             : scsiModel(calls, chip.parent);
  if (model.empty()) model = isNVMe ? "NVMe Drive" : "Drive";
  return model;
}

bool isIntegratedGraphics(SystemCalls& calls, const Chip& chip) {
  const std::vector<std::string_view> steps = pciSteps(chip.device);
  if (steps.empty()) return false;
  if (steps.size() == 1 && pciAddressOf(steps.front())->function == "02.0") return true;
  // AMD has its security processor beside integrated graphics.
  const std::string folder = chip.parent.substr(0, chip.parent.rfind('/'));
  const std::string slot(pciAddressOf(steps.back())->slot);
  for (const std::string& name : namesOrNone(calls, folder)) {
    if (!name.starts_with(slot + ".")) continue;
    if (trimmedTextOf(calls, folder + "/" + name + "/class").starts_with("0x1080")) return true;
  }
  return false;
}

std::string placeOf(SystemCalls& calls, const std::string& sys, const Chip& chip) {
  if (std::string place = placeOnBus(calls, sys, chip); !place.empty()) return place;
  if (const std::string slot = slotOf(calls, sys, chip.device); !slot.empty()) {
    return "Slot " + slot;
  }
  if (std::string path = pciPath(chip.device); !path.empty()) return path;
  return chip.stablePath.substr(chip.stablePath.rfind('/') + 1);
}

}  // namespace halvermonte::linuxos
