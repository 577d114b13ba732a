// The words of sensors' names.
#pragma once

#include <string>
#include <string_view>

namespace halvermonte::linuxos {

/// A kernel's label as people write it: "T_Sensor" is "T Sensor", "PHY Temperature" is "PHY" and
/// "cpu@4c" is "CPU@4c". "" if it says nothing, as "temp1" or "3" do.
std::string wordsOfLabel(std::string_view label);

/// The part that a thermal zone is named after: "SoC" for "soc_thermal".
std::string wordsOfZone(std::string_view driver);

/// The number at the end of the text. "" if there is none.
std::string numberAtEnd(std::string_view text);

/// The text with "?" for each character that is not printable ASCII.
std::string printableWords(std::string_view text);

}  // namespace halvermonte::linuxos
