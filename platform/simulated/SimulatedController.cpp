#include "platform/simulated/SimulatedController.hpp"

namespace halvermonte {

ControllerState SimulatedController::state() const {
  return saidState.value_or(keysGiven ? ControllerState::present : ControllerState::missing);
}

uint32_t SimulatedController::openCode() const {
  return state() == ControllerState::refused ? code : kCodeSuccess;
}

const SMCAnswer* SimulatedController::find(uint32_t key) const {
  const auto found = keys.find(key);
  return found == keys.end() ? nullptr : found->second;
}

void SimulatedController::apply(const SMCChange& change) {
  if (change.service) saidState = change.service;
  keysGiven |= change.givesKeys;
  code = change.code.value_or(code);
  absentCode = change.absentCode.value_or(absentCode);
  answersWideCalls = change.answersWideCalls.value_or(answersWideCalls);
  for (const auto& [key, answer] : change.keys) {
    if (answer) {
      keys.insert_or_assign(key, &*answer);
    } else {
      keys.erase(key);
    }
  }
}

}  // namespace halvermonte
