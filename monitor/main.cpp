// halvermonte-monitor: shows what the sensors engine reads.
#include <clocale>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <variant>

#include "monitor/Line.hpp"
#include "monitor/MachineChoice.hpp"
#include "monitor/Options.hpp"
#include "monitor/Runs.hpp"
#include "monitor/SensorList.hpp"
#include "monitor/StandardStreams.hpp"

namespace {

using namespace halvermonte;

enum ExitStatus { kDone = 0, kCouldNotDoIt = 1, kWrongUse = 2 };

int complain(const std::string& line, int status) {
  std::fprintf(stderr, "halvermonte-monitor: %s\n", printable(line, true).c_str());
  return status;
}

void run(const Options& options, const Output& output) {
  if (options.machine == "list") return output.write(machineList());
  const Choice choice = chooseMachine(options);
  if (!choice.hint.empty()) complain(choice.hint, kDone);
  Sampling& sampling = *choice.sampling;
  if (options.list) return output.write(sensorList(sampling));
  if (options.record) return recordMachine(sampling, options, output);
  if (options.format == Format::json) return printJson(sampling, options, output);
  if (options.watch && canRedraw(output)) return watchReports(sampling, options, output);
  printReports(sampling, options, output);
}

int answer(const Answer& answer, const Output& output) {
  if (!answer.complaint.empty()) return complain(answer.complaint, kWrongUse);
  output.write(answer.output);
  return kDone;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  std::setlocale(LC_CTYPE, "");  // numbers stay as they are
  const Output output;
  try {
    const std::variant<Options, Answer> use = parseOptions(argc, argv);
    if (const auto* given = std::get_if<Answer>(&use)) return answer(*given, output);
    run(std::get<Options>(use), output);
    return kDone;
  } catch (const ReaderGone&) {
    return kDone;
  } catch (const Failure& failure) {
    return complain(failure.what(), failure.status());
  } catch (const std::exception& error) {
    return complain(error.what(), kCouldNotDoIt);
  }
}
