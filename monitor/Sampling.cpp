#include "monitor/Sampling.hpp"

#include "monitor/HostFields.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {

Sampling::Sampling(ChosenMachine& machine, const Options& options)
    : simulated_(machine.simulated),
      scope_(*machine.machine),
      roots_{.sys = options.sys, .proc = options.proc} {
  if (!simulated_) fillComputer(*record_, roots_, engine_);
}

std::optional<std::string> Sampling::pass() {
  if (!simulated_) {
    fillUsage(*record_, roots_);
  } else if (hasPassed_) {
    simulated_->nextTick();
  }
  hasPassed_ = true;
  return foundation::reasonRaisedBy([this] { engine_.getSensorsInfo(record_); });
}

}  // namespace halvermonte
