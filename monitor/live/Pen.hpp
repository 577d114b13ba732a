// What all parts of the live view draw with.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "monitor/Line.hpp"
#include "monitor/ReadingTexts.hpp"
#include "monitor/live/Charts.hpp"

namespace halvermonte {

struct Pen {
  bool unicode = true;
  bool fahrenheit = false;

  const Glyphs& glyphs() const { return glyphsFor(unicode); }
  std::string shown(std::string_view text) const { return printable(text, unicode); }
  std::string temperature(int32_t celsius) const {
    return temperatureText(celsius, fahrenheit, unicode);
  }
};

}  // namespace halvermonte
