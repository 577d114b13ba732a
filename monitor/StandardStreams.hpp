// Standard output is for what the monitor is asked to print, and for nothing else.
#pragma once

#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace halvermonte {

/// Thrown when nobody reads standard output any more, which is not a failure.
struct ReaderGone {};

/// Writes the whole text, also to a descriptor that does not block. Returns false, with errno set,
/// if it cannot.
bool writeWhole(int descriptor, std::string_view text);

/// The ends of a pipe that no other program inherits and that never blocks: for reading, and for
/// writing. Throws a Failure with the system's reason.
std::array<int, 2> openPipe();

/// Takes over the program's standard output: what anyone else prints there goes to standard error
/// from then on. One object in a process.
class Output {
 public:
  Output();
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  /// Writes the whole text. Throws ReaderGone, or a Failure with the system's reason.
  void write(std::string_view text) const;
  bool isTerminal() const;
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

/// Holds back what the process prints on the standard streams. With an Output these are complaints
/// only; held back, they cannot spoil a screen, and one that every pass repeats is shown once. The
/// streams are as before when the object ends.
class HeldMessages {
 public:
  enum class Streams { output = 1, outputAndError = 2 };

  explicit HeldMessages(Streams streams);
  ~HeldMessages();
  HeldMessages(const HeldMessages&) = delete;
  HeldMessages& operator=(const HeldMessages&) = delete;

  /// Returns the lines printed since the last call, each once. Leaves out those that were there at
  /// the last call, too.
  std::vector<std::string> takeNew();

 private:
  std::string takeAll();

  int streams_;
  std::array<int, 2> former_{-1, -1};
  int readEnd_ = -1;
  std::set<std::string> last_;
};

}  // namespace halvermonte
