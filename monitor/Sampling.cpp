#include "monitor/Sampling.hpp"

#include <utility>

#include "monitor/HostFields.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {

Sampling::Sampling(ChosenMachine chosen)
    : chosen_(std::move(chosen)),
      machine_(chosen_.recorder ? *chosen_.recorder : *chosen_.machine),
      scope_(machine_) {}

std::optional<std::string> Sampling::pass() {
  if (hasPassed_) machine_.nextTick();
  if (!isAhead_) reason_ = makePass();
  isAhead_ = false;
  hasPassed_ = true;
  return reason_;
}

std::optional<std::string> Sampling::firstPass() {
  reason_ = makePass();
  isAhead_ = true;
  return reason_;
}

std::optional<std::string> Sampling::makePass() {
  storeFacts();
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
