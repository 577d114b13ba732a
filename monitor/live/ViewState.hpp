// What a person has chosen in the live view, and the keys that choose it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace halvermonte {

enum class Key : uint8_t {
  character,
  up,
  down,
  left,
  right,
  pageUp,
  pageDown,
  home,
  end,
  enter,
  escape,
  backspace,
  wheelUp,
  wheelDown
};

struct KeyPress {
  Key key = Key::character;
  std::string character = "";  ///< UTF-8
};

/// The parts of the list: the groups of temperatures in their order, then these.
enum class Section : uint8_t { firstGroup = 0, fans = 7, disks = 8 };

/// A row that can be selected: a sensor, or the heading of its section if the identity is empty.
struct RowId {
  Section section = Section::firstGroup;
  std::string identity = "";

  bool operator==(const RowId&) const = default;
};

enum class Order : uint8_t { byName, byHeat };

struct ViewState {
  size_t scroll = 0;  ///< how many rows of the list lie above the window
  std::optional<RowId> selected;
  std::map<Section, bool> folded;  ///< as a person left them; the others fold if room is short
  std::string filter;
  bool isTyping = false;  ///< the filter
  Order order = Order::byName;
  bool fahrenheit = false;
  bool isPaused = false;
  bool showsHelp = false;
  bool wantsToEnd = false;
};

/// Applies a key that needs no knowledge of the screen. Returns false if it is another one.
bool apply(const KeyPress& press, ViewState& state);

}  // namespace halvermonte
