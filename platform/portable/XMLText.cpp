#include "platform/portable/XMLText.hpp"

namespace halvermonte::portable {

std::string xmlText(std::string_view text) {
  std::string xml;
  for (const char character : text) {
    switch (character) {
      case '&':
        xml += "&amp;";
        break;
      case '<':
        xml += "&lt;";
        break;
      case '>':
        xml += "&gt;";
        break;
      case '\r':
        xml += "&#13;";  // a bare one would be read as a line feed
        break;
      default:
        xml += character;
    }
  }
  return xml;
}

}  // namespace halvermonte::portable
