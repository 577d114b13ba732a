// Notices what a machine answers in a pass, and when.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte {

class PassWatch : public MachineWrapper {
 public:
  using MachineWrapper::MachineWrapper;

  /// Forgets the answers of the former pass.
  void beginPass();

  std::optional<size_t> driveCount() override;
  double clock() override;
  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override;

  /// When the clock was asked for the last time. The engine asks when it has read the drives'
  /// counters, and measures from there.
  std::chrono::steady_clock::time_point lastAsked() const { return lastAsked_; }
  /// What the clock said: seconds since 1970-01-01T00:00:00Z.
  double time() const { return time_; }

  /// How many drives there were when somebody asked for the last time.
  size_t drives() const { return drives_; }

  bool wasAsked(uint32_t key) const { return find(key) != nullptr; }
  /// Whether the controller gave data for the key.
  bool hasRead(uint32_t key) const;
  /// The temperature sensors of the event system; null if there is no list, or nobody asked.
  const HIDServices* temperatureServices() const { return services_.get(); }

  /// A controller that gives the answers of this pass again, without a question to the machine.
  /// REQUIRES: the watch outlives it.
  std::unique_ptr<Machine> replay() const;

 private:
  class Replay;
  struct Answer {
    uint64_t pass = 0;
    SMCKeyInfo info = {.result = kSMCKeyNotFound};
    SMCKeyBytes data = {.result = kSMCKeyNotFound};
  };

  const Answer* find(uint32_t key) const;
  Answer& answerOf(uint32_t key);

  uint64_t pass_ = 1;
  std::unordered_map<uint32_t, Answer> answers_;
  std::shared_ptr<const HIDServices> services_;
  std::chrono::steady_clock::time_point lastAsked_;
  double time_ = 0;
  size_t drives_ = 0;
};

}  // namespace halvermonte
