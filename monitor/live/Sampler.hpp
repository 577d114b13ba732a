// Passes on a thread of their own, so that slow sensors never hold up a key.
#pragma once

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "monitor/Beat.hpp"
#include "monitor/MachineChoice.hpp"
#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/StandardStreams.hpp"
#include "monitor/live/Snapshot.hpp"

namespace halvermonte {

/// Makes the engine and its passes, one after the other and each on its beat, until as many are
/// made as the options ask for.
class Sampler {
 public:
  /// Called on the thread, once.
  using Choose = std::function<Choice(const Options&)>;

  /// REQUIRES: the messages outlive the sampler, and nobody else takes them.
  Sampler(const Options& options, HeldMessages& messages, Choose choose);
  /// Waits for the end of the pass that is being made.
  ~Sampler();
  Sampler(const Sampler&) = delete;
  Sampler& operator=(const Sampler&) = delete;

  /// A descriptor that can be read if take() has something new, or the sampler has ended.
  int news() const { return readEnd_; }
  /// Returns the newest pass; null if there is none since the last call.
  std::shared_ptr<const Snapshot> take();
  /// Whether no pass follows. Throws what ended the passes, if anything did.
  bool hasEnded();

  void setPaused(bool isPaused);

  /// Asks the thread to end. Returns whether it did within that time.
  bool stop(std::chrono::milliseconds patience);

 private:
  void run();
  void makePasses();
  /// Waits until the next pass is due. Returns false if the thread has to end.
  bool wait(Beat::Clock::time_point counted);
  void publish(std::shared_ptr<const Snapshot> snapshot);
  void announce() const;

  const Options options_;
  HeldMessages& messages_;
  const Choose choose_;
  int readEnd_ = -1, writeEnd_ = -1;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::shared_ptr<const Snapshot> newest_;
  std::exception_ptr failure_;
  bool isPaused_ = false, isStopped_ = false, hasEnded_ = false;

  std::thread thread_;  ///< the last member, as it uses the others
};

}  // namespace halvermonte
