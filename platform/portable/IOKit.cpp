// The registry and the SMC's user client, answered by the current machine.
#include <IOKit/IOKitLib.h>
#include <sys/sysctl.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/portable/HandleTable.hpp"
#include "platform/portable/Machine.hpp"
#include "platform/portable/Objects.hpp"

using halvermonte::Drive;
using halvermonte::DriveStatistics;
using halvermonte::kCodeBadArgument;
using halvermonte::kCodeError;
using halvermonte::kCodeInvalidDestination;
using halvermonte::Machine;
using halvermonte::SMCKeyBytes;
using halvermonte::SMCKeyInfo;
using halvermonte::SMCService;
using halvermonte::UnreadableDrive;
using halvermonte::portable::Handle;
using halvermonte::portable::HandleKind;
using halvermonte::portable::handles;
using halvermonte::portable::Retained;

namespace {

constexpr mach_port_t kMainPort = 1;
constexpr mach_port_t kTaskPort = 2;

kern_return_t code(uint32_t value) { return static_cast<kern_return_t>(value); }

std::string classOf(CFDictionaryRef matching) {
  const void* const name = CFDictionaryGetValue(matching, CFSTR("IOProviderClass"));
  return name != nullptr ? static_cast<CFStringRef>(name)->characters : "";
}

kern_return_t matchSMC(io_iterator_t* iterator) {
  const SMCService service = Machine::current().smcService();
  if (service.code != halvermonte::kCodeSuccess) return code(service.code);
  *iterator = handles().open({HandleKind::smcServices, 0, service.present ? size_t{1} : 0});
  return KERN_SUCCESS;
}

kern_return_t matchDrives(io_iterator_t* iterator) {
  const std::optional<size_t> count = Machine::current().driveCount();
  if (!count) return code(kCodeError);
  *iterator = handles().open({HandleKind::drives, 0, *count});
  return KERN_SUCCESS;
}

void put(__CFDictionary& dictionary, CFStringRef key, CFTypeRef ownedValue) {
  dictionary.entries.push_back({Retained(key), Retained(ownedValue)});
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

kern_return_t IOMasterPort(mach_port_t, mach_port_t* masterPort) {
  *masterPort = kMainPort;
  return KERN_SUCCESS;
}

CFMutableDictionaryRef IOServiceMatching(const char* className) {
  auto* const matching = new __CFDictionary;
  put(*matching, CFSTR("IOProviderClass"), new __CFString(className));
  return matching;
}

kern_return_t IOServiceGetMatchingServices(mach_port_t, CFDictionaryRef matching,
                                           io_iterator_t* iterator) {
  const std::string className = classOf(matching);
  CFRelease(matching);
  if (className == "AppleSMC") return matchSMC(iterator);
  if (className == "IOBlockStorageDriver") return matchDrives(iterator);
  return code(kCodeBadArgument);
}

io_object_t IOIteratorNext(io_iterator_t iterator) {
  const std::optional<Handle> list = handles().find(iterator);
  if (!list) return 0;
  if (list->kind == HandleKind::drives && list->position == 0) Machine::current().beginDriveWalk();
  if (list->position >= list->count) return 0;
  const HandleKind kind =
      list->kind == HandleKind::drives ? HandleKind::drive : HandleKind::smcService;
  handles().setPosition(iterator, list->position + 1);
  return handles().open({kind, list->position});
}

void IOIteratorReset(io_iterator_t iterator) { handles().setPosition(iterator, 0); }

kern_return_t IOObjectRelease(io_object_t object) {
  return handles().close(object) ? KERN_SUCCESS : code(kCodeInvalidDestination);
}

kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t entry,
                                                CFMutableDictionaryRef* properties, CFAllocatorRef,
                                                IOOptionBits) {
  const std::optional<Handle> service = handles().find(entry);
  if (!service || service->kind != HandleKind::drive) return code(kCodeInvalidDestination);
  const Drive drive = Machine::current().drive(service->position);
  if (std::holds_alternative<UnreadableDrive>(drive)) return code(kCodeError);
  *properties = new __CFDictionary;
  if (const auto* statistics = std::get_if<DriveStatistics>(&drive)) {
    put(**properties, CFSTR("Statistics"), statisticsOf(*statistics));
  }
  return KERN_SUCCESS;
}

kern_return_t IOServiceOpen(io_service_t service, task_port_t, uint32_t, io_connect_t* connection) {
  const std::optional<Handle> found = handles().find(service);
  if (!found || found->kind != HandleKind::smcService) return code(kCodeInvalidDestination);
  const uint32_t answer = Machine::current().openSMC();
  if (answer != halvermonte::kCodeSuccess) return code(answer);
  *connection = handles().open({HandleKind::smcConnection});
  return KERN_SUCCESS;
}

kern_return_t IOServiceClose(io_connect_t connection) {
  const std::optional<Handle> found = handles().find(connection);
  if (!found || found->kind != HandleKind::smcConnection) return code(kCodeInvalidDestination);
  handles().close(connection);
  Machine::current().closeSMC();
  return KERN_SUCCESS;
}

namespace {

/// Where the fields lie in the two forms of the SMC's parameter record.
struct RecordLayout {
  size_t size;
  size_t dataSize, dataSizeWidth;
  size_t dataType;
  size_t result;
  size_t command;
  size_t bytes;
};
constexpr RecordLayout kNarrow = {80, 28, 4, 32, 40, 42, 48};
constexpr RecordLayout kWide = {88, 32, 8, 40, 48, 50, 56};
constexpr uint8_t kReadBytes = 5;
constexpr uint8_t kReadKeyInfo = 9;
constexpr uint32_t kStructureCall = 2;

const RecordLayout* layoutOf(size_t inputSize, size_t outputSize) {
  if (inputSize == kNarrow.size && outputSize == kNarrow.size) return &kNarrow;
  const bool wide = inputSize == kWide.size && outputSize == kWide.size;
  return wide && Machine::current().answersWideCalls() ? &kWide : nullptr;
}

uint32_t answerKeyInfo(const RecordLayout& layout, uint32_t key, uint8_t* output) {
  const SMCKeyInfo info = Machine::current().smcKeyInfo(key);
  if (info.code != halvermonte::kCodeSuccess) return info.code;
  std::memset(output, 0, layout.size);
  output[layout.result] = info.result;
  if (info.result != 0) return info.code;
  const uint64_t dataSize = info.dataSize;  // its low bytes come first
  std::memcpy(output + layout.dataSize, &dataSize, layout.dataSizeWidth);
  std::memcpy(output + layout.dataType, &info.dataType, sizeof info.dataType);
  return info.code;
}

uint32_t answerKeyBytes(const RecordLayout& layout, uint32_t key, uint8_t* output) {
  const SMCKeyBytes answer = Machine::current().smcKeyBytes(key);
  if (answer.code != halvermonte::kCodeSuccess) return answer.code;
  std::memset(output, 0, layout.size);
  output[layout.result] = answer.result;
  if (answer.result != 0) return answer.code;
  std::copy(answer.bytes.begin(), answer.bytes.end(), output + layout.bytes);
  return answer.code;
}

}  // namespace

kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector,
                                        const void* input, size_t inputSize, void* output,
                                        size_t* outputSize) {
  const std::optional<Handle> found = handles().find(connection);
  if (!found || found->kind != HandleKind::smcConnection) return code(kCodeInvalidDestination);
  const RecordLayout* const layout = layoutOf(inputSize, *outputSize);
  if (selector != kStructureCall || layout == nullptr) return code(kCodeBadArgument);
  uint32_t key = 0;
  std::memcpy(&key, input, sizeof key);
  auto* const reply = static_cast<uint8_t*>(output);
  switch (static_cast<const uint8_t*>(input)[layout->command]) {
    case kReadKeyInfo:
      return code(answerKeyInfo(*layout, key, reply));
    case kReadBytes:
      return code(answerKeyBytes(*layout, key, reply));
    default:
      return code(kCodeBadArgument);
  }
}

int sysctlbyname(const char* name, void* oldValue, size_t* oldSize, void* newValue, size_t) {
  const std::optional<int64_t> value = Machine::current().kernelVariable(name);
  if (!value || newValue != nullptr) return -1;
  *oldSize = std::min(*oldSize, sizeof *value);
  std::memcpy(oldValue, &*value, *oldSize);
  return 0;
}
