#include "monitor/live/ViewState.hpp"

namespace halvermonte {
namespace {

void removeLastCharacter(std::string& text) {
  while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80) text.pop_back();
  if (!text.empty()) text.pop_back();
}

bool applyToFilter(const KeyPress& press, ViewState& state) {
  switch (press.key) {
    case Key::character:
      state.filter += press.character;
      state.scroll = 0;
      return true;
    case Key::backspace:
      removeLastCharacter(state.filter);
      return true;
    case Key::escape:
      state.filter.clear();
      state.isTyping = false;
      return true;
    case Key::enter:
      state.isTyping = false;
      return true;
    default:
      return false;
  }
}

/// What Escape ends: the innermost thing that is open.
void close(ViewState& state) {
  if (state.showsHelp) {
    state.showsHelp = false;
  } else if (state.selected) {
    state.selected.reset();
  } else {
    state.filter.clear();
  }
}

}  // namespace

bool apply(const KeyPress& press, ViewState& state) {
  if (state.isTyping) return applyToFilter(press, state);
  if (press.key == Key::escape) {
    close(state);
    return true;
  }
  if (press.key != Key::character) return false;
  const std::string& character = press.character;
  if (character == "q") {
    state.wantsToEnd = true;
  } else if (character == "?") {
    state.showsHelp = !state.showsHelp;
  } else if (character == "/") {
    state.isTyping = true;
  } else if (character == "s") {
    state.order = state.order == Order::byName ? Order::byHeat : Order::byName;
  } else if (character == "f") {
    state.fahrenheit = !state.fahrenheit;
  } else if (character == "p") {
    state.isPaused = !state.isPaused;
  } else {
    return false;
  }
  return true;
}

}  // namespace halvermonte
