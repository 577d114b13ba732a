#include "platform/linux/hwmon/Sensor.hpp"

#include <array>
#include <system_error>

#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

constexpr double kRetrySeconds = 10;
constexpr double kSlowSeconds = 0.02;

}  // namespace

bool Gate::checkOpen(const Pass& pass) {
  if (pass_ != pass.number) {
    pass_ = pass.number;
    isOpen_ = readState();
  }
  return isOpen_;
}

bool Gate::readState() {
  std::array<char, 32> buffer;
  const std::string_view text = trimmed(file_.read(buffer));
  switch (kind_) {
    // A sensor is read if its gate's file cannot be read.
    case Kind::fault:
      return integer(text).value_or(0) == 0;
    case Kind::enable:
      return integer(text).value_or(1) != 0;
    case Kind::power:
      break;
  }
  // A device in any other or unknown state may be asleep.
  return text == "active" || text == "unsupported" || text == "D0";
}

std::string_view Gate::reason() const {
  switch (kind_) {
    case Kind::fault:
      return "no reading: the driver reports a fault";
    case Kind::enable:
      return "no reading: switched off";
    case Kind::power:
      break;
  }
  return "asleep: not read";
}

std::optional<double> Sensor::read(const Pass& pass) {
  if (pass_ != pass.number) {
    pass_ = pass.number;
    update(pass);
  }
  return value_;
}

void Sensor::update(const Pass& pass) {
  closedGate_ = findClosedGate(pass);
  if (closedGate_ != nullptr) {
    value_.reset();
    raw_.clear();
    nextRead_ = 0;
    return;
  }
  if (pass.seconds < nextRead_) return;
  const bool wasLost = file_.isLost();
  if (wasLost) file_.reopen();
  const bool failedSlowly = readTimed();
  if (traits_.isRateLimited || wasLost || failedSlowly) nextRead_ = pass.seconds + kRetrySeconds;
}

const Gate* Sensor::findClosedGate(const Pass& pass) const {
  for (Gate* const gate : traits_.gates) {
    if (!gate->checkOpen(pass)) return gate;
  }
  return nullptr;
}

bool Sensor::readTimed() {
  if (file_.error() == 0) {
    value_ = readFile();
    return false;
  }
  const double began = calls_->steadySeconds();
  value_ = readFile();
  return file_.error() != 0 && calls_->steadySeconds() - began > kSlowSeconds;
}

std::optional<double> Sensor::readFile() {
  std::array<char, 64> buffer;
  raw_ = trimmed(file_.read(buffer));
  const std::optional<int64_t> number = integer(raw_);
  if (!number || *number < traits_.lowest || *number > traits_.highest) return std::nullopt;
  return static_cast<double>(*number) * traits_.unit;
}

void Sensor::remember(Memory memory) {
  value_ = memory.value;
  raw_ = std::move(memory.raw);
  nextRead_ = memory.nextRead;
}

std::string Sensor::state() const {
  if (closedGate_ != nullptr) return std::string(closedGate_->reason());
  if (file_.error() != 0) {
    return "no reading: " + std::generic_category().message(file_.error());
  }
  if (!value_) return integer(raw_) ? "no reading: outside its range" : "no reading: not a number";
  return file_.state() == KeptFile::State::openedPerRead ? "opened each time" : "read";
}

}  // namespace halvermonte::linuxos
