#include "platform/simulated/HardwareReportReader.hpp"

#include <cstddef>
#include <cstdint>
#include <locale>
#include <sstream>
#include <string_view>
#include <variant>

#include "platform/portable/XMLText.hpp"

namespace halvermonte {
namespace {

constexpr std::string_view kStart =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<array>
	<dict>
		<key>_items</key>
		<array>
			<dict>
)";

constexpr std::string_view kEnd =
    R"(			</dict>
		</array>
	</dict>
</array>
</plist>
)";

/// Whether the text begins with a character that XML cannot contain.
bool isUnwritable(std::string_view rest) {
  const auto byte = static_cast<uint8_t>(rest.front());
  const bool isControl = byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
  return isControl || rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF");
}

std::string escaped(std::string_view text, const JsonPlace& place) {
  for (size_t i = 0; i < text.size(); ++i) {
    if (isUnwritable(text.substr(i))) place.refuse("a text of characters that XML allows");
  }
  return portable::xmlText(text);
}

std::string element(std::string_view name, std::string_view content) {
  std::string xml;
  xml.append("<").append(name).append(">").append(content);
  return xml.append("</").append(name).append(">");
}

std::string realText(double value) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text.precision(17);
  text << value;
  return text.str();
}

std::string valueElement(const JsonPlace& place);

std::string memberElements(const JsonPlace& place) {
  std::string xml;
  for (const auto& [name, member] : place.members()) {
    xml += element("key", escaped(name, member)) + valueElement(member) + "\n";
  }
  return xml;
}

std::string arrayElement(const JsonPlace& place) {
  std::string xml;
  for (const JsonPlace& entry : place.elements()) xml += valueElement(entry);
  return element("array", xml);
}

std::string valueElement(const JsonPlace& place) {
  const auto& content = place.value().content;
  if (const auto* flag = std::get_if<bool>(&content)) return *flag ? "<true/>" : "<false/>";
  if (const auto* integer = std::get_if<int64_t>(&content)) {
    return element("integer", std::to_string(*integer));
  }
  if (const auto* real = std::get_if<double>(&content)) return element("real", realText(*real));
  if (std::holds_alternative<JsonValue::Array>(content)) return arrayElement(place);
  if (std::holds_alternative<JsonValue::Object>(content)) {
    return element("dict", memberElements(place));
  }
  return element("string", escaped(place.text("a value that is not null"), place));
}

}  // namespace

std::string readHardwareReport(const JsonPlace& place) {
  return std::string(kStart) + memberElements(place) + std::string(kEnd);
}

}  // namespace halvermonte
