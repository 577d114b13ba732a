#include "monitor/Terminal.hpp"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

namespace halvermonte {

namespace {

constexpr std::string_view kEnter = "\033[?1049h\033[?25l\033[?7l";  // screen, cursor, wrapping
constexpr std::string_view kLeave = "\033[?7h\033[?25h\033[?1049l";

// What signal handlers may look at.
struct TakenTerminal {
  volatile std::sig_atomic_t isTaken = 0;
  int descriptor = -1;
  bool hasKeyboard = false;
  termios former{};
} terminal;

volatile std::sig_atomic_t stopAsked, suspendAsked, resized;

bool taken(volatile std::sig_atomic_t& flag) {
  const bool wasSet = flag != 0;
  flag = 0;
  return wasSet;
}

// Safe in a signal handler.
void giveBack() {
  if (!taken(terminal.isTaken)) return;
  [[maybe_unused]] const ssize_t written = write(terminal.descriptor, kLeave.data(), kLeave.size());
  if (terminal.hasKeyboard) tcsetattr(STDIN_FILENO, TCSAFLUSH, &terminal.former);
}

void onStop(int number) {
  if (!stopAsked) {
    stopAsked = 1;
    return;
  }
  giveBack();
  std::signal(number, SIG_DFL);
  raise(number);
}

void onSuspend(int) { suspendAsked = 1; }
void onResize(int) { resized = 1; }
void onAbort(int) { giveBack(); }

struct Handling {
  int number;
  void (*handler)(int);
};
constexpr Handling kStops[] = {
    {SIGINT, onStop}, {SIGTERM, onStop}, {SIGHUP, onStop}, {SIGQUIT, onStop}};
constexpr Handling kScreenSignals[] = {{SIGTSTP, onSuspend}, {SIGWINCH, onResize}};

// What the caller had ignored, as nohup does, stays ignored.
void handle(const Handling& handling) {
  if (std::signal(handling.number, handling.handler) == SIG_IGN) {
    std::signal(handling.number, SIG_IGN);
  }
}

void handleNoMore(const Handling& handling) {
  if (std::signal(handling.number, SIG_DFL) == SIG_IGN) std::signal(handling.number, SIG_IGN);
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

// Every key is read, so that none is left to the shell.
bool isQuitKey() {
  char key = 0;
  const ssize_t size = read(STDIN_FILENO, &key, 1);
  if (size <= 0) terminal.hasKeyboard = false;
  return size == 1 && key == 'q';
}

// Keeps the signals out, so that none comes in between a look at the flags and the wait.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t held;
    sigemptyset(&held);
    for (const Handling& stop : kStops) sigaddset(&held, stop.number);
    for (const Handling& other : kScreenSignals) sigaddset(&held, other.number);
    sigprocmask(SIG_BLOCK, &held, &former_);
  }
  ~SignalsHeld() { sigprocmask(SIG_SETMASK, &former_, nullptr); }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;

  const sigset_t& former() const { return former_; }

 private:
  sigset_t former_;
};

timespec until(std::chrono::steady_clock::time_point time) {
  namespace chrono = std::chrono;
  const auto left = std::max(time - chrono::steady_clock::now(), chrono::steady_clock::duration());
  const auto seconds = chrono::floor<chrono::seconds>(left);
  return {seconds.count(), chrono::nanoseconds(left - seconds).count()};
}

}  // namespace

Screen::Screen(const Output& output) : output_(output) { enter(); }

Screen::~Screen() { leave(); }

void Screen::enter() {
  awaitForeground(output_.descriptor());
  terminal.descriptor = output_.descriptor();
  terminal.hasKeyboard = ownsKeyboard();
  terminal.isTaken = 1;
  std::signal(SIGABRT, onAbort);
  if (terminal.hasKeyboard) silenceKeyboard();
  output_.write(kEnter);
}

void Screen::leave() noexcept {
  giveBack();
  std::signal(SIGABRT, SIG_DFL);
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

Signals::Signals(bool hasScreen) : hasScreen_(hasScreen) {
  for (const Handling& stop : kStops) handle(stop);
  if (!hasScreen) return;
  for (const Handling& other : kScreenSignals) handle(other);
}

Signals::~Signals() {
  for (const Handling& stop : kStops) handleNoMore(stop);
  for (const Handling& other : kScreenSignals) handleNoMore(other);
}

Wake Signals::waitUntil(std::chrono::steady_clock::time_point time) const {
  const SignalsHeld held;
  for (;;) {
    if (stopAsked) return Wake::stop;
    if (taken(suspendAsked)) return Wake::suspend;
    if (taken(resized)) return Wake::resized;
    const timespec timeout = until(time);
    pollfd keyboard{STDIN_FILENO, POLLIN, 0};
    const nfds_t watched = hasScreen_ && terminal.hasKeyboard ? 1 : 0;
    const int ready = ppoll(&keyboard, watched, &timeout, &held.former());
    if (ready > 0 && isQuitKey()) return Wake::stop;
    if (ready == 0) return Wake::timeUp;
  }
}

}  // namespace halvermonte
