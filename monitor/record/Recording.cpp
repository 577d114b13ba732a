#include "monitor/record/Recording.hpp"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <ios>
#include <ostream>
#include <string>

#include "halvermonte/MachineRecorder.hpp"
#include "monitor/Failure.hpp"

namespace halvermonte {
namespace {

[[noreturn]] void failOn(const std::string& path) {
  throw Failure(path + ": " + std::strerror(errno));
}

/// Fails at once if nobody can write to the file. What it holds stays until there is a recording.
void checkIsWritable(const std::string& path) {
  if (!std::ofstream(path, std::ios::app)) failOn(path);
}

void writeRecording(const std::string& path, MachineRecorder& recorder) {
  std::ofstream file(path);
  if (!file || !(file << recorder.machineFile() << std::flush)) failOn(path);
}

}  // namespace

void recordMachine(Sampling& sampling, const Options& options, const Output& output,
                   const ShowPass& show) {
  const std::string& path = *options.recordingPath;
  checkIsWritable(path);
  const Pause pause(options);
  uint64_t ticks = 0;
  try {
    ticks = makePasses(sampling, pause, options.ticks, show);
  } catch (...) {  // The lines have no reader any more, but the recording is still wanted.
    writeRecording(path, *sampling.recorder());
    throw;
  }
  writeRecording(path, *sampling.recorder());
  if (show) return;
  output.write(path + ": " + std::to_string(ticks) + " ticks of " + sampling.view().title + "\n");
}

}  // namespace halvermonte
