#include "platform/linux/hwmon/FanAssignment.hpp"

#include <algorithm>
#include <iterator>

#include "platform/FanDescriptor.hpp"
#include "platform/linux/Text.hpp"
#include "platform/linux/hwmon/Chips.hpp"

namespace halvermonte::linuxos {
namespace {

using Fans = std::vector<FoundSensor*>;

/// The fans, those of a Mac's controller first so that they keep the controller's numbers.
Fans fansOf(std::vector<FoundSensor>& sensors) {
  Fans fans;
  for (FoundSensor& sensor : sensors) {
    if (sensor.channel->quantity == Quantity::fan) fans.push_back(&sensor);
  }
  std::stable_partition(fans.begin(), fans.end(),
                        [](const FoundSensor* fan) { return isOfController(*fan); });
  return fans;
}

/// Ten of the fans, in the given order. Prefers fans that have a label or turn.
Fans firstTen(const Fans& fans, const std::function<bool(const FoundSensor&)>& isTurning) {
  Fans chosen = fans;
  std::stable_partition(chosen.begin(), chosen.end(), [&](const FoundSensor* fan) {
    return !trimmed(fan->channel->label).empty() || isTurning(*fan);
  });
  chosen.resize(kMostFans);
  Fans inOrder;
  std::copy_if(fans.begin(), fans.end(), std::back_inserter(inOrder), [&](FoundSensor* fan) {
    return std::find(chosen.begin(), chosen.end(), fan) != chosen.end();
  });
  return inOrder;
}

std::string cut(std::string_view text, size_t length) {
  return std::string(trimmed(text.substr(0, length)));
}

std::string labelOrChannel(const FoundSensor& fan) {
  const std::string_view label = trimmed(fan.channel->label);
  if (!label.empty()) return cut(label, kFanNameSize);
  const std::string number = "-" + std::to_string(fan.channel->number);
  return cut(fan.chip->driver, kFanNameSize - number.size()) + number;
}

std::string joined(std::string text) {
  std::replace(text.begin(), text.end(), ' ', '_');
  return text;
}

/// The part of the name that the engine reads.
std::string_view firstWord(std::string_view name) { return name.substr(0, name.find(' ')); }

bool isShared(const std::vector<std::string>& names, const std::string& name) {
  return std::count_if(names.begin(), names.end(), [&](const std::string& other) {
           return firstWord(other) == firstWord(name);
         }) > 1;
}

/// Appends "-2", "-3" and so on to the second and later of equal names.
void numberEqualNames(std::vector<std::string>& names) {
  for (size_t i = 0; i < names.size(); ++i) {
    const auto before = names.begin() + static_cast<ptrdiff_t>(i);
    const std::string name = names[i];
    for (int count = 2; std::find(names.begin(), before, names[i]) != before; ++count) {
      const std::string number = "-" + std::to_string(count);
      names[i] = cut(name, kFanNameSize - number.size()) + number;
    }
  }
}

}  // namespace

std::vector<const FoundSensor*> assignFans(
    std::vector<FoundSensor>& sensors, const std::function<bool(const FoundSensor&)>& isTurning) {
  Fans fans = fansOf(sensors);
  for (FoundSensor* const fan : fans) fan->reason = "ten other fans are shown";
  if (fans.size() > kMostFans) fans = firstTen(fans, isTurning);
  for (size_t i = 0; i < fans.size(); ++i) fans[i]->key = "F" + std::to_string(i) + "Ac";
  return {fans.begin(), fans.end()};
}

std::vector<std::string> fanNames(const std::vector<const FoundSensor*>& fans) {
  std::vector<std::string> plain;
  for (const FoundSensor* const fan : fans) plain.push_back(labelOrChannel(*fan));
  std::vector<std::string> names;
  for (const std::string& name : plain) {
    names.push_back(isShared(plain, name) ? joined(name) : name);
  }
  numberEqualNames(names);
  return names;
}

}  // namespace halvermonte::linuxos
