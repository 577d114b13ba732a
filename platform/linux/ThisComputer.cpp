#include <memory>
#include "platform/linux/LinuxMachine.hpp"
#include "platform/portable/Machine.hpp"

namespace halvermonte {

std::unique_ptr<Machine> makeThisComputer() { return std::make_unique<LinuxMachine>(); }

}  // namespace halvermonte
