#include "monitor/report/TextOutput.hpp"

#include <langinfo.h>
#include <time.h>
#include <unistd.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "monitor/Beat.hpp"
#include "monitor/Line.hpp"
#include "monitor/PassView.hpp"
#include "monitor/Signals.hpp"
#include "monitor/report/Report.hpp"
#include "monitor/report/Screen.hpp"

namespace halvermonte {
namespace {

std::string_view environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool isDumbTerminal() { return environment("TERM").empty() || environment("TERM") == "dumb"; }

bool usesColour(const Output& output) {
  return output.isTerminal() && !isDumbTerminal() && environment("NO_COLOR").empty();
}

ReportStyle styleOf(const Options& options) {
  return {.unicode = std::string_view(nl_langinfo(CODESET)) == "UTF-8",
          .fahrenheit = options.fahrenheit};
}

std::string timeOfDay() {
  const time_t now = time(nullptr);
  tm local{};
  localtime_r(&now, &local);
  char text[16];
  return {text, strftime(text, sizeof text, "%H:%M:%S", &local)};
}

std::string secondsText(double seconds) {
  const auto format = seconds < 1e-3 ? std::chars_format::general : std::chars_format::fixed;
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, seconds, format).ptr};
}

void printOnStandardError(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) std::fprintf(stderr, "%s\n", line.c_str());
}

std::string printed(const std::vector<Line>& lines, bool colour) {
  std::string text;
  for (const Line& line : lines) text += rendered(line, colour) + "\n";
  return text;
}

/// Shows reports on a screen until it is told to stop.
class Watcher {
 public:
  Watcher(Sampling& sampling, const Options& options, const Output& output)
      : sampling_(sampling),
        options_(options),
        isErrorOnScreen_(isatty(STDERR_FILENO) == 1),
        colour_(usesColour(output)),
        messages_(isErrorOnScreen_ ? HeldMessages::Streams::outputAndError
                                   : HeldMessages::Streams::output),
        signals_(Signals::Watch::stopsAndScreen),
        screen_(output),
        beat_(intervalOf(options), sampling.view().counted, Beat::Clock::now()) {
    sampling_.collectComplaints(messages_);
  }

  void run() {
    makePass();
    uint64_t shown = 0;
    for (;;) {
      screen_.draw(frame());
      const Wake wake = wait();
      if (wake == Wake::stop) return;
      if (wake == Wake::suspend) screen_.suspend();
      if (wake != Wake::timeUp || !beat_.isOn(Beat::Clock::now())) continue;
      if (shown == options_.ticks) return;
      ++shown;
      makePass();
    }
  }

 private:
  void makePass() {
    const std::vector<std::string>& complaints = sampling_.pass().complaints;
    if (!complaints.empty()) complaint_ = complaints.back();
    if (!isErrorOnScreen_) printOnStandardError(complaints);
    beat_ = Beat(intervalOf(options_), sampling_.view().counted, Beat::Clock::now());
  }

  // Keys but q do nothing.
  Wake wait() {
    for (;;) {
      const Wake wake = signals_.waitUntil(beat_.due(), screen_.keyboard());
      if (wake != Wake::input) return wake;
      if (screen_.readKey() == 'q') return Wake::stop;
    }
  }

  // The report, and a last line that shows that the screen is alive.
  std::vector<std::string> frame() const {
    const WindowSize size = screen_.size();
    ReportStyle style = styleOf(options_);
    style.columns = size.columns;
    style.rows = size.rows - 1;
    std::vector<Line> lines = reportLines(sampling_.view(), style);
    lines.resize(style.rows);
    lines.push_back(cut({{statusText(style), Ink::faint}}, size.columns));
    std::vector<std::string> rows;
    for (const Line& line : lines) rows.push_back(rendered(line, colour_));
    return rows;
  }

  std::string statusText(const ReportStyle& style) const {
    return timeOfDay() + "   every " + secondsText(options_.interval) + " s   q ends   " +
           printable(complaint_, style.unicode);
  }

  Sampling& sampling_;
  const Options& options_;
  const bool isErrorOnScreen_;
  const bool colour_;
  HeldMessages messages_;
  const Signals signals_;
  Screen screen_;
  std::string complaint_;
  Beat beat_;
};

}  // namespace

bool canRedraw(const Output& output) { return output.isTerminal() && !isDumbTerminal(); }

void printReports(Sampling& sampling, const Options& options, const Output& output) {
  const Pause pause(options);
  const ReportStyle style = styleOf(options);
  const bool colour = usesColour(output);
  HeldMessages messages(HeldMessages::Streams::output);
  sampling.collectComplaints(messages);
  printOnStandardError(sampling.pass().complaints);
  std::string separator;
  makePasses(sampling, pause, options.ticks, [&](const PassView& view) {
    printOnStandardError(view.complaints);
    output.write(separator + printed(reportLines(view, style), colour));
    separator = "\n";
  });
}

void watchReports(Sampling& sampling, const Options& options, const Output& output) {
  Watcher(sampling, options, output).run();
}

}  // namespace halvermonte
