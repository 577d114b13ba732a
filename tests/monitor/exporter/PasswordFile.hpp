// An htpasswd file for a test.
#pragma once

#include <string>

namespace halvermonte::test {

/// The hash of the password by bcrypt, which doubles its work with each unit of the cost.
std::string hashOf(const std::string& password, unsigned cost = 4);

/// A file with the text, as long as the object lives.
class PasswordFile {
 public:
  explicit PasswordFile(const std::string& text);
  ~PasswordFile();
  PasswordFile(const PasswordFile&) = delete;
  PasswordFile& operator=(const PasswordFile&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace halvermonte::test
