// Standard output belongs to the monitor's reports alone: these classes keep it so.
#pragma once

#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace halvermonte {

/// The reader of standard output is gone, which is no failure.
struct ReaderGone {};

/// The program's standard output, taken over: what anyone else prints there from now on goes to
/// standard error. One object in a process.
class Output {
 public:
  Output();
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  /// Writes all of it at once. Throws ReaderGone, or a Failure that tells the system's reason.
  void write(std::string_view text) const;
  bool isTerminal() const;
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

/// Holds back what the process prints on the two standard streams, of which Output has left nothing
/// but complaints: so that a screen stays whole, and that a complaint of each pass is told once. At
/// the end the streams are as they were.
class HeldMessages {
 public:
  enum class Streams { output = 1, outputAndError = 2 };

  explicit HeldMessages(Streams streams);
  ~HeldMessages();
  HeldMessages(const HeldMessages&) = delete;
  HeldMessages& operator=(const HeldMessages&) = delete;

  /// The lines that were printed since the last call, each once, and without those that the last
  /// call found as well.
  std::vector<std::string> takeNew();

 private:
  std::string takeAll();

  int streams_;
  std::array<int, 2> former_{-1, -1};
  int readEnd_ = -1;
  std::set<std::string> last_;
};

}  // namespace halvermonte
