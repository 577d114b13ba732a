#include "halvermonte/DiskCounters.h"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>

#include <cstdint>

#include "platform/CFOwned.hpp"
#include "platform/IOOwned.hpp"

using halvermonte::CFOwned;
using halvermonte::IOOwned;

namespace {

/// Leaves the iterator at its start, however the walk ends.
class Walk {
 public:
  explicit Walk(io_iterator_t drives) : drives_(drives) {}
  ~Walk() { IOIteratorReset(drives_); }
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;

  io_object_t next() const { return IOIteratorNext(drives_); }

 private:
  io_iterator_t drives_;
};

uint64_t bytesUnder(CFStringRef key, CFDictionaryRef statistics) {
  int64_t bytes = 0;
  const void* const number = CFDictionaryGetValue(statistics, key);
  if (number != nullptr) {
    CFNumberGetValue(static_cast<CFNumberRef>(number), kCFNumberSInt64Type, &bytes);
  }
  return static_cast<uint64_t>(bytes);
}

}  // namespace

void getDISKcounters(uint32_t drivelist, io_stats* i_dsk, io_stats* o_dsk) {
  uint64_t read = 0;
  uint64_t written = 0;
  {
    const Walk walk(drivelist);
    while (const IOOwned drive{walk.next()}) {
      CFMutableDictionaryRef created = nullptr;
      IORegistryEntryCreateCFProperties(drive.get(), &created, kCFAllocatorDefault, 0);
      const CFOwned properties(created);
      if (!properties) continue;
      const void* const statistics = CFDictionaryGetValue(properties.get(), CFSTR("Statistics"));
      if (statistics == nullptr) continue;
      read += bytesUnder(CFSTR("Bytes (Read)"), static_cast<CFDictionaryRef>(statistics));
      written += bytesUnder(CFSTR("Bytes (Write)"), static_cast<CFDictionaryRef>(statistics));
    }
  }
  i_dsk->bytes = read;
  o_dsk->bytes = written;
}
