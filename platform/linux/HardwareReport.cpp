#include "platform/linux/Processor.hpp"

namespace halvermonte::linuxos {
namespace {

std::string escaped(std::string_view text) {
  std::string result;
  for (const char character : text) {
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      default:
        // XML cannot hold a control character.
        if (static_cast<unsigned char>(character) >= ' ') result += character;
    }
  }
  return result;
}

}  // namespace

std::string hardwareReport(const ProcessorName& processor) {
  const std::string key = processor.isAppleChip ? "chip_type" : "cpu_type";
  const std::string entry = processor.text.empty() ? ""
                                                   : "<key>" + key + "</key><string>" +
                                                         escaped(processor.text) + "</string>";
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><array><dict><key>_items</key><array><dict>)" +
         entry + "</dict></array></dict></array></plist>\n";
}

}  // namespace halvermonte::linuxos
