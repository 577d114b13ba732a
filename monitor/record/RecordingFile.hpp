// The file that a recording goes to.
#pragma once

#include <string>
#include <string_view>

namespace halvermonte {

/// A regular file is replaced as a whole once there is a new recording: until then, and if anything
/// fails, it stays as it is. It keeps its permissions, and links keep pointing to it. Anything
/// else, such as a pipe, is opened at once and written to.
class RecordingFile {
 public:
  /// Throws a Failure if the path cannot be written to.
  explicit RecordingFile(const std::string& path);
  ~RecordingFile();
  RecordingFile(const RecordingFile&) = delete;
  RecordingFile& operator=(const RecordingFile&) = delete;

  /// Throws a Failure if the text cannot be written as a whole.
  void write(std::string_view text) const;

 private:
  void replace(std::string_view text) const;

  const std::string path_;
  std::string target_;   ///< the regular file, at the end of all links; "" if it is none
  int descriptor_ = -1;  ///< of what is not a regular file
};

}  // namespace halvermonte
