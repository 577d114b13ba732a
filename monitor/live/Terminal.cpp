#include "monitor/live/Terminal.hpp"

#define NCURSES_NOMACROS 1
#include <ncurses.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "monitor/Failure.hpp"
#include "monitor/Signals.hpp"

namespace halvermonte {
namespace {

// What a signal handler needs to give the terminal back.
struct TakenTerminal {
  volatile std::sig_atomic_t isTaken = 0;
  int descriptor = -1;
  bool hasModes = false;
  termios modes{};
  std::array<char, 256> sequences{};
  size_t length = 0;
} taken;

// Runs in a signal handler.
void restore() {
  if (!taken.isTaken) return;
  taken.isTaken = 0;
  [[maybe_unused]] const ssize_t written =
      write(taken.descriptor, taken.sequences.data(), taken.length);
  if (taken.hasModes) tcsetattr(taken.descriptor, TCSANOW, &taken.modes);
}

/// Adds a sequence of the terminal's without the pauses that slow terminals ask for.
void addSequence(const char* sequence) {
  if (sequence == nullptr) return;
  std::string bare = sequence;
  for (size_t pause = bare.find("$<"); pause != bare.npos; pause = bare.find("$<")) {
    bare.erase(pause, bare.find('>', pause) - pause + 1);
  }
  if (taken.length + bare.size() > taken.sequences.size()) return;
  std::memcpy(taken.sequences.data() + taken.length, bare.data(), bare.size());
  taken.length += bare.size();
}

/// Null if the terminal has no such capability.
const char* capability(const char* name) {
  const char* const sequence = tigetstr(const_cast<char*>(name));  // as macOS declares it
  return reinterpret_cast<intptr_t>(sequence) == -1 ? nullptr : sequence;
}

/// Notes how to leave the screen: colours, mouse, keypad, cursor, and the other screen.
void noteSequences() {
  constexpr char kPlainMouseOff[] = "\033[?1000l";  // what ncurses uses without an XM
  taken.length = 0;
  addSequence(capability("sgr0"));
  if (const char* const mouse = capability("XM")) {
    addSequence(tparm(const_cast<char*>(mouse), 0L, 0L, 0L, 0L, 0L, 0L, 0L, 0L, 0L));
  } else if (capability("kmous") != nullptr) {
    addSequence(kPlainMouseOff);
  }
  for (const char* const name : {"rmkx", "cnorm", "rmcup"}) addSequence(capability(name));
}

// A job in the background stops before it takes the terminal, until it is brought to the front.
void awaitForeground(int descriptor) {
  const pid_t owner = tcgetpgrp(descriptor);
  if (owner > 0 && owner != getpgrp()) raise(SIGTTOU);
}

constexpr short kChartPair = 1, kWarmPair = 2, kHotPair = 3;

/// Colours that can be read on dark and on light ground.
struct Palette {
  short chart, warm, hot;
};
constexpr short kDefaultColour = -1;
constexpr Palette kManyColours{31, 166, 160};
constexpr Palette kEightColours{kDefaultColour, kDefaultColour, COLOR_RED};

attr_t pair(int number) { return static_cast<attr_t>(COLOR_PAIR(number)); }

attr_t attributesOf(const Cell& cell) {
  if (cell.isReversed) return A_REVERSE;  // colours are made for the ground of the others
  switch (cell.look) {
    case Look::plain:
      return A_NORMAL;
    case Look::strong:
      return A_BOLD;
    case Look::faint:
      return A_DIM;
    case Look::chart:
      return pair(kChartPair);
    case Look::warm:
      return A_BOLD | pair(kWarmPair);
    case Look::hot:
      return A_BOLD | pair(kHotPair);
  }
  return A_NORMAL;
}

/// What terminals send for these keys if they are not quite what TERM says.
struct KeySequence {
  const char* sequence;
  int code;
};
constexpr KeySequence kOtherSequences[] = {{"\033[1~", KEY_HOME}, {"\033[4~", KEY_END},
                                           {"\033[H", KEY_HOME},  {"\033[F", KEY_END},
                                           {"\033OH", KEY_HOME},  {"\033OF", KEY_END}};

struct KeyRow {
  wint_t code;
  Key key;
};
constexpr KeyRow kFunctionKeys[] = {{KEY_UP, Key::up},        {KEY_DOWN, Key::down},
                                    {KEY_LEFT, Key::left},    {KEY_RIGHT, Key::right},
                                    {KEY_PPAGE, Key::pageUp}, {KEY_NPAGE, Key::pageDown},
                                    {KEY_HOME, Key::home},    {KEY_END, Key::end},
                                    {KEY_ENTER, Key::enter},  {KEY_BACKSPACE, Key::backspace}};
constexpr KeyRow kControlKeys[] = {{'\n', Key::enter},
                                   {'\r', Key::enter},
                                   {'\033', Key::escape},
                                   {'\b', Key::backspace},
                                   {0x7F, Key::backspace}};

template <size_t count>
std::optional<KeyPress> keyIn(const KeyRow (&rows)[count], wint_t code) {
  const auto row = std::ranges::find(rows, code, &KeyRow::code);
  if (row == std::end(rows)) return std::nullopt;
  return KeyPress{row->key, ""};
}

#ifdef BUTTON5_PRESSED
constexpr mmask_t kWheelDown = BUTTON5_PRESSED;
#else
constexpr mmask_t kWheelDown = 0;  // macOS knows four buttons
#endif

std::optional<KeyPress> wheel() {
  MEVENT event;
  if (getmouse(&event) != OK) return std::nullopt;
  if ((event.bstate & BUTTON4_PRESSED) != 0) return KeyPress{Key::wheelUp, ""};
  if ((event.bstate & kWheelDown) != 0) return KeyPress{Key::wheelDown, ""};
  return std::nullopt;
}

std::optional<KeyPress> character(wint_t code) {
  if (auto key = keyIn(kControlKeys, code)) return key;
  if (code < ' ') return std::nullopt;
  std::array<char, MB_LEN_MAX> bytes{};
  std::mbstate_t state{};
  const size_t size = wcrtomb(bytes.data(), static_cast<wchar_t>(code), &state);
  if (size == static_cast<size_t>(-1)) return std::nullopt;
  return KeyPress{Key::character, std::string(bytes.data(), size)};
}

}  // namespace

Terminal::Terminal(const Output& output, bool usesColour) : descriptor_(output.descriptor()) {
  awaitForeground(descriptor_);
  taken.descriptor = descriptor_;
  taken.hasModes = tcgetattr(descriptor_, &taken.modes) == 0;
  stream_ = fdopen(dup(descriptor_), "w");
  if (stream_ == nullptr || newterm(nullptr, stream_, stdin) == nullptr) {
    const char* const name = std::getenv("TERM");
    throw Failure(std::string("--live: the terminal \"") + (name != nullptr ? name : "") +
                  "\" is not known");
  }
  noteSequences();
  taken.isTaken = 1;
  Signals::setLastAct(restore);
  if (isatty(STDIN_FILENO) == 1) keyboard_ = STDIN_FILENO;
  cbreak();
  noecho();
  keypad(stdscr, true);
  nodelay(stdscr, true);
  set_escdelay(25);
  curs_set(0);
  for (const auto& [sequence, code] : kOtherSequences) define_key(sequence, code);
  mousemask(BUTTON4_PRESSED | kWheelDown, nullptr);
  if (usesColour && has_colors()) preparePairs();
}

Terminal::~Terminal() {
  giveBack();
  Signals::setLastAct(nullptr);
  std::fclose(stream_);
}

void Terminal::giveBack() {
  endwin();
  taken.isTaken = 0;
}

void Terminal::preparePairs() {
  start_color();
  use_default_colors();
  const Palette& palette = COLORS >= 256 ? kManyColours : kEightColours;
  init_pair(kChartPair, palette.chart, kDefaultColour);
  init_pair(kWarmPair, palette.warm, kDefaultColour);
  init_pair(kHotPair, palette.hot, kDefaultColour);
}

WindowSize Terminal::size() {
  winsize window{};
  const bool isKnown = ioctl(descriptor_, TIOCGWINSZ, &window) == 0;
  if (isKnown && window.ws_col > 0 && window.ws_row > 0 &&
      is_term_resized(window.ws_row, window.ws_col)) {
    resizeterm(window.ws_row, window.ws_col);
  }
  return {static_cast<size_t>(std::max(COLS, 1)), static_cast<size_t>(std::max(LINES, 1))};
}

void Terminal::draw(const Grid& grid) {
  const auto [columns, rows] = grid.size();
  werase(stdscr);
  for (size_t row = 0; row < rows; ++row) {
    wmove(stdscr, static_cast<int>(row), 0);
    for (size_t column = 0; column < columns;) {
      const attr_t attributes = attributesOf(grid.at(row, column));
      std::string run;
      for (; column < columns && attributesOf(grid.at(row, column)) == attributes; ++column) {
        run += grid.at(row, column).text;
      }
      wattrset(stdscr, static_cast<int>(attributes));
      waddstr(stdscr, run.c_str());
    }
  }
  wrefresh(stdscr);
}

void Terminal::suspend() {
  giveBack();
  raise(SIGSTOP);
  awaitForeground(descriptor_);
  taken.isTaken = 1;
  wrefresh(curscr);
}

std::vector<KeyPress> Terminal::readKeys() {
  int waiting = 0;
  if (ioctl(keyboard_, FIONREAD, &waiting) != 0 || waiting == 0) {
    keyboard_ = -1;  // its end
    return {};
  }
  std::vector<KeyPress> keys;
  wint_t code = 0;
  for (int kind = wget_wch(stdscr, &code); kind != ERR; kind = wget_wch(stdscr, &code)) {
    std::optional<KeyPress> key;
    if (kind != KEY_CODE_YES) {
      key = character(code);
    } else {
      key = code == KEY_MOUSE ? wheel() : keyIn(kFunctionKeys, code);
    }
    if (key) keys.push_back(*std::move(key));
  }
  return keys;
}

}  // namespace halvermonte
