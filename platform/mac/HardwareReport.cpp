#include "platform/mac/HardwareReport.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace halvermonte::macos {
namespace {

/// A serial number or another identifier may be under any other key, also of a later macOS.
constexpr std::string_view kModelKeys[] = {"_dataType",
                                           "_name",
                                           "chip_type",
                                           "cpu_type",
                                           "current_processor_speed",
                                           "l2_cache_core",
                                           "l3_cache",
                                           "machine_model",
                                           "machine_name",
                                           "number_processors",
                                           "packages",
                                           "physical_memory",
                                           "platform_cpu_htt"};

constexpr std::string_view kKeyStart = "<key>";
constexpr std::string_view kKeyEnd = "</key>";
constexpr std::string_view kTextStart = "<string>";
constexpr std::string_view kTextEnd = "</string>";

/// The length of the key and the text that it names, from the key's start. 0 if no text follows the
/// key. A text that does not end takes all that is left.
size_t lengthOfPair(std::string_view rest) {
  size_t place = rest.find(kKeyEnd);
  if (place == rest.npos) return 0;
  place = rest.find_first_not_of(" \t\r\n", place + kKeyEnd.size());
  if (place == rest.npos || !rest.substr(place).starts_with(kTextStart)) return 0;
  const size_t end = rest.find(kTextEnd, place);
  return end == rest.npos ? rest.size() : end + kTextEnd.size();
}

bool isOfModel(std::string_view pair) {
  pair.remove_prefix(kKeyStart.size());
  const std::string_view key = pair.substr(0, pair.find(kKeyEnd));
  return std::ranges::find(kModelKeys, key) != std::end(kModelKeys);
}

}  // namespace

std::string withoutIdentifiers(std::string_view report) {
  std::string kept;
  while (!report.empty()) {
    const size_t start = std::min(report.find(kKeyStart), report.size());
    kept += report.substr(0, start);
    report.remove_prefix(start);
    const size_t pair = lengthOfPair(report);
    const size_t step = pair > 0 ? pair : std::min(kKeyStart.size(), report.size());
    if (pair == 0 || isOfModel(report.substr(0, pair))) kept += report.substr(0, step);
    report.remove_prefix(step);
  }
  return kept;
}

}  // namespace halvermonte::macos
