// What the engine prints on standard output and logs on standard error, for a host that wants
// neither.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace halvermonte {

/// Keeps the lines that the calling thread prints and logs until the object's end, in their order,
/// instead of letting them out. Objects nest: the innermost one keeps them.
class KeptLines {
 public:
  KeptLines();
  ~KeptLines();
  KeptLines(const KeptLines&) = delete;
  KeptLines& operator=(const KeptLines&) = delete;

  /// Returns the lines since the last call, each ended by a line feed.
  std::string take() { return std::exchange(text_, {}); }

  /// Keeps a line. Returns false if nothing on the calling thread keeps lines.
  static bool keep(std::string_view line);

 private:
  KeptLines* former_;
  std::string text_;
};

}  // namespace halvermonte
