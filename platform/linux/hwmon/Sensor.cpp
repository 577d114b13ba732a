#include "platform/linux/hwmon/Sensor.hpp"

#include <algorithm>
#include <system_error>

#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

/// A slow source's reading is not used any more at this age.
constexpr double kTooOldSeconds = 30;
/// A slow source is read so long after the last pass, for hosts with rare passes.
constexpr double kGoesOnSeconds = 300;

using Speed = SourceReader::Speed;

}  // namespace

void Sensor::continueFrom(Sensor& former, bool isSamePlace) {
  SourceReader::History history = former.reader_->history();
  // A fast source is opened anew, since another device may have taken the place meanwhile.
  if (isSamePlace && history.speed != Speed::fast) {
    std::swap(reader_, former.reader_);
  } else {
    reader_->continueFrom(std::move(history));
  }
  isTried_ = former.isTried_;
  attempts_ = former.attempts_;
  hasHadValue_ = former.hasHadValue_;
  isConnected_ = former.isConnected_;
  if (!traits_.isRateLimited) return;
  nextRead_ = former.nextRead_;
  value_ = former.value_;
  answer_ = std::move(former.answer_);
  raw_ = std::move(former.raw_);
}

void Sensor::joinTrial(Trial& trial, const Pass& pass) {
  const Speed speed = reader_->speed();
  const bool isNew = !isTried_ && speed == Speed::unknown;
  if ((isNew || (speed == Speed::fast && isCommandDue(pass))) && checkAwake(pass)) {
    trial.add(reader_);
  }
}

void Sensor::leaveTrial(const Pass& pass) {
  const SourceReader::History history = reader_->history();
  if (history.speed == Speed::unknown || (isTried_ && !isCommandDue(pass))) return;
  isTried_ = true;
  const bool isAnswered = history.speed == Speed::slow || history.attempts != attempts_;
  const bool isRecent = pass.seconds < history.nextAttempt;
  if (!isAnswered || !isRecent || !checkAwake(pass)) return;
  pass_ = pass.number;
  takeLatest(pass);
}

std::optional<double> Sensor::read(const Pass& pass) {
  if (pass_ != pass.number) {
    pass_ = pass.number;
    update(pass);
  }
  return value_;
}

void Sensor::update(const Pass& pass) {
  if (!checkAwake(pass)) {
    value_.reset();
    raw_.clear();
    nextRead_ = 0;
    return;
  }
  if (!isTried_) return;
  if (isFast()) {
    // A command was sent by a trial, as a device that was fast may take seconds to wake up.
    if (traits_.isRateLimited || pass.seconds < nextRead_) return;
    reader_->attempt();
  }
  takeLatest(pass);
}

bool Sensor::isCommandDue(const Pass& pass) const {
  return traits_.isRateLimited && pass.seconds >= nextRead_;
}

bool Sensor::checkAwake(const Pass& pass) {
  isAsleep_ = traits_.powerGate != nullptr && !traits_.powerGate->checkOpen(pass.number);
  return !isAsleep_;
}

void Sensor::takeLatest(const Pass& pass) {
  if (!isFast()) allowBackground(pass);
  SourceReader::History history = reader_->history();
  attempts_ = history.attempts;
  if (history.speed == Speed::fast) {
    acceptAnswer(std::move(*history.latest), pass);
  } else {
    acceptBackground(std::move(history), pass);
  }
}

void Sensor::acceptAnswer(Answer answer, const Pass& pass) {
  value_ = valueOf(answer);
  hasHadValue_ = hasHadValue_ || value_;
  raw_ = answer.text;
  const bool isRare = traits_.isRateLimited || answer.isLost || !hasHadValue_;
  nextRead_ = isRare ? pass.seconds + kRetrySeconds : 0;
  answer_ = std::move(answer);
}

void Sensor::allowBackground(const Pass& pass) {
  // Only a pass knows whether the device is awake, so each one allows a single reading of it.
  const double goesOn = traits_.powerGate == nullptr ? kGoesOnSeconds : 0;
  reader_->keepReading(pass.seconds, pass.seconds + goesOn);
}

void Sensor::acceptBackground(SourceReader::History history, const Pass& pass) {
  const bool isYoung = history.reading && pass.seconds - history.readingTime < kTooOldSeconds;
  value_ = isYoung ? valueOf(*history.reading) : std::nullopt;
  raw_ = isYoung ? history.reading->text : "";
  // The attempt that gave this old reading is not the one under way.
  const bool isOverdue = !isYoung && history.latest && history.latest->error == 0;
  answer_ = isOverdue ? std::nullopt : std::move(history.latest);
}

std::optional<double> Sensor::valueOf(const Answer& answer) {
  const ReadingRule& rule = traits_.rule;
  const std::optional<int64_t> number = integer(answer.text);
  if (!number || *number < rule.lowest || *number > rule.highest) return std::nullopt;
  if (std::ranges::count(rule.constants, *number) > 0) return std::nullopt;
  isConnected_ = isConnected_ || *number < kOpenInputs;
  if (rule.isOpenInput && !isConnected_) return std::nullopt;
  return static_cast<double>(*number) * traits_.unit;
}

std::string Sensor::state() const {
  if (isAsleep_) return "asleep: not read";
  const bool isSlow = reader_->speed() == Speed::slow;
  if (!value_) {
    return "no reading: " + reasonForNone() + (isSlow ? ", read in the background" : "");
  }
  if (isSlow) return "read in the background";
  return answer_->isOpenedEachTime ? "opened each time" : "read";
}

std::string Sensor::reasonForNone() const {
  if (!answer_) return "not answered yet";
  if (answer_->error != 0) return std::generic_category().message(answer_->error);
  if (!answer_->refusal.empty()) return std::string(answer_->refusal);
  const std::optional<int64_t> number = integer(answer_->text);
  if (!number) return "not a number";
  const ReadingRule& rule = traits_.rule;
  if (*number < rule.lowest || *number > rule.highest) return "outside its range";
  return rule.isOpenInput ? "nothing seems to be connected" : "a constant of the firmware";
}

}  // namespace halvermonte::linuxos
