#include "tests/support/PlatformCalls.hpp"

#include <IOKit/IOKitLib.h>

#include <cstring>

#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/SMC.h"
#include "platform/IOHIDEventSystem.h"
#include "platform/ParameterRecord.hpp"

namespace halvermonte::test {
namespace {

thread_local PlatformCalls* listening = nullptr;

void note(const char* function, uint32_t argument) {
  if (listening != nullptr) {
    listening->made.push_back(function + (' ' + std::to_string(argument)));
  }
}

thread_local bool keysAreListed = false;

SMCParameters keyAt(uint32_t index) {
  SMCParameters reply{};
  reply.result = kSMCKeyNotFound;
  const SensorInventory inventory = Machine::current().inventory();
  if (index >= inventory.size()) return reply;
  reply.key = fourCharacterCode(inventory[index].key);
  reply.result = 0;
  return reply;
}

}  // namespace

ListedKeys::ListedKeys() { keysAreListed = true; }
ListedKeys::~ListedKeys() { keysAreListed = false; }

PlatformCalls::PlatformCalls() { listening = this; }
PlatformCalls::~PlatformCalls() { listening = nullptr; }

}  // namespace halvermonte::test

using halvermonte::test::keysAreListed;
using halvermonte::test::listening;
using halvermonte::test::note;

extern "C" {

kern_return_t __real_halvermonte_IOMasterPort(mach_port_t bootstrapPort, mach_port_t* masterPort);
kern_return_t __wrap_halvermonte_IOMasterPort(mach_port_t bootstrapPort, mach_port_t* masterPort);
kern_return_t __wrap_halvermonte_IOMasterPort(mach_port_t bootstrapPort, mach_port_t* masterPort) {
  note("IOMasterPort", bootstrapPort);
  return __real_halvermonte_IOMasterPort(bootstrapPort, masterPort);
}

kern_return_t __real_halvermonte_IOServiceClose(io_connect_t connection);
kern_return_t __wrap_halvermonte_IOServiceClose(io_connect_t connection);
kern_return_t __wrap_halvermonte_IOServiceClose(io_connect_t connection) {
  note("IOServiceClose", connection);
  return __real_halvermonte_IOServiceClose(connection);
}

kern_return_t __real_halvermonte_IOConnectCallStructMethod(mach_port_t connection,
                                                           uint32_t selector, const void* input,
                                                           size_t inputSize, void* output,
                                                           size_t* outputSize);
kern_return_t __wrap_halvermonte_IOConnectCallStructMethod(mach_port_t connection,
                                                           uint32_t selector, const void* input,
                                                           size_t inputSize, void* output,
                                                           size_t* outputSize);
kern_return_t __wrap_halvermonte_IOConnectCallStructMethod(mach_port_t connection,
                                                           uint32_t selector, const void* input,
                                                           size_t inputSize, void* output,
                                                           size_t* outputSize) {
  note("IOConnectCallStructMethod", connection);
  if (keysAreListed && inputSize == sizeof(SMCParameters)) {
    SMCParameters question;
    std::memcpy(&question, input, sizeof question);
    if (question.command == halvermonte::kSMCReadKeyAtIndex) {
      const SMCParameters reply = halvermonte::test::keyAt(question.data32);
      std::memcpy(output, &reply, sizeof reply);
      return KERN_SUCCESS;
    }
  }
  return __real_halvermonte_IOConnectCallStructMethod(connection, selector, input, inputSize,
                                                      output, outputSize);
}

IOHIDEventSystemClientRef __real_halvermonte_IOHIDEventSystemClientCreate(CFAllocatorRef allocator);
IOHIDEventSystemClientRef __wrap_halvermonte_IOHIDEventSystemClientCreate(CFAllocatorRef allocator);
IOHIDEventSystemClientRef __wrap_halvermonte_IOHIDEventSystemClientCreate(
    CFAllocatorRef allocator) {
  if (listening != nullptr && !listening->givesClients) return nullptr;
  return __real_halvermonte_IOHIDEventSystemClientCreate(allocator);
}
}
