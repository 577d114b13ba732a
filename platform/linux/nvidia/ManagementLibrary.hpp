// NVIDIA's management library, which its driver brings along. It is opened at run time if it is
// there.
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "platform/linux/hwmon/Chips.hpp"
#include "platform/linux/hwmon/Source.hpp"

namespace halvermonte::linuxos {

/// Any thread may call.
class ManagementLibrary {
 public:
  /// Opens nothing yet. `path` is what dlopen() takes, or "" if no library may be asked.
  explicit ManagementLibrary(std::string path);
  ManagementLibrary(const ManagementLibrary&) = delete;
  ManagementLibrary& operator=(const ManagementLibrary&) = delete;
  /// Shuts the library down and unloads it.
  ~ManagementLibrary();

  /// Whether the library can tell the speeds of fans. Loads it, but does not initialise it: a
  /// loaded library has not opened any device.
  bool hasFanSpeeds();

  /// Whether the library stays initialised from the next reading on. While it is, it holds the
  /// devices that were read open, and none of them can fall asleep.
  void keepInitialised(bool isKept) { isKept_ = isKept; }

  using Readings = std::map<Quantity, Answer>;
  /// Reads the temperature and, if the library can, the speed of the first fan. The texts are in
  /// the kernel's units. May take any time. REQUIRES: the device with that PCI address is awake.
  Readings read(const std::string& address);

 private:
  struct Functions;
  class Session;

  /// The library's functions. Null if it cannot be loaded or lacks one of them. Tries again each
  /// time until it is loaded.
  const Functions* load();
  /// Opens or closes the session that keeps the library initialised. REQUIRES: another one is open,
  /// so that this changes no more than the library's count of sessions.
  void updateKeptSession();

  const std::string path_;
  std::atomic<bool> isKept_ = false;
  std::mutex mutex_;  ///< guards what follows; not held while the library reads
  void* handle_ = nullptr;
  std::unique_ptr<const Functions> functions_;
  std::unique_ptr<const Session> kept_;
};

}  // namespace halvermonte::linuxos
