#include "platform/linux/StablePath.hpp"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

/// Whether the text has the form of the pattern, in which 'x' stands for a hexadecimal digit.
bool hasForm(std::string_view text, std::string_view pattern) {
  return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(),
                    [](char character, char form) {
                      if (form != 'x') return character == form;
                      return (character >= '0' && character <= '9') ||
                             ((character | 0x20) >= 'a' && (character | 0x20) <= 'f');
                    });
}

bool isNumber(std::string_view text) { return !text.empty() && isNumbered(text, ""); }

std::string_view afterFirst(std::string_view text, char separator) {
  return text.substr(text.find(separator) + 1);
}

/// Matches "6:0:0:0", which a SCSI device is called: host, channel, target, unit.
bool isSCSIAddress(std::string_view step) {
  const std::vector<std::string_view> numbers = split(step, ':');
  return numbers.size() == 4 && std::all_of(numbers.begin(), numbers.end(), isNumber);
}

/// Matches "3-4.2" and "3-4.2:1.0": a bus of USB, ports, and an interface.
bool isUSBDevice(std::string_view step) {
  const size_t dash = step.find('-');
  return dash != step.npos && isNumber(step.substr(0, dash)) && dash + 1 < step.size() &&
         step.find_first_not_of("0123456789.:", dash + 1) == step.npos;
}

/// Whether the step is the former one, a colon and a number in it: "NAME" and "NAME:01".
bool isBelow(std::string_view former, std::string_view step) {
  return !former.empty() && step.starts_with(former) && step.substr(former.size()).starts_with(':');
}

/// Goes down a device path, step by step.
class Walk {
 public:
  Walk(SystemCalls& calls, const std::string& sys) : calls_(calls), folder_(sys + "/devices") {}

  void go(std::string_view step) {
    const std::string parent = folder_;
    folder_ += "/" + std::string(step);
    const std::string kept = keptOf(step, parent);
    if (!kept.empty()) path_ += (path_.empty() ? "" : "/") + kept;
    former_ = step;
  }

  const std::string& path() const { return path_; }

 private:
  /// What is kept of the step. "" if nothing.
  std::string keptOf(std::string_view step, const std::string& parent) {
    if (const std::optional<PCIAddress> address = pciAddressOf(step)) {
      const bool isFirst = !pciAddressOf(former_);
      return std::string(isFirst ? step : address->function);
    }
    if (isCounted(step)) return "";
    if (former_ == "mdio_bus") return "mdio";
    if (isBelow(former_, step)) return std::string(afterFirst(step, ':'));
    if (isNumbered(step, "ata")) return "ata" + portOf(step, parent);
    if (isSCSIAddress(step)) return unitOf(step);
    if (step.starts_with("end_device-")) return placeBehindSAS(step);
    if (isNumbered(step, "usb")) return "usb" + trimmedTextOf(calls_, folder_ + "/version");
    if (isNumbered(step, "i2c-")) return "i2c-" + std::to_string(rankOf(step, "i2c-", parent));
    if (isNumbered(former_, "i2c-") && former_.substr(4) == step.substr(0, step.find('-'))) {
      return std::string(afterFirst(step, '-'));
    }
    if (isUSBDevice(step)) return std::string(afterFirst(step, '-'));
    return withoutInstance(step);
  }

  /// Whether all of the step is a number that the kernel counts up, or announces one.
  bool isCounted(std::string_view step) const {
    const bool isInterface = former_ == "net" || former_ == "ieee80211";
    return isInterface || step == "net" || step == "ieee80211" || step == "mdio_bus" ||
           isNumbered(step, "host") || isNumbered(step, "nvme") ||
           isNumbered(step, "thermal_zone") || step.starts_with("target") ||
           step.starts_with("port-") || step.starts_with("expander-");
  }

  /// The port of its controller, counted from 1.
  std::string portOf(std::string_view ata, const std::string& parent) const {
    const std::string port =
        trimmedTextOf(calls_, folder_ + "/ata_port/" + std::string(ata) + "/port_no");
    return port.empty() ? std::to_string(rankOf(ata, "ata", parent) + 1) : port;
  }

  /// A SCSI device without its host and, behind SAS, without the target, which is counted there.
  std::string unitOf(std::string_view address) const {
    return std::string(isBehindSAS_ ? address.substr(address.rfind(':') + 1)
                                    : afterFirst(address, ':'));
  }

  /// The bay or, if the enclosure does not tell it, the device's own address.
  std::string placeBehindSAS(std::string_view device) {
    isBehindSAS_ = true;
    const std::string facts = folder_ + "/sas_device/" + std::string(device) + "/";
    const std::string bay = trimmedTextOf(calls_, facts + "bay_identifier");
    const std::string enclosure = trimmedTextOf(calls_, facts + "enclosure_identifier");
    if (!bay.empty()) return "bay" + bay + "@" + enclosure;
    return "sas" + trimmedTextOf(calls_, facts + "sas_address");
  }

  /// The place among all numbered devices of that name and parent, counted from 0.
  ptrdiff_t rankOf(std::string_view step, std::string_view name, const std::string& parent) const {
    const auto number = integer(step.substr(name.size()));
    const auto siblings = namesOrNone(calls_, parent);
    return std::count_if(siblings.begin(), siblings.end(), [&](std::string_view sibling) {
      return isNumbered(sibling, name) && integer(sibling.substr(name.size())) < number;
    });
  }

  /// Takes the number of the instance from "0003:1B1C:0C10.0007" and "NAME.12.auto".
  static std::string withoutInstance(std::string_view step) {
    if (hasForm(step, "xxxx:xxxx:xxxx.xxxx")) step = step.substr(0, step.rfind('.'));
    if (step.ends_with(".auto")) {
      const std::string_view name = step.substr(0, step.rfind('.'));
      const size_t point = name.rfind('.');
      if (point != name.npos && isNumber(name.substr(point + 1))) step = name.substr(0, point);
    }
    return std::string(step);
  }

  SystemCalls& calls_;
  std::string folder_;  ///< of the step
  std::string_view former_;
  bool isBehindSAS_ = false;
  std::string path_;
};

}  // namespace

std::optional<PCIAddress> pciAddressOf(std::string_view step) {
  const size_t domainEnd = step.find(':');  // a domain has four digits or more
  if (domainEnd == step.npos || domainEnd < 4 || !hasForm(step.substr(domainEnd), ":xx:xx.x")) {
    return std::nullopt;
  }
  const bool isDomain = step.find_first_not_of("0123456789abcdef") == domainEnd;
  if (!isDomain) return std::nullopt;
  return PCIAddress{step.substr(0, step.rfind('.')), step.substr(domainEnd + 4)};
}

std::string stablePath(SystemCalls& calls, const std::string& sys, std::string_view devicePath) {
  Walk walk(calls, sys);
  for (const std::string_view step : split(devicePath, '/')) walk.go(step);
  return walk.path();
}

}  // namespace halvermonte::linuxos
