#include "platform/linux/HardwareReport.hpp"

#include <string_view>
#include <vector>

#include "platform/portable/XMLText.hpp"

namespace halvermonte::linuxos {
namespace {

constexpr std::string_view kStart = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><array><dict><key>_items</key><array><dict>)";
constexpr std::string_view kEnd = "</dict></array></dict></array></plist>\n";

std::string withoutControls(std::string text) {
  std::erase_if(text, [](char character) { return static_cast<unsigned char>(character) < ' '; });
  return text;
}

std::string entryOf(const ProcessorName& processor) {
  if (processor.text.empty()) return "";
  const std::string key = processor.isAppleChip ? "chip_type" : "cpu_type";
  const std::string name = portable::xmlText(withoutControls(processor.text));
  return "<key>" + key + "</key><string>" + name + "</string>";
}

}  // namespace

std::string hardwareReport(const ProcessorName& processor) {
  return std::string(kStart) + entryOf(processor) + std::string(kEnd);
}

}  // namespace halvermonte::linuxos
