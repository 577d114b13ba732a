// A sensor that is read once a pass.
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

/// A pass, and the time at which it began.
struct Pass {
  uint64_t number = 0;
  double seconds = 0;  ///< by a clock that nobody can set
};

/// A file that says whether sensors may be read.
class Gate {
 public:
  enum class Kind { fault, enable, power };

  Gate(SystemCalls& calls, std::string path, Kind kind)
      : file_(calls, std::move(path)), kind_(kind) {}

  const std::string& path() const noexcept { return file_.path(); }

  /// Returns true if the sensors may be read. Reads the file once a pass.
  bool checkOpen(const Pass& pass);
  /// Why its sensors are not read if it is closed.
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
    double unit = 1;  ///< factor for the file's number
    int64_t lowest = 0, highest = 0;
    bool isRateLimited = false;  ///< read at most once in ten seconds
    std::vector<Gate*> gates = {};
  };
  /// What a sensor keeps if the computer's chips are scanned again.
  struct Memory {
    std::optional<double> value;
    std::string raw;
    double nextRead = 0;
  };

  /// Opens no file before the first read.
  Sensor(SystemCalls& calls, std::string path, Traits traits)
      : calls_(&calls), file_(calls, std::move(path)), traits_(std::move(traits)) {}

  /// The reading in its unit. Absent if there is none in this pass. The file is read once a pass,
  /// even if this is called more often. A file that has gone, cannot be opened or is slow to fail
  /// is tried every ten seconds.
  std::optional<double> read(const Pass& pass);

  bool isRateLimited() const noexcept { return traits_.isRateLimited; }
  Memory memory() const { return {value_, raw_, nextRead_}; }
  void remember(Memory memory);

  /// Whether the user is not allowed to read the file.
  bool isDenied() const noexcept { return file_.error() == EACCES; }
  /// How the last reading went, as a text for people.
  std::string state() const;
  /// The file's text at the last reading.
  const std::string& raw() const noexcept { return raw_; }

 private:
  void update(const Pass& pass);
  const Gate* findClosedGate(const Pass& pass) const;
  /// Reads the file, and measures the time if the last reading failed. Returns true if this one
  /// fails slowly: a driver may take half a second to fail, and delays all other sensors meanwhile.
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
