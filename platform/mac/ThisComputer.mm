#include "halvermonte/ThisComputer.hpp"

#import <Foundation/Foundation.h>

#include <stdexcept>

#include "platform/mac/HostFacts.hpp"
#include "platform/mac/MacMachine.hpp"
#include "platform/mac/Processes.hpp"

namespace halvermonte {
namespace {

/// What a Mac alone can say, and an autorelease pool for every question that Foundation or the
/// event system answers, since a program in C++ has none.
class ThisMac final : public MacMachine {
 public:
  std::optional<HostFacts> hostFacts() override { return macos::readHostFacts(); }
  Process process(int32_t identifier) override { return macos::readProcess(identifier); }

  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
    @autoreleasepool {
      return MacMachine::hidServices(kind);
    }
  }
  double clock() override {
    @autoreleasepool {
      return MacMachine::clock();
    }
  }
  std::optional<std::string> localizedHostName() override {
    @autoreleasepool {
      return MacMachine::localizedHostName();
    }
  }
  std::optional<std::string> outputOfCommand(const std::string& command) override {
    @autoreleasepool {
      return MacMachine::outputOfCommand(command);
    }
  }
};

}  // namespace

std::unique_ptr<Machine> makeThisComputer(ComputerFolders folders,
                                          const ComputerOptions& /*options*/) {
  const ComputerFolders usual;
  if (folders.sys != usual.sys || folders.proc != usual.proc || folders.etc != usual.etc) {
    throw std::invalid_argument("a Mac's sensors are not in folders");
  }
  return std::make_unique<ThisMac>();
}

}  // namespace halvermonte
