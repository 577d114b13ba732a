// The registry, its services and their connections, answered by the current machine.
#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "platform/portable/HandleTable.hpp"
#include "platform/portable/Objects.hpp"

using halvermonte::Drive;
using halvermonte::DriveStatistics;
using halvermonte::kCodeBadArgument;
using halvermonte::kCodeError;
using halvermonte::kCodeInvalidDestination;
using halvermonte::Machine;
using halvermonte::SMCService;
using halvermonte::UnreadableDrive;
using halvermonte::portable::Handle;
using halvermonte::portable::HandleKind;
using halvermonte::portable::handles;
using halvermonte::portable::objectOf;

namespace {

constexpr mach_port_t kMainPort = 1;
constexpr mach_port_t kTaskPort = 2;

kern_return_t code(uint32_t value) { return static_cast<kern_return_t>(value); }

std::string classOf(CFDictionaryRef matching) {
  const void* const name = CFDictionaryGetValue(matching, CFSTR("IOProviderClass"));
  return name != nullptr ? objectOf<__CFString>(name, "IOServiceGetMatchingServices").characters
                         : "";
}

kern_return_t matchSMC(io_iterator_t* iterator) {
  const SMCService service = Machine::current().smcService();
  if (service.code != halvermonte::kCodeSuccess) return code(service.code);
  const size_t count = service.present ? 1 : 0;
  *iterator = handles().open({.kind = HandleKind::smcServices, .count = count});
  return KERN_SUCCESS;
}

kern_return_t matchDrives(io_iterator_t* iterator) {
  const std::optional<size_t> count = Machine::current().driveCount();
  if (!count) return code(kCodeError);
  *iterator = handles().open({.kind = HandleKind::drives, .count = *count});
  return KERN_SUCCESS;
}

void put(__CFDictionary& dictionary, CFStringRef key, CFTypeRef ownedValue) {
  dictionary.add(key, ownedValue);
  CFRelease(ownedValue);
}

CFNumberRef boxed(int64_t value) {
  return CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &value);
}

__CFDictionary* statisticsOf(const DriveStatistics& drive) {
  auto* const statistics = new __CFDictionary;
  if (drive.bytesRead) put(*statistics, CFSTR("Bytes (Read)"), boxed(*drive.bytesRead));
  if (drive.bytesWritten) put(*statistics, CFSTR("Bytes (Write)"), boxed(*drive.bytesWritten));
  return statistics;
}

}  // namespace

const mach_port_t bootstrap_port = 3;

mach_port_t mach_task_self() { return kTaskPort; }

kern_return_t IOMasterPort(mach_port_t bootstrapPort, mach_port_t* masterPort) {
  if (bootstrapPort != MACH_PORT_NULL && bootstrapPort != bootstrap_port) {
    return code(kCodeInvalidDestination);
  }
  *masterPort = kMainPort;
  return KERN_SUCCESS;
}

CFMutableDictionaryRef IOServiceMatching(const char* className) {
  auto* const matching = new __CFDictionary;
  put(*matching, CFSTR("IOProviderClass"), new __CFString(className));
  return matching;
}

kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, CFDictionaryRef matching,
                                           io_iterator_t* iterator) {
  const std::string className = classOf(matching);
  CFRelease(matching);
  if (masterPort != MACH_PORT_NULL && masterPort != kMainPort) return code(kCodeInvalidDestination);
  if (className == "AppleSMC") return matchSMC(iterator);
  if (className == "IOBlockStorageDriver") return matchDrives(iterator);
  return code(kCodeBadArgument);
}

io_object_t IOIteratorNext(io_iterator_t iterator) {
  Handle* const list = handles().find(iterator);
  if (list == nullptr) return 0;
  if (list->kind == HandleKind::drives && list->position == 0) Machine::current().beginDriveWalk();
  if (list->position >= list->count) return 0;
  const HandleKind kind =
      list->kind == HandleKind::drives ? HandleKind::drive : HandleKind::smcService;
  return handles().open({.kind = kind, .position = list->position++});
}

void IOIteratorReset(io_iterator_t iterator) {
  if (Handle* const list = handles().find(iterator)) list->position = 0;
}

kern_return_t IOObjectRelease(io_object_t object) {
  return handles().close(object) ? KERN_SUCCESS : code(kCodeInvalidDestination);
}

kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t entry,
                                                CFMutableDictionaryRef* properties, CFAllocatorRef,
                                                IOOptionBits options) {
  const Handle* const service = handles().find(entry, HandleKind::drive);
  if (service == nullptr) return code(kCodeInvalidDestination);
  if (options != 0) return code(kCodeBadArgument);
  const Drive drive = Machine::current().drive(service->position);
  if (std::holds_alternative<UnreadableDrive>(drive)) return code(kCodeError);
  *properties = new __CFDictionary;
  if (const auto* statistics = std::get_if<DriveStatistics>(&drive)) {
    put(**properties, CFSTR("Statistics"), statisticsOf(*statistics));
  }
  return KERN_SUCCESS;
}

kern_return_t IOServiceOpen(io_service_t service, task_port_t task, uint32_t type,
                            io_connect_t* connection) {
  if (handles().find(service, HandleKind::smcService) == nullptr)
    return code(kCodeInvalidDestination);
  if (task != kTaskPort || type != 0) return code(kCodeBadArgument);
  const uint32_t answer = Machine::current().openSMC();
  if (answer != halvermonte::kCodeSuccess) return code(answer);
  *connection = handles().open({.kind = HandleKind::smcConnection});
  return KERN_SUCCESS;
}

kern_return_t IOServiceClose(io_connect_t connection) {
  if (handles().find(connection, HandleKind::smcConnection) == nullptr) {
    return code(kCodeInvalidDestination);
  }
  handles().close(connection);
  Machine::current().closeSMC();
  return KERN_SUCCESS;
}
