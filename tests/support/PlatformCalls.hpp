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

}  // namespace halvermonte::test
