#include "monitor/PassWatch.hpp"

namespace halvermonte {

class PassWatch::Replay : public Machine {
 public:
  explicit Replay(const PassWatch& watch) : watch_(watch) {}

  SMCService smcService() override { return {.present = true}; }
  SMCKeyInfo smcKeyInfo(uint32_t key) override {
    const Answer* const answer = watch_.find(key);
    return answer != nullptr ? answer->info : Machine::smcKeyInfo(key);
  }
  SMCKeyBytes smcKeyBytes(uint32_t key) override {
    const Answer* const answer = watch_.find(key);
    return answer != nullptr ? answer->data : Machine::smcKeyBytes(key);
  }

 private:
  const PassWatch& watch_;
};

std::unique_ptr<Machine> PassWatch::replay() const { return std::make_unique<Replay>(*this); }

void PassWatch::beginPass() {
  ++pass_;
  services_.reset();
}

std::optional<size_t> PassWatch::driveCount() {
  const std::optional<size_t> count = inner_.driveCount();
  drives_ = count.value_or(0);
  return count;
}

double PassWatch::clock() {
  time_ = inner_.clock();
  lastAsked_ = std::chrono::steady_clock::now();
  return time_;
}

SMCKeyInfo PassWatch::smcKeyInfo(uint32_t key) {
  return answerOf(key).info = inner_.smcKeyInfo(key);
}

SMCKeyBytes PassWatch::smcKeyBytes(uint32_t key) {
  return answerOf(key).data = inner_.smcKeyBytes(key);
}

std::shared_ptr<const HIDServices> PassWatch::hidServices(HIDSensorKind kind) {
  auto services = inner_.hidServices(kind);
  if (kind == HIDSensorKind::temperature) services_ = services;
  return services;
}

bool PassWatch::hasRead(uint32_t key) const {
  const Answer* const answer = find(key);
  return answer != nullptr && answer->info.dataSize != 0 && answer->data.code == kCodeSuccess &&
         answer->data.result == 0;
}

const PassWatch::Answer* PassWatch::find(uint32_t key) const {
  const auto found = answers_.find(key);
  return found != answers_.end() && found->second.pass == pass_ ? &found->second : nullptr;
}

PassWatch::Answer& PassWatch::answerOf(uint32_t key) {
  Answer& answer = answers_[key];
  if (answer.pass != pass_) answer = {.pass = pass_};
  return answer;
}

}  // namespace halvermonte
