#include "monitor/report/TextOutput.hpp"

#include <cstdio>
#include <string>
#include <vector>

#include "monitor/Line.hpp"
#include "monitor/PassView.hpp"
#include "monitor/TerminalKind.hpp"
#include "monitor/report/Report.hpp"

namespace halvermonte {
namespace {

bool usesColour(const Options& options, const Output& output) {
  if (options.colours == Colours::always) return true;
  return output.isTerminal() && !isDumbTerminal() && wantsColour(options.colours);
}

ReportStyle styleOf(const Options& options) {
  return {.unicode = isUnicode(), .fahrenheit = options.fahrenheit};
}

void printOnStandardError(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) std::fprintf(stderr, "%s\n", line.c_str());
}

std::string printed(const std::vector<Line>& lines, bool colour) {
  std::string text;
  for (const Line& line : lines) text += rendered(line, colour) + "\n";
  return text;
}

}  // namespace

void printReports(Sampling& sampling, const Options& options, const Output& output) {
  const Pause pause(options);
  const ReportStyle style = styleOf(options);
  const bool colour = usesColour(options, output);
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

}  // namespace halvermonte
