// Checks of passwords, which take long by design.
#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "monitor/exporter/Users.hpp"

namespace halvermonte {

/// A thread of its own checks credentials one after the other, so that no check delays an answer or
/// a pass. It remembers right ones, so a client pays for the check only once: not the password, but
/// a digest with a key that the process never gives away.
class CredentialChecks {
 public:
  static constexpr size_t kMostWaiting = 8;

  explicit CredentialChecks(Users users);
  ~CredentialChecks();
  CredentialChecks(const CredentialChecks&) = delete;
  CredentialChecks& operator=(const CredentialChecks&) = delete;

  /// Whether they were right at an earlier check.
  bool remember(const Credentials& credentials) const;
  /// Whether one more may wait.
  bool haveRoom() const;
  /// Calls `done` with whether they are right, on the thread of the checks. REQUIRES: haveRoom().
  void start(Credentials credentials, std::function<void(bool areRight)> done);
  /// Ends the checks. Those that wait, and later ones, are done at once with "false".
  void close();

 private:
  using Digest = std::array<unsigned char, 32>;
  struct Check {
    Credentials credentials;
    std::function<void(bool)> done;
  };

  Digest digestOf(const Credentials& credentials) const;
  bool areRight(const Credentials& credentials);
  void run();

  const Users users_;
  std::string key_;
  mutable std::mutex mutex_;
  std::set<Digest> remembered_;  ///< no more than there are users
  std::deque<Check> waiting_;
  bool isClosed_ = false;
  std::condition_variable changed_;
  std::thread thread_;
};

}  // namespace halvermonte
