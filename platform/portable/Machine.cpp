#include "halvermonte/Machine.hpp"

#include <atomic>
#include <utility>

#include "halvermonte/ThisComputer.hpp"

namespace halvermonte {
namespace {

std::atomic<Machine*> processMachine{nullptr};
thread_local Machine* scopedMachine = nullptr;

/// Made when it is first asked, and alive as long as the process: other threads may still be
/// asking.
Machine& thisComputer() {
  static Machine& machine = *makeThisComputer().release();
  return machine;
}

}  // namespace

Machine::~Machine() = default;
MachineWrapper::~MachineWrapper() = default;

Machine& Machine::current() {
  if (scopedMachine != nullptr) return *scopedMachine;
  Machine* const machine = processMachine.load(std::memory_order_acquire);
  return machine != nullptr ? *machine : thisComputer();
}

void Machine::setProcessMachine(Machine* machine) {
  processMachine.store(machine, std::memory_order_release);
}

ScopedMachine::ScopedMachine(Machine& machine) : former_(std::exchange(scopedMachine, &machine)) {}

ScopedMachine::~ScopedMachine() { scopedMachine = former_; }

}  // namespace halvermonte
