// A sensor's number in a file of the kernel.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/linux/KeptFile.hpp"
#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Gate.hpp"
#include "platform/linux/hwmon/Source.hpp"

namespace halvermonte::linuxos {

/// Reads the file if all of its gates are open.
class FileSource : public Source {
 public:
  /// Opens no file before the first read.
  FileSource(SystemCalls& calls, std::string path, std::vector<Gate> gates)
      : file_(calls, std::move(path)), gates_(std::move(gates)) {}

  Answer read() override;

 private:
  void reopen();

  KeptFile file_;
  std::vector<Gate> gates_;
};

}  // namespace halvermonte::linuxos
