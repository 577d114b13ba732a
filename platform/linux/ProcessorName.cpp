#include "platform/linux/ProcessorName.hpp"

#include <array>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

struct AppleChip {
  std::string_view compatible;
  std::string_view name;
};

constexpr auto kAppleChips = std::to_array<AppleChip>({
    {"apple,t8103", "Apple M1"},
    {"apple,t6000", "Apple M1 Pro"},
    {"apple,t6001", "Apple M1 Max"},
    {"apple,t6002", "Apple M1 Ultra"},
    {"apple,t8112", "Apple M2"},
    {"apple,t6020", "Apple M2 Pro"},
    {"apple,t6021", "Apple M2 Max"},
    {"apple,t6022", "Apple M2 Ultra"},
    {"apple,t8122", "Apple M3"},
    {"apple,t6030", "Apple M3 Pro"},
    {"apple,t6031", "Apple M3 Max"},  // 16 cores
    {"apple,t6034", "Apple M3 Max"},  // 14 cores
    {"apple,t6032", "Apple M3 Ultra"},
    {"apple,t8132", "Apple M4"},
    {"apple,t6040", "Apple M4 Pro"},
    {"apple,t6041", "Apple M4 Max"},
});

/// The lines of cpuinfo that hold the name: on x86 and LoongArch, on MIPS, on POWER and SPARC, and
/// on RISC-V.
constexpr auto kNameFields =
    std::to_array<std::string_view>({"model name", "cpu model", "cpu", "uarch"});

bool isApple(std::string_view compatible) {
  for (const std::string_view text : split(compatible, '\0')) {
    if (text.starts_with("apple,")) return true;
  }
  return false;
}

}  // namespace

std::string_view appleChip(std::string_view compatible) {
  for (const std::string_view text : split(compatible, '\0')) {
    for (const AppleChip& chip : kAppleChips) {
      if (trimmed(text) == chip.compatible) return chip.name;
    }
  }
  return {};
}

ProcessorName processorName(SystemCalls& calls, const std::string& sys, const std::string& proc) {
  const std::string tree = sys + "/firmware/devicetree/base";
  const std::string compatible = textOf(calls, tree + "/compatible").value_or("");
  const std::string model = squeezed(trimmedTextOf(calls, tree + "/model"));
  if (isApple(compatible)) {
    const std::string_view chip = appleChip(compatible);
    return {true, chip.empty() ? model : std::string(chip)};
  }
  const std::string table = textOf(calls, proc + "/cpuinfo", kTableBound).value_or("");
  for (const std::string_view name : kNameFields) {
    const std::string text = squeezed(field(table, name, ':').value_or(""));
    if (!text.empty()) return {false, text};
  }
  return {false, model};
}

}  // namespace halvermonte::linuxos
