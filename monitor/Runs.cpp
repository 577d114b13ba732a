#include "monitor/Runs.hpp"

#include <langinfo.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <set>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "monitor/JsonWriter.hpp"
#include "monitor/Line.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/Terminal.hpp"
#include "monitor/TextReport.hpp"
#include "platform/simulated/MachineRecorder.hpp"

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

// The time between two passes. It runs from the end of one to the beginning of the next: less than
// a whole second counts as no time for the engine's rates.
std::chrono::steady_clock::duration interval(const Options& options) {
  return std::chrono::duration_cast<std::chrono::steady_clock::duration>(
      std::chrono::duration<double>(options.interval));
}

class Pause {
 public:
  explicit Pause(const Options& options) : interval_(interval(options)) {
    if (options.watch || options.record) signals_.emplace(false);
  }

  /// False where the program was asked to stop meanwhile.
  bool wait() const {
    const auto end = std::chrono::steady_clock::now() + interval_;
    if (signals_) return signals_->waitUntil(end) != Wake::stop;
    std::this_thread::sleep_until(end);
    return true;
  }

 private:
  std::chrono::steady_clock::duration interval_;
  std::optional<Signals> signals_;
};

// What there is to tell of the passes, for reports.
class Reporter {
 public:
  Reporter(Sampling& sampling, const Options& options)
      : sampling_(sampling), process_(options.process) {
    subject_.title = sampling.title();
    subject_.processor = sampling_.engine().askSytemInfoForProcessorName().view();
    subject_.cores = sampling_.engine().physicalCores();
  }

  void pass() {
    subject_.ratesKnown = std::exchange(hasPassed_, true);
    subject_.trouble = sampling_.pass().value_or("");
    if (process_) subject_.process = {*process_, sampling_.engine().askSystemPS(*process_)};
  }

  std::vector<Line> lines(const ReportStyle& style) const {
    return reportLines(sampling_.record(), subject_, style);
  }

 private:
  Sampling& sampling_;
  std::optional<int32_t> process_;
  ReportSubject subject_;
  bool hasPassed_ = false;
};

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

// What the engine prints on standard output, each line told once for as long as it is repeated.
class Complaints {
 public:
  explicit Complaints(HeldMessages::Streams streams) : held_(streams) {}

  // The lines since the last call, without those that were there then.
  std::vector<std::string> fresh() {
    std::vector<std::string> lines = held_.take();
    std::set<std::string> seen;
    std::erase_if(lines, [&](const std::string& line) {
      return !seen.insert(line).second || last_.contains(line);
    });
    last_ = std::move(seen);
    return lines;
  }

 private:
  HeldMessages held_;
  std::set<std::string> last_;
};

void tell(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) std::fprintf(stderr, "%s\n", line.c_str());
}

// A screenful: the report, and at the bottom a line that shows that it is alive.
std::vector<std::string> frame(const Reporter& reporter, const Options& options, WindowSize size,
                               bool colour, const std::string& complaint) {
  ReportStyle style = styleOf(options);
  style.columns = size.columns;
  style.rows = size.rows - 1;
  std::vector<Line> lines = reporter.lines(style);
  lines.resize(style.rows);
  const std::string status = timeOfDay() + "   every " + secondsText(options.interval) +
                             " s   q ends   " + printable(complaint, style.unicode);
  lines.push_back(cut({{status, Ink::faint}}, size.columns));
  std::vector<std::string> rows;
  for (const Line& line : lines) rows.push_back(rendered(line, colour));
  return rows;
}

/// Makes the passes that were asked for, each a line of JSON where there is an output. Answers how
/// many there were: fewer where the program was asked to stop.
uint64_t makePasses(Sampling& sampling, const Pause& pause, const Options& options,
                    const Output* output) {
  for (uint64_t tick = 0; tick < options.ticks; ++tick) {
    if (tick > 0 && !pause.wait()) return tick;
    const auto reason = sampling.pass();
    if (output == nullptr) continue;
    output->write(reason ? jsonLine(tick, *reason) : jsonLine(tick, sampling.record()));
  }
  return options.ticks;
}

/// Opens the file for writing, which ends what it held unless the mode is to append.
std::ofstream opened(const std::string& path, std::ios::openmode mode) {
  std::ofstream file(path, mode);
  if (!file) throw Failure(path + ": " + std::strerror(errno));
  return file;
}

void writeRecording(const std::string& path, MachineRecorder& recorder) {
  std::ofstream file = opened(path, std::ios::out);
  if (!(file << recorder.machineFile() << std::flush)) {
    throw Failure(path + ": " + std::strerror(errno));
  }
}

}  // namespace

bool canRedraw(const Output& output) { return output.isTerminal() && !isDumbTerminal(); }

void printJson(Sampling& sampling, const Options& options, const Output& output) {
  const Pause pause(options);
  makePasses(sampling, pause, options, &output);
}

void recordMachine(Sampling& sampling, const Options& options, const Output& output) {
  // Whether the file can be written shows at once; what it holds stays until there is a recording.
  opened(*options.record, std::ios::app);
  MachineRecorder& recorder = *sampling.recorder();
  const Pause pause(options);
  uint64_t ticks = 0;
  try {
    ticks =
        makePasses(sampling, pause, options, options.format == Format::json ? &output : nullptr);
  } catch (...) {  // Nobody reads the lines any more: that takes nothing from the recording.
    writeRecording(*options.record, recorder);
    throw;
  }
  writeRecording(*options.record, recorder);
  if (options.format == Format::text) {
    output.write(*options.record + ": " + std::to_string(ticks) + " ticks of " + sampling.title() +
                 "\n");
  }
}

void printReports(Sampling& sampling, const Options& options, const Output& output) {
  const Pause pause(options);
  const ReportStyle style = styleOf(options);
  const bool colour = usesColour(output);
  Complaints complaints(HeldMessages::Streams::output);
  Reporter reporter(sampling, options);
  reporter.pass();
  for (uint64_t report = 0; report < options.ticks; ++report) {
    if (!pause.wait()) return;
    reporter.pass();
    tell(complaints.fresh());
    std::string text = report > 0 ? "\n" : "";
    for (const Line& line : reporter.lines(style)) text += rendered(line, colour) + "\n";
    output.write(text);
  }
}

void watchReports(Sampling& sampling, const Options& options, const Output& output) {
  const bool shared = isatty(STDERR_FILENO) == 1;
  Complaints complaints(shared ? HeldMessages::Streams::outputAndError
                               : HeldMessages::Streams::output);
  const bool colour = usesColour(output);
  const Signals signals(true);
  Screen screen(output);
  Reporter reporter(sampling, options);
  std::string complaint;
  const auto pass = [&] {
    reporter.pass();
    const std::vector<std::string> lines = complaints.fresh();
    if (!lines.empty()) complaint = lines.back();
    if (!shared) tell(lines);
    return std::chrono::steady_clock::now() + interval(options);
  };
  auto due = pass();
  for (uint64_t shown = 0;;) {
    screen.draw(frame(reporter, options, screen.size(), colour, complaint));
    switch (signals.waitUntil(due)) {
      case Wake::stop:
        return;
      case Wake::suspend:
        screen.suspend();
        break;
      case Wake::resized:
        break;
      case Wake::timeUp:
        if (shown++ == options.ticks) return;
        due = pass();
    }
  }
}

}  // namespace halvermonte
