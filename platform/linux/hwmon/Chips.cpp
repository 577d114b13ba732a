#include "platform/linux/hwmon/Chips.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <utility>

#include "platform/linux/DevicePath.hpp"
#include "platform/linux/Files.hpp"
#include "platform/linux/StablePath.hpp"
#include "platform/linux/Text.hpp"
#include "platform/linux/hwmon/NameTable.hpp"

namespace halvermonte::linuxos {
namespace {

struct QuantityRow {
  Quantity quantity;
  std::string_view prefix;  ///< of its files
  double unit;
  std::string_view name;
};

constexpr auto kQuantities = std::to_array<QuantityRow>({
    {Quantity::temperature, "temp", 1e-3, "temperature"},
    {Quantity::fan, "fan", 1, "fan"},
    {Quantity::voltage, "in", 1e-3, "voltage"},
    {Quantity::current, "curr", 1e-3, "current"},
    {Quantity::power, "power", 1e-6, "power"},
    {Quantity::energy, "energy", 1e-6, "energy"},
    {Quantity::humidity, "humidity", 1e-3, "humidity"},
    {Quantity::frequency, "freq", 1, "frequency"},
});

const QuantityRow& rowOf(Quantity quantity) {
  return *std::find_if(kQuantities.begin(), kQuantities.end(),
                       [&](const QuantityRow& row) { return row.quantity == quantity; });
}

struct Attribute {
  Quantity quantity;
  int number;
  std::string_view suffix;
};

/// The parts of a file name such as "temp3_input". Absent if the file does not belong to a channel.
std::optional<Attribute> attributeOf(std::string_view file) {
  const size_t end = file.find('_');
  if (end == file.npos) return std::nullopt;
  const std::string_view channel = file.substr(0, end);
  constexpr size_t kMostDigits = 6;
  for (const QuantityRow& row : kQuantities) {
    if (!isNumbered(channel, row.prefix)) continue;
    const std::string_view digits = channel.substr(row.prefix.size());
    if (digits.size() > kMostDigits) return std::nullopt;
    return Attribute{row.quantity, static_cast<int>(*integer(digits)), file.substr(end + 1)};
  }
  return std::nullopt;
}

/// Adds what the file's existence says about its channel.
void note(Channel& channel, std::string_view suffix, const std::string& file) {
  // Some chips have only the average of a power. If there is an input, it comes later.
  if (suffix == "input" || suffix == "average") channel.file = file;
  channel.hasFault = channel.hasFault || suffix == "fault";
  channel.hasEnable = channel.hasEnable || suffix == "enable";
}

std::vector<Channel> channelsIn(SystemCalls& calls, const std::string& folder) {
  std::map<std::pair<Quantity, int>, Channel> found;
  for (const std::string& file : namesOrNone(calls, folder)) {
    const std::optional<Attribute> attribute = attributeOf(file);
    if (!attribute) continue;
    Channel& channel = found[{attribute->quantity, attribute->number}];
    channel.quantity = attribute->quantity;
    channel.number = attribute->number;
    channel.name = file.substr(0, file.find('_'));
    note(channel, attribute->suffix, file);
  }
  std::vector<Channel> channels;
  for (auto& [place, channel] : found) {
    if (channel.file.empty()) continue;
    channel.label = firstLine(textOf(calls, folder + "/" + channel.name + "_label").value_or(""));
    channels.push_back(std::move(channel));
  }
  return channels;
}

/// The path of a chip that has no device of its own: its folder's without the number.
std::string withoutNumber(std::string_view path) {
  return std::string(path.substr(0, path.rfind('/')));
}

std::optional<Chip> chipIn(SystemCalls& calls, const std::string& folder) {
  const std::optional<std::string> real = realPath(folder);
  if (!real) return std::nullopt;
  Chip chip;
  chip.driver = firstLine(textOf(calls, *real + "/name").value_or(""));
  chip.folder = *real;
  chip.channels = channelsIn(calls, *real);
  return chip;
}

/// The driver's name without the number of a radio.
std::string_view withoutRadio(std::string_view driver) {
  const size_t end = driver.rfind('_');
  if (end == driver.npos) return driver;
  const std::string_view number = driver.substr(end + 1);
  const bool isCounted = isNumbered(number, "phy") || isNumbered(driver, "iwlwifi_");
  return isCounted ? driver.substr(0, end) : driver;
}

bool hasOwnRow(std::string_view kind) {
  const auto rows = nameRows();
  return std::any_of(rows.begin(), rows.end(), [&](const NameRow& row) {
    return row.driver != "*" && matches(row.driver, kind);
  });
}

/// An interface may be called as its owner likes, so its chip's name does not say what it is.
std::string kindOf(SystemCalls& calls, const Chip& chip) {
  if (chip.stablePath.find("/mdio/") != std::string::npos) return "mdio";
  const std::string_view name = withoutRadio(chip.driver);
  if (hasOwnRow(name)) return std::string(name);
  if (namesIn(calls, chip.parent + "/ieee80211")) return std::string(kSomeWireless);
  const bool isInterface = chip.parent.ends_with("/net/" + chip.driver);
  if (isInterface || namesIn(calls, chip.parent + "/net")) return std::string(kSomeEthernet);
  return std::string(name);
}

std::optional<Chip> chipOf(SystemCalls& calls, const std::string& sys, const std::string& number) {
  const std::string folder = sys + "/class/hwmon/" + number;
  std::optional<Chip> chip = chipIn(calls, folder);
  if (!chip) return std::nullopt;
  // Old drivers such as applesmc have these files in the device's folder.
  if (chip->channels.empty()) chip = chipIn(calls, folder + "/device");
  if (!chip || chip->channels.empty()) return std::nullopt;
  chip->parent = realPath(folder + "/device").value_or("");
  chip->device = chip->parent.empty() ? withoutNumber(devicePath(sys, folder).value_or(""))
                                      : devicePath(sys, chip->parent).value_or("");
  chip->label = firstLine(trimmed(textOf(calls, chip->folder + "/label").value_or("")));
  identify(calls, sys, *chip);
  return chip;
}

}  // namespace

std::string_view nameOf(Quantity quantity) { return rowOf(quantity).name; }

double unitOf(Quantity quantity) { return rowOf(quantity).unit; }

std::string_view labelOrName(const Channel& channel) {
  const std::string_view label = trimmed(channel.label);
  return label.empty() ? std::string_view(channel.name) : label;
}

void identify(SystemCalls& calls, const std::string& sys, Chip& chip) {
  chip.stablePath = stablePath(calls, sys, chip.device);
  chip.kind = kindOf(calls, chip);
}

std::vector<Chip> chipsIn(SystemCalls& calls, const std::string& sys) {
  std::vector<Chip> chips;
  const auto numbers = namesOrNone(calls, sys + "/class/hwmon");
  for (const std::string& number : numbers) {
    if (!isNumbered(number, "hwmon")) continue;
    if (std::optional<Chip> chip = chipOf(calls, sys, number)) chips.push_back(std::move(*chip));
  }
  std::sort(chips.begin(), chips.end(), standsBefore);
  return chips;
}

bool standsBefore(const Chip& first, const Chip& second) {
  if (first.device != second.device) return standsBeforeInHardware(first.device, second.device);
  if (first.driver != second.driver) return first.driver < second.driver;
  return standsBeforeInHardware(first.folder, second.folder);
}

std::string firstLine(std::string_view text) {
  constexpr size_t kLongest = 80;
  const size_t end = std::min(text.find_first_of(std::string_view("\r\n\0", 3)), kLongest);
  std::string line(text.substr(0, end));
  std::replace(line.begin(), line.end(), '\t', ' ');
  std::replace_if(
      line.begin(), line.end(), [](char character) { return character < ' ' || character > '~'; },
      '?');
  return line;
}

}  // namespace halvermonte::linuxos
