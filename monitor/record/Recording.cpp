#include "monitor/record/Recording.hpp"

#include <cstdint>
#include <memory>
#include <string>

#include "halvermonte/MachineRecorder.hpp"
#include "monitor/JsonEscapes.hpp"
#include "monitor/Line.hpp"
#include "monitor/record/RecordingFile.hpp"

namespace halvermonte {

void recordMachine(Sampling& sampling, const Options& options, const Output& output,
                   const ShowPass& show) {
  const std::string& path = *options.recordingPath;
  // Fails at once if nobody can write there.
  const auto file =
      options.recordsOnStandardOutput() ? nullptr : std::make_unique<RecordingFile>(path);
  const auto writeRecording = [&] {
    const std::string recording = escapedJson(sampling.recorder()->machineFile());
    file ? file->write(recording) : output.write(recording);
  };
  const Pause pause(options);
  uint64_t ticks = 0;
  try {
    ticks = makePasses(sampling, pause, options.ticks, show);
  } catch (...) {  // The lines have no reader any more, but the recording is still wanted.
    writeRecording();
    throw;
  }
  writeRecording();
  if (show || !file) return;
  output.write(
      printable(path + ": " + std::to_string(ticks) + " ticks of " + sampling.view().title, true) +
      "\n");
}

}  // namespace halvermonte
