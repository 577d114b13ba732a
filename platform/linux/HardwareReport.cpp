#include "platform/linux/HardwareReport.hpp"

#include "platform/portable/XMLText.hpp"

namespace halvermonte::linuxos {
namespace {

std::string withoutControls(std::string text) {
  std::erase_if(text, [](char character) { return static_cast<unsigned char>(character) < ' '; });
  return text;
}

}  // namespace

std::string hardwareReport(const ProcessorName& processor) {
  const std::string key = processor.isAppleChip ? "chip_type" : "cpu_type";
  const std::string entry =
      processor.text.empty() ? ""
                             : "<key>" + key + "</key><string>" +
                                   portable::xmlText(withoutControls(processor.text)) + "</string>";
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><array><dict><key>_items</key><array><dict>)" +
         entry + "</dict></array></dict></array></plist>\n";
}

}  // namespace halvermonte::linuxos
