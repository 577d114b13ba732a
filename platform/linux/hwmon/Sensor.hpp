// A sensor that is read once a pass.
#pragma once

#include <cerrno>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/linux/hwmon/Gate.hpp"
#include "platform/linux/hwmon/ReadingRule.hpp"
#include "platform/linux/hwmon/Source.hpp"
#include "platform/linux/hwmon/SourceReader.hpp"
#include "platform/linux/hwmon/Trial.hpp"

namespace halvermonte::linuxos {

/// A pass, and the time at which it began.
struct Pass {
  uint64_t number = 0;
  double seconds = 0;  ///< by a clock that nobody can set
};

/// Used by one thread at a time. Its first reading is made by a trial.
class Sensor {
 public:
  struct Traits {
    double unit = 1;  ///< factor for the source's number
    ReadingRule rule = {};
    bool isRateLimited = false;      ///< read at most once in ten seconds
    PowerGate* powerGate = nullptr;  ///< null if the device does not fall asleep
  };

  Sensor(std::shared_ptr<SourceReader> reader, Traits traits)
      : reader_(std::move(reader)), traits_(std::move(traits)) {}
  Sensor(const Sensor&) = delete;
  Sensor& operator=(const Sensor&) = delete;
  /// Does not wait for a read that is under way.
  ~Sensor() { reader_->stop(); }

  /// Goes on as the sensor that was found by an earlier scan of the chips. At the same place, it
  /// takes over a read that is under way. REQUIRES: it was not read yet.
  void continueFrom(Sensor& former, bool isSamePlace);

  /// Puts the sensor on trial if its speed is unknown, or if it is time to send a command to its
  /// device. A device that is asleep is left alone.
  void joinTrial(Trial& trial, const Pass& pass);
  /// Makes the trial's reading that of this pass, if it has ended recently.
  void leaveTrial(const Pass& pass);

  /// The reading in its unit. Absent if there is none in this pass. A fast source is read once a
  /// pass, even if this is called more often, and every ten seconds if it is lost or never had a
  /// reading. Of a slow source it is the last reading while that is young.
  std::optional<double> read(const Pass& pass);

  bool isFast() const { return reader_->speed() == SourceReader::Speed::fast; }
  /// Whether the user is not allowed to read the source.
  bool isDenied() const noexcept { return answer_ && answer_->error == EACCES; }
  /// How the last reading went, as a text for people.
  std::string state() const;
  /// The source's text of the reading. "" if there is none.
  const std::string& raw() const noexcept { return raw_; }

 private:
  void update(const Pass& pass);
  bool checkAwake(const Pass& pass);
  bool isCommandDue(const Pass& pass) const;
  void takeLatest(const Pass& pass);
  void acceptAnswer(Answer answer, const Pass& pass);
  void allowBackground(const Pass& pass);
  void acceptBackground(SourceReader::History history, const Pass& pass);
  std::optional<double> valueOf(const Answer& answer);
  std::string reasonForNone() const;

  std::shared_ptr<SourceReader> reader_;
  Traits traits_;
  uint64_t pass_ = 0;
  bool isAsleep_ = false;
  bool isTried_ = false;
  bool hasHadValue_ = false;
  bool isConnected_ = false;  ///< an open input never gave such a number
  uint64_t attempts_ = 0;     ///< the source's, at the latest answer
  double nextRead_ = 0;
  std::optional<double> value_;
  std::optional<Answer> answer_;  ///< to the latest attempt
  std::string raw_;
};

}  // namespace halvermonte::linuxos
