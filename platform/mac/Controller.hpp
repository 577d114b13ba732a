// The System Management Controller of a Mac, asked through its kernel service.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte::macos {

/// One connection serves all who have the controller open. What is asked while nobody has is asked
/// over a connection for that question. One thread at a time.
class Controller {
 public:
  Controller();
  ~Controller();
  Controller(const Controller&) = delete;
  Controller& operator=(const Controller&) = delete;

  static SMCService service();
  /// Returns the kernel's code.
  uint32_t open();
  void close();

  bool answersWideCalls();
  SMCKeyInfo info(uint32_t key);
  SMCKeyBytes bytes(uint32_t key);
  /// Every key that the controller lists, in its order.
  std::vector<uint32_t> keys();

 private:
  class Connection;
  class Use;

  uint32_t keyCount();

  std::unique_ptr<Connection> connection_;
  size_t users_ = 0;
};

}  // namespace halvermonte::macos
