// The controller in the state that the ticks of a machine file so far have led to.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/simulated/MachineFile.hpp"
#include "platform/simulated/SMCAnswer.hpp"

namespace halvermonte {

struct SimulatedController {
  std::optional<ControllerState> saidState;
  bool keysGiven = false;
  uint32_t code = kCodeError;
  uint32_t absentCode = kCodeSuccess;
  bool answersWideCalls = true;
  std::unordered_map<uint32_t, const SMCAnswer*> keys;

  ControllerState state() const;
  /// The kernel's code when it is opened. REQUIRES: it is there.
  uint32_t openCode() const;
  /// The key's answer; null if it has no such key.
  const SMCAnswer* find(uint32_t key) const;

  /// The change outlives this object.
  void apply(const SMCChange& change);
};

}  // namespace halvermonte
