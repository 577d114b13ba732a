#include "halvermonte/ThisComputer.hpp"

#include <utility>

#include "platform/linux/LinuxMachine.hpp"

namespace halvermonte {

std::unique_ptr<Machine> makeThisComputer(ComputerFolders folders, const ComputerOptions& options) {
  return std::make_unique<LinuxMachine>(std::move(folders), options);
}

}  // namespace halvermonte
