#include "platform/linux/hwmon/ReadingRule.hpp"

#include <optional>
#include <string>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"
#include "platform/linux/hwmon/Chips.hpp"
#include "platform/linux/hwmon/NameTable.hpp"

namespace halvermonte::linuxos {
namespace {

/// What firmwares report for zones that they do not have, known by the limits beside.
std::vector<int64_t> constantsOfFirmware(SystemCalls& calls, const FoundSensor& sensor) {
  const std::string limit = sensor.chip->folder + "/" + sensor.channel->name + "_crit";
  const std::optional<int64_t> critical = integer(trimmedTextOf(calls, limit));
  if (critical && *critical < 40000) return {16800};
  if (critical == 119000) return {27800, 29800};
  return {};
}

ReadingRule ruleOfTemperature(SystemCalls& calls, const FoundSensor& sensor) {
  constexpr int64_t kLeastOfUnknownKey = 10000;  // a Mac has flags and margins among its keys
  const CredibilityRow& row = credibilityOf(sensor.chip->kind, labelOrName(*sensor.channel));
  ReadingRule rule{.lowest = row.lowest * int64_t{1000}, .highest = row.highest * int64_t{1000}};
  rule.isOpenInput = row.credibility == Credibility::openInput;
  if (row.credibility == Credibility::constantsOfFirmware) {
    rule.constants = constantsOfFirmware(calls, sensor);
  }
  const bool isUnknownKey = sensor.chip->kind == "applesmc" && sensor.name.starts_with("SMC ");
  if (isUnknownKey) rule.lowest = kLeastOfUnknownKey;
  return rule;
}

}  // namespace

ReadingRule readingRuleOf(SystemCalls& calls, const FoundSensor& sensor) {
  constexpr int64_t kMost = INT32_MAX - 1;  // a driver clamps numbers to the ends of 32 bits
  constexpr int64_t kMostTurns = 65534;     // 65535 is an unset register
  const Quantity quantity = sensor.channel->quantity;
  if (quantity == Quantity::fan) return {.lowest = 0, .highest = kMostTurns};
  const bool isShown = quantity == Quantity::temperature && !sensor.key.empty();
  if (isShown) return ruleOfTemperature(calls, sensor);
  return {.lowest = -kMost, .highest = kMost};
}

}  // namespace halvermonte::linuxos
