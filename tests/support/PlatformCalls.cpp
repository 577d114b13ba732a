#include "tests/support/PlatformCalls.hpp"

#include <IOKit/IOKitLib.h>

#include "platform/IOHIDEventSystem.h"

namespace halvermonte::test {
namespace {

thread_local PlatformCalls* listening = nullptr;

void note(const char* function, uint32_t argument) {
  if (listening != nullptr) {
    listening->made.push_back(function + (' ' + std::to_string(argument)));
  }
}

}  // namespace

PlatformCalls::PlatformCalls() { listening = this; }
PlatformCalls::~PlatformCalls() { listening = nullptr; }

}  // namespace halvermonte::test

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
