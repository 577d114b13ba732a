#include "platform/mac/BlockDrives.hpp"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>

#include <cstdint>
#include <utility>

#include "platform/CFOwned.hpp"
#include "platform/MainPort.hpp"

namespace halvermonte::macos {
namespace {

std::optional<int64_t> bytesUnder(CFStringRef key, CFDictionaryRef statistics) {
  const void* const number = CFDictionaryGetValue(statistics, key);
  if (number == nullptr) return std::nullopt;
  int64_t bytes = 0;
  CFNumberGetValue(static_cast<CFNumberRef>(number), kCFNumberSInt64Type, &bytes);
  return bytes;
}

}  // namespace

std::optional<size_t> BlockDrives::count() {
  drives_.clear();
  matched_.reset();
  io_iterator_t found = 0;
  const kern_return_t code = IOServiceGetMatchingServices(
      mainPort(MACH_PORT_NULL), IOServiceMatching("IOBlockStorageDriver"), &found);
  if (code != KERN_SUCCESS) return std::nullopt;
  matched_.emplace(found);
  takeAll();
  return drives_.size();
}

void BlockDrives::beginWalk() {
  drives_.clear();
  if (!matched_) return;
  IOIteratorReset(matched_->get());
  takeAll();
}

void BlockDrives::takeAll() {
  while (IOOwned drive{IOIteratorNext(matched_->get())}) drives_.push_back(std::move(drive));
}

Drive BlockDrives::read(size_t index) const {
  if (index >= drives_.size()) return UnreadableDrive{};
  CFMutableDictionaryRef created = nullptr;
  IORegistryEntryCreateCFProperties(drives_[index].get(), &created, kCFAllocatorDefault, 0);
  const CFOwned properties(created);
  if (!properties) return UnreadableDrive{};
  const void* const found = CFDictionaryGetValue(properties.get(), CFSTR("Statistics"));
  if (found == nullptr) return DriveWithoutStatistics{};
  const auto* const statistics = static_cast<CFDictionaryRef>(found);
  return DriveStatistics{bytesUnder(CFSTR("Bytes (Read)"), statistics),
                         bytesUnder(CFSTR("Bytes (Write)"), statistics)};
}

}  // namespace halvermonte::macos
