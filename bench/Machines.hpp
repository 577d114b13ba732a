// What is measured over a machine: passes, and the machine's own answers to what they ask.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "bench/Allocations.hpp"
#include "halvermonte/Machine.hpp"

namespace halvermonte {

/// The temperature keys of the catalogue, each once.
std::set<std::string> distinctTemperatureKeys();

/// The first temperature keys of the catalogue, as many HID temperature sensors, two fans and two
/// drives.
std::unique_ptr<Machine> makeMachine(size_t keys, size_t hidSensors);

/// Every temperature key of the catalogue, two fans, 24 HID temperature sensors and two drives.
std::unique_ptr<Machine> makeFullMachine();

/// Lets a second go by each time it is asked, so that no two passes see the same clock.
class Ticking : public MachineWrapper {
 public:
  using MachineWrapper::MachineWrapper;
  double clock() override { return now_ += 1; }

 private:
  double now_ = 0;
};

/// A call that was put to a machine, to be put to it again.
using Question = std::function<void(Machine&)>;

/// Keeps what a pass asks, so that the machine's own share of a pass's time can be measured.
class QuestionRecorder : public MachineWrapper {
 public:
  using MachineWrapper::MachineWrapper;

  const std::vector<Question>& questions() const { return questions_; }

  SMCService smcService() override {
    return ask([](Machine& machine) { return machine.smcService(); });
  }
  uint32_t openSMC() override {
    return ask([](Machine& machine) { return machine.openSMC(); });
  }
  void closeSMC() override {
    ask([](Machine& machine) { machine.closeSMC(); });
  }
  bool answersWideCalls() override {
    return ask([](Machine& machine) { return machine.answersWideCalls(); });
  }
  SMCKeyInfo smcKeyInfo(uint32_t key) override {
    return ask([key](Machine& machine) { return machine.smcKeyInfo(key); });
  }
  SMCKeyBytes smcKeyBytes(uint32_t key) override {
    return ask([key](Machine& machine) { return machine.smcKeyBytes(key); });
  }
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
    return ask([kind](Machine& machine) { return machine.hidServices(kind); });
  }
  void beginDriveWalk() override {
    ask([](Machine& machine) { machine.beginDriveWalk(); });
  }
  Drive drive(size_t index) override {
    return ask([index](Machine& machine) { return machine.drive(index); });
  }
  double clock() override {
    return ask([](Machine& machine) { return machine.clock(); });
  }

 private:
  template <class Ask>
  std::invoke_result_t<Ask, Machine&> ask(Ask ask) {
    questions_.emplace_back(ask);
    return ask(inner_);
  }

  std::vector<Question> questions_;
};

/// What the pass asks of the machine.
template <class Pass>
std::vector<Question> questionsOf(Machine& machine, Pass pass) {
  QuestionRecorder recorder(machine);
  const ScopedMachine scope(recorder);
  pass();
  return recorder.questions();
}

/// Measures the pass over the machine, or just the machine's answers to one.
template <class Pass>
void measurePass(benchmark::State& state, Machine& machine, bool answersAlone, Pass pass) {
  pass();  // The first one fills what later ones find.
  const std::vector<Question> questions = questionsOf(machine, pass);
  if (answersAlone) {
    measure(state, [&] {
      for (const Question& ask : questions) ask(machine);
    });
  } else {
    measure(state, pass);
  }
  state.counters["platform_calls"] = static_cast<double>(questions.size());
}

}  // namespace halvermonte
