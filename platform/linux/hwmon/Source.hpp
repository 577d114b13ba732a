// Where a sensor's number comes from.
#pragma once

#include <string>
#include <string_view>

namespace halvermonte::linuxos {

/// What one attempt to read a number gave.
struct Answer {
  std::string text = "";          ///< the number's; "" if there is none
  int error = 0;                  ///< the errno if the attempt failed
  std::string_view refusal = "";  ///< why there is no number although nothing failed; a literal
  bool isLost = false;            ///< the source has gone or cannot be opened
  bool isOpenedEachTime = false;  ///< for want of descriptors
};

/// Only one thread at a time reads a source, but not always the same one.
class Source {
 public:
  Source() = default;
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  virtual ~Source() = default;

  /// May take any time, or never return. A source that was lost is looked for again.
  virtual Answer read() = 0;
};

}  // namespace halvermonte::linuxos
