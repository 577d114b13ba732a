#include "monitor/report/Screen.hpp"

#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <string_view>

#include "monitor/Signals.hpp"

namespace halvermonte {
namespace {

constexpr std::string_view kEnter = "\033[?1049h\033[?25l\033[?7l";  // screen, cursor, wrapping
constexpr std::string_view kLeave = "\033[?7h\033[?25h\033[?1049l";

// What a signal handler may read.
struct TakenTerminal {
  volatile std::sig_atomic_t isTaken = 0;
  int descriptor = -1;
  bool hasKeyboard = false;
  termios former{};
} terminal;

// Runs in a signal handler, too.
void giveBack() {
  if (!terminal.isTaken) return;
  terminal.isTaken = 0;
  [[maybe_unused]] const ssize_t written = write(terminal.descriptor, kLeave.data(), kLeave.size());
  if (terminal.hasKeyboard) tcsetattr(STDIN_FILENO, TCSAFLUSH, &terminal.former);
}

// A job in the background stops before it takes the terminal, until it is brought to the front.
void awaitForeground(int descriptor) {
  const pid_t owner = tcgetpgrp(descriptor);
  if (owner > 0 && owner != getpgrp()) raise(SIGTTOU);
}

bool ownsKeyboard() {
  return tcgetattr(STDIN_FILENO, &terminal.former) == 0 && tcgetpgrp(STDIN_FILENO) == getpgrp();
}

void silenceKeyboard() {
  termios silent = terminal.former;
  silent.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
}

}  // namespace

Screen::Screen(const Output& output) : output_(output) { enter(); }

Screen::~Screen() { leave(); }

void Screen::enter() {
  awaitForeground(output_.descriptor());
  terminal.descriptor = output_.descriptor();
  terminal.hasKeyboard = ownsKeyboard();
  terminal.isTaken = 1;
  Signals::setLastAct(giveBack);
  if (terminal.hasKeyboard) silenceKeyboard();
  output_.write(kEnter);
}

void Screen::leave() noexcept {
  giveBack();
  Signals::setLastAct(nullptr);
}

WindowSize Screen::size() const {
  winsize size{};
  const bool isKnown = ioctl(output_.descriptor(), TIOCGWINSZ, &size) == 0;
  return isKnown && size.ws_col && size.ws_row ? WindowSize{size.ws_col, size.ws_row}
                                               : WindowSize{};
}

void Screen::draw(const std::vector<std::string>& lines) const {
  std::string bytes = "\033[H";
  const char* lineEnd = "";
  for (const std::string& line : lines) {
    bytes.append(lineEnd).append(line).append("\033[K");
    lineEnd = "\r\n";
  }
  output_.write(bytes + "\033[J");
}

void Screen::suspend() {
  leave();
  raise(SIGSTOP);
  enter();
}

int Screen::keyboard() const { return terminal.hasKeyboard ? STDIN_FILENO : -1; }

char Screen::readKey() {
  char key = 0;
  if (read(STDIN_FILENO, &key, 1) <= 0) terminal.hasKeyboard = false;
  return key;
}

}  // namespace halvermonte
