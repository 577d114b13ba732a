#include "monitor/exporter/Users.hpp"

#include <crypt.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <memory>

#include "monitor/Failure.hpp"

namespace halvermonte {
namespace {

// "$2y$", the cost as two digits, "$", and then salt and hash in 53 characters.
constexpr size_t kCostPlace = 4, kCostSize = 2, kSaltPlace = 7, kHashSize = 60;

bool areAll(std::string_view text, std::string_view characters) {
  return text.find_first_not_of(characters) == text.npos;
}

bool isBcrypt(std::string_view hash) {
  constexpr std::string_view kDigits =
      "./ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
  if (hash.size() != kHashSize || hash[kSaltPlace - 1] != '$') return false;
  const std::string_view kind = hash.substr(0, kCostPlace);
  const std::string_view cost = hash.substr(kCostPlace, kCostSize);
  return (kind == "$2y$" || kind == "$2b$" || kind == "$2a$") && areAll(cost, "0123456789") &&
         cost >= "04" && cost <= "31" && areAll(hash.substr(kSaltPlace), kDigits);
}

std::string_view costOf(std::string_view hash) { return hash.substr(kCostPlace, kCostSize); }

/// Takes as long for every text of the length.
bool areEqual(std::string_view one, std::string_view other) {
  if (one.size() != other.size()) return false;
  unsigned difference = 0;
  for (size_t i = 0; i < one.size(); ++i) {
    difference |= static_cast<unsigned char>(one[i]) ^ static_cast<unsigned char>(other[i]);
  }
  return difference == 0;
}

bool isPassword(const std::string& password, const std::string& hash) {
  const auto data = std::make_unique<crypt_data>();
  const char* const made = crypt_r(password.c_str(), hash.c_str(), data.get());
  return made != nullptr && areEqual(made, hash);
}

}  // namespace

Users::Users(const std::string& path) {
  std::ifstream file(path);
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    addLine(line, path + ":" + std::to_string(++number));
  }
  if (!file.is_open() || file.bad()) throw Failure("--users " + path + ": " + std::strerror(errno));
  if (hashes_.empty()) throw Failure("--users " + path + ": has no user", ExitStatus::wrongUse);
}

void Users::addLine(std::string_view line, const std::string& place) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.empty() || line.starts_with('#')) return;
  const size_t colon = line.find(':');
  if (colon == 0 || colon == line.npos || !isBcrypt(line.substr(colon + 1))) {
    throw Failure("--users " + place +
                      ": expected NAME:HASH with a hash of bcrypt, as htpasswd -B "
                      "writes it",
                  ExitStatus::wrongUse);
  }
  const auto [user, isNew] = hashes_.emplace(line.substr(0, colon), line.substr(colon + 1));
  if (!isNew) {
    throw Failure("--users " + place + ": " + user->first + " is there already",
                  ExitStatus::wrongUse);
  }
}

bool Users::have(const Credentials& credentials) const {
  // Characters after a NUL would not count.
  if (credentials.password.find('\0') != credentials.password.npos) return false;
  const auto user = hashes_.find(credentials.user);
  if (user != hashes_.end()) return isPassword(credentials.password, user->second);
  const auto costliest =
      std::ranges::max_element(hashes_, {}, [](const auto& each) { return costOf(each.second); });
  static_cast<void>(isPassword(credentials.password, costliest->second));
  return false;
}

}  // namespace halvermonte
