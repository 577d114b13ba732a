#include "monitor/Sampling.hpp"

#include "monitor/HostFields.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {

Sampling::Sampling(Machine& machine, bool isSimulated, const Options& options)
    : machine_(machine), isSimulated_(isSimulated), scope_(machine), usage_(options.proc) {
  if (!isSimulated_) fillComputer(*record_, {.sys = options.sys, .proc = options.proc}, engine_);
}

std::optional<std::string> Sampling::pass() {
  if (hasPassed_) machine_.nextTick();
  if (!isSimulated_) usage_.fill(*record_);
  hasPassed_ = true;
  return foundation::reasonRaisedBy([this] { engine_.getSensorsInfo(record_); });
}

}  // namespace halvermonte
