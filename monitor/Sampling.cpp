#include "monitor/Sampling.hpp"

#include <chrono>
#include <thread>
#include <utility>

#include "halvermonte/Exceptions.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/Values.hpp"
#include "monitor/HostFields.hpp"

namespace halvermonte {

std::chrono::steady_clock::duration intervalOf(const Options& options) {
  return std::chrono::duration_cast<std::chrono::steady_clock::duration>(
      std::chrono::duration<double>(options.interval));
}

Pause::Pause(const Options& options) : interval_(intervalOf(options)) {
  if (options.watch || options.listen || options.recordingPath)
    signals_.emplace(Signals::Watch::stops);
}

bool Pause::wait(Beat::Clock::time_point counted) const {
  Beat beat(interval_, counted, Beat::Clock::now());
  do {
    if (!waitUntil(beat.due())) return false;
  } while (!beat.isOn(Beat::Clock::now()));
  return true;
}

bool Pause::waitUntil(Beat::Clock::time_point time) const {
  if (signals_) return signals_->waitUntil(time) != Wake::stop;
  std::this_thread::sleep_until(time);
  return true;
}

Sampling::Sampling(ChosenMachine chosen)
    : chosen_(std::move(chosen)),
      machine_(chosen_.recorder ? *chosen_.recorder : *chosen_.machine),
      watch_(machine_),
      scope_(watch_),
      marks_(engine_) {
  view_.title = chosen_.title;
  view_.name = machine_.name();
  view_.isSimulated = chosen_.isSimulated;
  view_.processor = engine_.askSytemInfoForProcessorName();
  view_.cores = engine_.physicalCores();
  view_.drives = watch_.drives();
}

const PassView& Sampling::pass() {
  if (hasPassed_) {
    machine_.nextTick();
    ++view_.number;
  }
  if (!isAhead_) makePass();
  isAhead_ = false;
  hasPassed_ = true;
  addExtras();
  return view_;
}

const PassView& Sampling::firstPass() {
  makePass();
  isAhead_ = true;
  return view_;
}

void Sampling::watchProcess(int32_t identifier) {
  process_.emplace(machine_, identifier, ProcessWatch::Clock::now());
}

void Sampling::makePass() {
  watch_.beginPass();
  const auto start = std::chrono::steady_clock::now();
  view_.exception.reset();
  try {
    engine_.getSensorsInfo(record_);
  } catch (const PlatformException& exception) {
    view_.exception = exception.reason();
  }
  view_.cost = std::chrono::steady_clock::now() - start;
  view_.counted = watch_.lastAsked();
  view_.time = watch_.time();
  storeFacts();  // not before the pass, as that would delay the beat
  readRecord(record_, view_);
  marks_.mark(watch_, view_);
}

void Sampling::storeFacts() {
  const std::optional<HostFacts> facts = machine_.hostFacts();
  if (!facts) return;
  record_->setProcessorName(Text(view_.processor));
  record_->setSummary_cpuCores(Number::ofInt32(view_.cores));
  storeHostFacts(*record_, *facts);
}

void Sampling::addExtras() {
  if (process_) view_.process = process_->use(ProcessWatch::Clock::now());
  if (messages_ != nullptr) view_.complaints = messages_->takeNew();
}

uint64_t makePasses(Sampling& sampling, const Pause& pause, uint64_t passes, const ShowPass& show) {
  for (uint64_t made = 0; made < passes; ++made) {
    if (sampling.hasPassed() && !pause.wait(sampling.view().counted)) return made;
    const PassView& view = sampling.pass();
    if (show) show(view);
  }
  return passes;
}

}  // namespace halvermonte
