#include "platform/linux/hwmon/FileSource.hpp"

#include <array>
#include <string_view>

#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {

Answer FileSource::read() {
  if (file_.state() == KeptFile::State::gone) reopen();
  for (Gate& gate : gates_) {
    if (!gate.checkOpen()) return {.refusal = gate.reason()};
  }
  std::array<char, 64> buffer;
  const std::string_view text = trimmed(file_.read(buffer));
  return {.text = std::string(text),
          .error = file_.error(),
          .isLost = file_.isLost(),
          .isOpenedEachTime = file_.state() == KeptFile::State::openedPerRead};
}

void FileSource::reopen() {
  file_.reopen();
  for (Gate& gate : gates_) gate.reopenIfGone();
}

}  // namespace halvermonte::linuxos
