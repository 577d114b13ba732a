#include "monitor/Signals.hpp"

#include <sys/select.h>
#include <time.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <initializer_list>

namespace halvermonte {
namespace {

// What the handlers write and read.
volatile std::sig_atomic_t stopAsked, suspendAsked, resized;
std::atomic<void (*)()> lastAct{nullptr};

void performLastAct() {
  if (void (*const set)() = lastAct.load()) set();
}

void onStop(int number) {
  if (!stopAsked) {
    stopAsked = 1;
    return;
  }
  performLastAct();
  std::signal(number, SIG_DFL);
  raise(number);
}

void onSuspend(int) { suspendAsked = 1; }
void onResize(int) { resized = 1; }
void onCrash(int number) {
  performLastAct();
  raise(number);
}

/// Clears the flag and returns whether it was set.
bool clear(volatile std::sig_atomic_t& flag) {
  const bool wasSet = flag != 0;
  flag = 0;
  return wasSet;
}

struct Handling {
  int number;
  void (*handler)(int);
};
constexpr Handling kStops[] = {
    {SIGINT, onStop}, {SIGTERM, onStop}, {SIGHUP, onStop}, {SIGQUIT, onStop}};
constexpr int kCrashes[] = {SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSEGV, SIGSYS, SIGTRAP};
constexpr Handling kScreenSignals[] = {{SIGTSTP, onSuspend}, {SIGWINCH, onResize}};

// A signal that the caller ignores, as nohup does, stays ignored.
void setHandler(int number, void (*handler)(int)) {
  if (std::signal(number, handler) == SIG_IGN) std::signal(number, SIG_IGN);
}

timespec timespecOf(std::chrono::nanoseconds duration) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(duration);
  return {seconds.count(), (duration - seconds).count()};
}

/// Descriptors to wait for; a negative one is ignored.
class Inputs {
 public:
  explicit Inputs(std::initializer_list<int> descriptors) {
    FD_ZERO(&set_);
    for (const int descriptor : descriptors) {
      if (isOne(descriptor)) FD_SET(descriptor, &set_);
    }
  }

  /// Returns how many are ready, or -1 if a signal came that the mask lets through.
  int wait(const timespec& timeout, const sigset_t& mask) {
    return pselect(FD_SETSIZE, &set_, nullptr, nullptr, &timeout, &mask);
  }
  /// After the wait: whether the descriptor is ready.
  bool has(int descriptor) const { return isOne(descriptor) && FD_ISSET(descriptor, &set_) != 0; }

 private:
  static bool isOne(int descriptor) { return descriptor >= 0 && descriptor < FD_SETSIZE; }

  fd_set set_;
};

}  // namespace

std::chrono::nanoseconds partOfWait(std::chrono::nanoseconds left) {
  constexpr std::chrono::nanoseconds kShort = std::chrono::milliseconds(10);
  return left <= kShort ? std::max(left, std::chrono::nanoseconds::zero()) : left - left / 500;
}

Signals::Blocked::Blocked() {
  sigset_t blocked;
  sigemptyset(&blocked);
  for (const Handling& stop : kStops) sigaddset(&blocked, stop.number);
  for (const Handling& other : kScreenSignals) sigaddset(&blocked, other.number);
  pthread_sigmask(SIG_BLOCK, &blocked, &former_);
}

Signals::Blocked::~Blocked() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }

Signals::Signals(Watch watch) {
  for (const Handling& stop : kStops) setHandler(stop.number, stop.handler);
  if (watch == Watch::stops) return;
  for (const Handling& other : kScreenSignals) setHandler(other.number, other.handler);
}

Signals::~Signals() {
  for (const Handling& stop : kStops) setHandler(stop.number, SIG_DFL);
  for (const Handling& other : kScreenSignals) setHandler(other.number, SIG_DFL);
}

Wake Signals::waitUntil(std::chrono::steady_clock::time_point time, int keyboard, int news) const {
  for (;;) {
    // No signal may arrive between a look at the flags and the wait. The mask is taken off after
    // each wait, since only then does the thread sanitizer deliver a signal that it has held back.
    const Blocked blocked;
    if (stopAsked) return Wake::stop;
    if (clear(suspendAsked)) return Wake::suspend;
    if (clear(resized)) return Wake::resized;
    const timespec timeout = timespecOf(partOfWait(time - std::chrono::steady_clock::now()));
    Inputs inputs({keyboard, news});
    const int ready = inputs.wait(timeout, blocked.former());
    if (ready > 0) return inputs.has(keyboard) ? Wake::input : Wake::news;
    if (ready == 0 && std::chrono::steady_clock::now() >= time) return Wake::timeUp;
  }
}

void Signals::setLastAct(void (*act)()) {
  lastAct = act;
  struct sigaction action {};
  action.sa_handler = act != nullptr ? onCrash : SIG_DFL;
  action.sa_flags = static_cast<int>(SA_RESETHAND);  // raised once more, it ends the process
  for (const int number : kCrashes) sigaction(number, &action, nullptr);
}

}  // namespace halvermonte
