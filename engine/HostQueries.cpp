// The engine's queries about its host.
#include <sys/sysctl.h>
#include <sys/types.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Values.hpp"
#include "platform/Foundation.hpp"
#include "platform/HardwareReportCommand.hpp"

namespace halvermonte {
namespace {

/// The one item of the hardware report; absent if the report has another shape.
Dictionary reportedHardware(std::string_view report) {
  const Array sections = foundation::propertyList(report).asArray();
  const Array items = sections[0].asDictionary().find("_items").asArray();
  return items.size() == 1 ? items[0].asDictionary() : Dictionary();
}

size_t digitsAt(std::string_view text, size_t start) {
  size_t end = start;
  while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
  return end - start;
}

/// The longest prefix that is a decimal number; empty if there is none.
std::string_view decimalPrefix(std::string_view text) {
  size_t end = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  const size_t whole = digitsAt(text, end);
  end += whole;
  if (end < text.size() && text[end] == '.') {
    const size_t fraction = digitsAt(text, end + 1);
    if (whole + fraction == 0) return {};
    end += 1 + fraction;
  }
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    const size_t sign = text.substr(end + 1).find_first_of("+-") == 0 ? 1 : 0;
    const size_t exponent = digitsAt(text, end + 1 + sign);
    if (exponent > 0) end += 1 + sign + exponent;
  }
  return text.substr(0, end);
}

/// The number that the text begins with after blanks; 0 without one. The decimal point is a point
/// in every locale.
float floatOf(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\r\v\f"), text.size()));
  std::istringstream stream{std::string(decimalPrefix(text))};
  stream.imbue(std::locale::classic());
  double number = 0;
  stream >> number;  // beyond the range of a double, it is the largest one
  constexpr double kLargest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(number, -kLargest, kLargest));
}

}  // namespace

Text HalvermonteSensorsEngine::askSytemInfoForProcessorName() {
  const auto report = foundation::outputOfCommand(std::string(kHardwareReportCommand));
  const Dictionary hardware = report ? reportedHardware(*report) : Dictionary();
  const Value intel = hardware.find("cpu_type");
  const Value name = intel ? intel : hardware.find("chip_type");
  return name.kind() == Value::Kind::text ? name.asText() : Text("");
}

int32_t HalvermonteSensorsEngine::physicalCores() {
  int32_t cores = 0;  // stays 0 if the query fails
  size_t size = sizeof cores;
  sysctlbyname("hw.physicalcpu", &cores, &size, nullptr, 0);
  return cores == 0 ? 1 : cores;
}

float HalvermonteSensorsEngine::askSystemPS(int32_t processIdentifier) {
  const auto output =
      foundation::outputOfCommand("ps -p " + std::to_string(processIdentifier) + " -o %cpu");
  if (!output) return 0.0F;  // not started, unlike output that cannot be read
  const Text text = Text::fromUTF8(*output);
  if (!text) return -1.0F;
  const std::vector<Text> lines = text.split('\n');
  return lines.size() >= 2 ? floatOf(lines[1].view()) : -1.0F;
}

}  // namespace halvermonte
