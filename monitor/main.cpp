// halvermonte-monitor: shows what the sensors engine reads.
#include <clocale>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <variant>

#include "monitor/Failure.hpp"
#include "monitor/Line.hpp"
#include "monitor/MachineChoice.hpp"
#include "monitor/Options.hpp"
#include "monitor/PassView.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/StandardStreams.hpp"
#include "monitor/exporter/Exporter.hpp"
#include "monitor/json/JsonOutput.hpp"
#include "monitor/list/SensorList.hpp"
#include "monitor/live/LiveView.hpp"
#include "monitor/record/Recording.hpp"
#include "monitor/report/TextOutput.hpp"

namespace {

using namespace halvermonte;

void complain(const std::string& line) {
  std::fprintf(stderr, "halvermonte-monitor: %s\n", printable(line, true).c_str());
}

ExitStatus fail(const std::string& line, ExitStatus status) {
  complain(line);
  return status;
}

void record(Sampling& sampling, const Options& options, const Output& output) {
  ShowPass show;
  if (options.format == Format::json) {
    show = [&output](const PassView& view) { printJsonLine(view, output); };
  }
  recordMachine(sampling, options, output, show);
}

/// --watch is the same at a terminal, as far as it prints reports.
bool isForLiveView(const Options& options, const Output& output) {
  const bool printsReports =
      options.format == Format::text && !options.list && !options.recordingPath;
  return options.live || (options.watch && printsReports && canShowLive(output));
}

void run(const Options& options, const Output& output) {
  if (options.machine == "list") return output.write(machineList());
  if (isForLiveView(options, output)) return showLive(options, output);
  if (options.listen) return serve(options);
  const Choice choice = chooseMachine(options);
  Sampling& sampling = *choice.sampling;
  if (options.process) sampling.watchProcess(*options.process);
  if (!choice.hint.empty()) complain(choice.hint);
  if (options.list) {
    const bool isJson = options.format == Format::json;
    return output.write(isJson ? sensorListJson(sampling) : sensorList(sampling, options));
  }
  if (options.recordingPath) return record(sampling, options, output);
  if (options.format == Format::json) return printJson(sampling, options, output);
  printReports(sampling, options, output);
}

ExitStatus exitEarly(const EarlyExit& exit, const Output& output) {
  if (!exit.complaint.empty()) return fail(exit.complaint, ExitStatus::wrongUse);
  output.write(exit.output);
  return ExitStatus::success;
}

ExitStatus runProgram(int argc, const char* const* argv) {
  const Output output;
  try {
    const std::variant<Options, EarlyExit> use = parseOptions(argc, argv);
    if (const auto* exit = std::get_if<EarlyExit>(&use)) return exitEarly(*exit, output);
    run(std::get<Options>(use), output);
    return ExitStatus::success;
  } catch (const ReaderGone&) {
    return ExitStatus::success;
  } catch (const Failure& failure) {
    return fail(failure.what(), failure.status());
  } catch (const std::exception& error) {
    return fail(error.what(), ExitStatus::failure);
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  std::setlocale(LC_CTYPE, "");  // numbers stay as they are
  return static_cast<int>(runProgram(argc, argv));
}
