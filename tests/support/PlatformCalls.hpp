// What the engine calls of the platform, with arguments that no machine sees: the calls on their
// way to the portable platform, to which the linker leads them through here.
#pragma once

#include <string>
#include <vector>

namespace halvermonte::test {

/// The calling thread's calls for as long as the object is there.
class PlatformCalls {
 public:
  PlatformCalls();
  ~PlatformCalls();
  PlatformCalls(const PlatformCalls&) = delete;
  PlatformCalls& operator=(const PlatformCalls&) = delete;

  /// In order: "IOMasterPort 3", "IOServiceClose 12", "IOConnectCallStructMethod 12", and so on:
  /// the function and its first argument.
  std::vector<std::string> made;
  /// Whether the HID event system gives clients.
  bool givesClients = true;
};

/// A controller that lists its keys, as a Mac's does, for as long as the object is there: on the
/// calling thread, the command for the key at an index has the keys of the current machine's
/// inventory. The portable platform does not know the command, as the engine does not send it.
class ListedKeys {
 public:
  ListedKeys();
  ~ListedKeys();
  ListedKeys(const ListedKeys&) = delete;
  ListedKeys& operator=(const ListedKeys&) = delete;
};

}  // namespace halvermonte::test
