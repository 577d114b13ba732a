#include "monitor/Sampling.hpp"

#include "monitor/HostFields.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {

Sampling::Sampling(Machine& machine) : machine_(machine), scope_(machine) {}

std::optional<std::string> Sampling::pass() {
  if (hasPassed_) machine_.nextTick();
  storeFacts();
  hasPassed_ = true;
  return foundation::reasonRaisedBy([this] { engine_.getSensorsInfo(record_); });
}

void Sampling::storeFacts() {
  const std::optional<HostFacts> facts = machine_.hostFacts();
  if (!facts) return;
  if (!hasPassed_) {
    record_->setProcessorName(engine_.askSytemInfoForProcessorName());
    record_->setSummary_cpuCores(Number::ofInt32(engine_.physicalCores()));
  }
  storeHostFacts(*record_, *facts);
}

}  // namespace halvermonte
