#include "monitor/Sampling.hpp"

#include "monitor/HostFields.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {

Sampling::Sampling(ChosenMachine& machine, const Options& options, MachineRecorder* recorder)
    : simulated_(machine.simulated),
      recorder_(recorder),
      scope_(recorder != nullptr ? *recorder : *machine.machine),
      usage_(options.proc) {
  if (simulated_ == nullptr) {
    fillComputer(*record_, {.sys = options.sys, .proc = options.proc}, engine_);
  }
}

std::optional<std::string> Sampling::pass() {
  if (hasPassed_ && recorder_ != nullptr) recorder_->nextTick();
  if (hasPassed_ && simulated_ != nullptr) simulated_->nextTick();
  if (simulated_ == nullptr) usage_.fill(*record_);
  hasPassed_ = true;
  return foundation::reasonRaisedBy([this] { engine_.getSensorsInfo(record_); });
}

}  // namespace halvermonte
