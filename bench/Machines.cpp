#include "bench/Machines.hpp"

#include <string>

#include "catalogue/Tables.hpp"
#include "halvermonte/SimulatedMachine.hpp"

namespace halvermonte {
namespace {

std::string temperatureAnswers(size_t count) {
  std::string answers;
  for (const std::string& key : distinctTemperatureKeys()) {
    if (count-- == 0) break;
    answers += "\"" + key + R"json(": {"type": "flt ", "value": 47.5}, )json";
  }
  return answers;
}

std::string temperatureServices(size_t count) {
  std::string services;
  for (size_t i = 1; i <= count; ++i) {
    services += std::string(i == 1 ? "" : ", ") + R"json({"product": "PMU tdie)json" +
                std::to_string(i) + R"json(", "value": 41.25})json";
  }
  return services;
}

}  // namespace

std::set<std::string> distinctTemperatureKeys() {
  return {std::begin(kTemperatureKeys), std::end(kTemperatureKeys)};
}

std::unique_ptr<Machine> makeFullMachine() {
  return makeMachine(distinctTemperatureKeys().size(), 24);
}

std::unique_ptr<Machine> makeMachine(size_t keys, size_t hidSensors) {
  const std::string text = R"json({
    "name": "Full",
    "sysctl": {"hw.physicalcpu": 10},
    "ticks": [{
      "smc": {"keys": {)json" +
                           temperatureAnswers(keys) + R"json(
        "FNum": {"type": "ui8 ", "value": 2},
        "F0Ac": {"type": "fpe2", "value": 1200}, "F0ID": {"type": "{fds", "name": "Left"},
        "F1Ac": {"type": "fpe2", "value": 1300}, "F1ID": {"type": "{fds", "name": "Right"}}},
      "hid": {"temperature": [)json" +
                           temperatureServices(hidSensors) + R"json(]},
      "drives": [{"Bytes (Read)": 1000000000, "Bytes (Write)": 2000000000},
                 {"Bytes (Read)": 3000000000, "Bytes (Write)": 4000000000}]
    }]
  })json";
  return SimulatedMachine::fromText(text, "full machine");
}

}  // namespace halvermonte
