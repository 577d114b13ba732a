#include "platform/linux/hwmon/Gate.hpp"

#include <array>
#include <optional>

#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {

bool Gate::checkOpen() {
  std::array<char, 32> buffer;
  const std::optional<int64_t> number = integer(trimmed(file_.read(buffer)));
  if (!number) return true;  // The sensor is read if this file cannot be read.
  return kind_ == Kind::fault ? *number == 0 : *number != 0;
}

std::string_view Gate::reason() const {
  return kind_ == Kind::fault ? "the driver reports a fault" : "switched off";
}

void Gate::reopenIfGone() {
  if (file_.state() == KeptFile::State::gone) file_.reopen();
}

bool PowerGate::checkOpen(uint64_t pass) {
  if (pass_ == pass) return isOpen_;
  pass_ = pass;
  std::array<char, 32> buffer;
  const std::string_view text = trimmed(file_.read(buffer));
  // A device in any other or unknown state may be asleep.
  isOpen_ = text == "active" || text == "unsupported" || text == "D0";
  return isOpen_;
}

}  // namespace halvermonte::linuxos
