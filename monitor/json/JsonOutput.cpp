#include "monitor/json/JsonOutput.hpp"

#include "monitor/json/JsonWriter.hpp"

namespace halvermonte {

void printJsonLine(const PassView& view, const Output& output) { output.write(jsonLine(view)); }

void printJson(Sampling& sampling, const Options& options, const Output& output) {
  const Pause pause(options);
  makePasses(sampling, pause, options.ticks,
             [&output](const PassView& view) { printJsonLine(view, output); });
}

}  // namespace halvermonte
