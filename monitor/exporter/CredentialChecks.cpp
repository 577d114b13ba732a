#include "monitor/exporter/CredentialChecks.hpp"

#include <gnutls/crypto.h>
#include <gnutls/gnutls.h>

#include <tuple>
#include <utility>

#include "monitor/Failure.hpp"

namespace halvermonte {

CredentialChecks::CredentialChecks(Users users)
    : users_(std::move(users)), key_(std::tuple_size_v<Digest>, '\0') {
  if (gnutls_rnd(GNUTLS_RND_KEY, key_.data(), key_.size()) != 0) {
    throw Failure("--users: there are no random numbers");
  }
  thread_ = std::thread([this] { run(); });
}

CredentialChecks::~CredentialChecks() { close(); }

bool CredentialChecks::remember(const Credentials& credentials) const {
  const Digest digest = digestOf(credentials);
  const std::lock_guard lock(mutex_);
  return remembered_.contains(digest);
}

bool CredentialChecks::haveRoom() const {
  const std::lock_guard lock(mutex_);
  return !isClosed_ && waiting_.size() < kMostWaiting;
}

void CredentialChecks::start(Credentials credentials, std::function<void(bool)> done) {
  std::unique_lock lock(mutex_);
  if (isClosed_) {
    lock.unlock();
    return done(false);
  }
  waiting_.push_back({std::move(credentials), std::move(done)});
  changed_.notify_one();
}

void CredentialChecks::close() {
  {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    changed_.notify_one();
  }
  if (thread_.joinable()) thread_.join();
  for (const Check& check : std::exchange(waiting_, {})) check.done(false);
}

CredentialChecks::Digest CredentialChecks::digestOf(const Credentials& credentials) const {
  const std::string text = credentials.user + ":" + credentials.password;  // no user has a colon
  Digest digest{};
  gnutls_hmac_fast(GNUTLS_MAC_SHA256, key_.data(), key_.size(), text.data(), text.size(),
                   digest.data());
  return digest;
}

bool CredentialChecks::areRight(const Credentials& credentials) {
  if (remember(credentials)) return true;  // checked for another request meanwhile
  if (!users_.have(credentials)) return false;
  const Digest digest = digestOf(credentials);
  const std::lock_guard lock(mutex_);
  remembered_.insert(digest);
  return true;
}

void CredentialChecks::run() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return isClosed_ || !waiting_.empty(); });
    if (isClosed_) return;
    const Check check = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    check.done(areRight(check.credentials));
    lock.lock();
  }
}

}  // namespace halvermonte
