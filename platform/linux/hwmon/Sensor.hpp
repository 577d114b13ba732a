// One sensor that is read pass by pass.
#pragma once

#include <cerrno>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/KeptFile.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// The moment that readings belong to.
struct Pass {
  uint64_t number = 0;
  double seconds = 0;  ///< of a clock that is never set
};

/// Tells whether sensors may be read, by another file of theirs.
class Gate {
 public:
  enum class Kind { fault, enable, power };

  Gate(SystemCalls& calls, std::string path, Kind kind)
      : file_(calls, std::move(path)), kind_(kind) {}

  const std::string& path() const noexcept { return file_.path(); }

  /// Reads the file once a pass.
  bool checkOpen(const Pass& pass);
  /// What it is that keeps its sensors from being read.
  std::string_view reason() const;

 private:
  bool readState();

  KeptFile file_;
  Kind kind_;
  uint64_t pass_ = 0;
  bool isOpen_ = false;
};

class Sensor {
 public:
  struct Traits {
    double unit = 1;  ///< of the file's number
    int64_t lowest = 0, highest = 0;
    bool isRateLimited = false;  ///< read at most once in ten seconds
    std::vector<Gate*> gates = {};
  };
  /// What outlives another look at the computer's chips.
  struct Memory {
    std::optional<double> value;
    std::string raw;
    double nextRead = 0;
  };

  /// Opens nothing before it is read.
  Sensor(SystemCalls& calls, std::string path, Traits traits)
      : calls_(&calls), file_(calls, std::move(path)), traits_(std::move(traits)) {}

  /// The reading in its unit; absent where there is none in this pass. However often it is asked
  /// for, the file is read once a pass; one that has gone, cannot be opened, or takes long to fail,
  /// once in ten seconds.
  std::optional<double> read(const Pass& pass);

  bool isRateLimited() const noexcept { return traits_.isRateLimited; }
  Memory memory() const { return {value_, raw_, nextRead_}; }
  void remember(Memory memory);

  /// Whether the user may not read the file.
  bool isDenied() const noexcept { return file_.error() == EACCES; }
  /// How the last reading went, in words.
  std::string state() const;
  /// The file's text then.
  const std::string& raw() const noexcept { return raw_; }

 private:
  void update(const Pass& pass);
  const Gate* findClosedGate(const Pass& pass) const;
  /// Reads the file, and measures the time if the last reading failed. Returns true if this one
  /// fails after a wait: a driver may take half a second to fail, and holds up all other sensors.
  bool readTimed();
  std::optional<double> readFile();

  SystemCalls* calls_;
  KeptFile file_;
  Traits traits_;
  uint64_t pass_ = 0;
  double nextRead_ = 0;
  std::optional<double> value_;
  std::string raw_;
  const Gate* closedGate_ = nullptr;
};

}  // namespace halvermonte::linuxos
