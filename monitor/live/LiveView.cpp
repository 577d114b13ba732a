#include "monitor/live/LiveView.hpp"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "monitor/Failure.hpp"
#include "monitor/MachineChoice.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/Signals.hpp"
#include "monitor/TerminalKind.hpp"
#include "monitor/live/LiveScreen.hpp"
#include "monitor/live/Panes.hpp"
#include "monitor/live/Sampler.hpp"
#include "monitor/live/Snapshot.hpp"
#include "monitor/live/Terminal.hpp"
#include "monitor/live/ViewState.hpp"

namespace halvermonte {
namespace {

using std::chrono::steady_clock;

Choice chooseForOptions(const Options& options) { return chooseMachine(options); }

class LiveView {
 public:
  LiveView(const Options& options, const Output& output)
      : options_(options),
        isErrorOnScreen_(isatty(STDERR_FILENO) == 1),
        messages_(isErrorOnScreen_ ? HeldMessages::Streams::outputAndError
                                   : HeldMessages::Streams::output),
        signals_(Signals::Watch::stopsAndScreen),
        terminal_(output, wantsColour(options.colours)),
        screen_(isUnicode() && hasLargeFont(), options.fahrenheit, intervalOf(options)) {}

  void run() {
    draw();  // before the engine is made, which may take seconds
    Sampler sampler(options_, messages_, chooseForOptions);
    do {
      draw();
    } while (goesOn(sampler));
    end(sampler);
  }

 private:
  void draw() { terminal_.draw(screen_.draw(terminal_.size(), steady_clock::now())); }

  /// Waits for the next event and applies it. Returns false if it ends the view.
  bool goesOn(Sampler& sampler) {
    switch (signals_.waitUntil(nextChange(), terminal_.keyboard(), sampler.news())) {
      case Wake::stop:
        return false;
      case Wake::suspend:
        terminal_.suspend();
        return true;
      case Wake::input:
        for (const KeyPress& key : terminal_.readKeys()) {
          screen_.press(key);
          draw();  // the next key is for what this one has changed
        }
        sampler.setPaused(screen_.isPaused());
        return !screen_.wantsToEnd();
      case Wake::news:
        show(sampler.take());
        return !sampler.hasEnded();
      case Wake::resized:
      case Wake::timeUp:
        return true;
    }
    return true;
  }

  void show(std::shared_ptr<const Snapshot> snapshot) {
    if (snapshot == nullptr) return;
    counted_ = snapshot->view.counted;
    if (!isErrorOnScreen_) {
      for (const std::string& line : snapshot->view.complaints) {
        std::fprintf(stderr, "%s\n", line.c_str());
      }
    }
    screen_.show(std::move(snapshot));
  }

  /// When the screen changes by itself.
  steady_clock::time_point nextChange() const {
    const auto now = steady_clock::now();
    return now + untilNextAge(now - counted_);
  }

  /// A pass that a driver holds up must not hold up the end, too.
  void end(Sampler& sampler) {
    if (sampler.stop(std::chrono::milliseconds(200))) return;
    terminal_.giveBack();
    std::_Exit(EXIT_SUCCESS);
  }

  const Options& options_;
  const bool isErrorOnScreen_;
  HeldMessages messages_;
  const Signals signals_;
  Terminal terminal_;
  LiveScreen screen_;
  steady_clock::time_point counted_ = steady_clock::now();
};

}  // namespace

bool canShowLive(const Output& output) { return output.isTerminal() && !isDumbTerminal(); }

void showLive(const Options& options, const Output& output) {
  if (!canShowLive(output)) {
    throw Failure("--live: standard output is not a terminal with a screen");
  }
  LiveView(options, output).run();
}

}  // namespace halvermonte
