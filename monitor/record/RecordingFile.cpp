#include "monitor/record/RecordingFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <random>
#include <system_error>

#include "monitor/Failure.hpp"
#include "monitor/StandardStreams.hpp"

namespace halvermonte {
namespace {

[[noreturn]] void failOn(const std::string& path) {
  throw Failure(path + ": " + std::strerror(errno));
}

void writeTo(int descriptor, std::string_view text, const std::string& path) {
  if (!writeWhole(descriptor, text)) failOn(path);
}

std::optional<struct stat> statusOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

/// The file at the end of all links, whether it exists or not.
std::string targetOf(std::filesystem::path path) {
  constexpr int kMostLinks = 40;
  std::error_code none;
  for (int links = 0; links < kMostLinks && is_symlink(path, none); ++links) {
    path = path.parent_path() / read_symlink(path, none);
  }
  return path;
}

/// A new file in the folder of another one, which replaces it or vanishes.
class Successor {
 public:
  Successor(const std::string& path, const std::string& target)
      : path_(path),
        target_(target),
        ownPath_(std::filesystem::path(target).parent_path() /
                 (".halvermonte-monitor." + std::to_string(std::random_device()()))),
        descriptor_(open(ownPath_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {
    if (descriptor_ < 0) failOn(path_);
  }
  ~Successor() {
    close(descriptor_);
    unlink(ownPath_.c_str());
  }
  Successor(const Successor&) = delete;
  Successor& operator=(const Successor&) = delete;

  void write(std::string_view text) const { writeTo(descriptor_, text, path_); }

  void takePermissions() const {
    const auto former = statusOf(target_);
    if (!former) return;
    // The owner may stay another one: only root can give files away.
    [[maybe_unused]] const int given = fchown(descriptor_, former->st_uid, former->st_gid);
    if (fchmod(descriptor_, former->st_mode & 07777) != 0) failOn(path_);
  }

  void takePlace() const {
    if (fsync(descriptor_) != 0 || std::rename(ownPath_.c_str(), target_.c_str()) != 0) {
      failOn(path_);
    }
  }

 private:
  const std::string &path_, &target_;
  const std::string ownPath_;
  const int descriptor_;
};

}  // namespace

RecordingFile::RecordingFile(const std::string& path) : path_(path) {
  const auto status = statusOf(path);
  if (!status && errno != ENOENT) failOn(path);
  const bool isRegular = !status || S_ISREG(status->st_mode);
  if (status) descriptor_ = open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  if (status && descriptor_ < 0) failOn(path);
  if (!isRegular) return;
  target_ = targetOf(path);
  const Successor canBeMade(path_, target_);
}

RecordingFile::~RecordingFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

void RecordingFile::write(std::string_view text) const {
  if (!target_.empty()) return replace(text);
  writeTo(descriptor_, text, path_);
}

void RecordingFile::replace(std::string_view text) const {
  const Successor successor(path_, target_);
  successor.takePermissions();
  successor.write(text);
  successor.takePlace();
}

}  // namespace halvermonte
