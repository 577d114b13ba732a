// Who may ask: the users of an htpasswd file.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace halvermonte {

struct Credentials {
  std::string user, password;
};

/// Names and hashes of passwords, as `htpasswd -B` writes them. Any number of threads may use an
/// object.
class Users {
 public:
  /// Reads the file. Throws a Failure if it cannot, or if a line is not a user with a bcrypt hash.
  explicit Users(const std::string& path);

  /// Whether the password is the user's. Takes the time that bcrypt takes, for a name that is not
  /// in the file too, so that nobody learns the names.
  bool have(const Credentials& credentials) const;

 private:
  /// `place` is the file and the line.
  void addLine(std::string_view line, const std::string& place);

  std::map<std::string, std::string, std::less<>> hashes_;  ///< by name
};

}  // namespace halvermonte
