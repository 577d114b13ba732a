#include "halvermonte/BundledMachines.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "halvermonte/CountTexts.hpp"
#include "platform/FanCount.hpp"
#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/JsonValue.hpp"
#include "platform/simulated/MachineFile.hpp"
#include "platform/simulated/SMCAnswer.hpp"

namespace halvermonte {
namespace {

char lowered(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool equalInAnyCase(std::string_view first, std::string_view second) {
  return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                    [](char a, char b) { return lowered(a) == lowered(b); });
}

std::string processorOf(const BundledMachine& machine) {
  const std::string fileName(machine.fileName);
  const JsonValue json = parseJson(machine.json, fileName);
  const JsonPlace root(fileName, json);
  const JsonPlace processor = root.required("processor");
  const auto intel = processor.find("cpu_type");
  return (intel ? *intel : processor.required("chip_type")).text();
}

size_t fansOf(const MachineTick& tick) {
  const auto count = tick.smc.keys.find(kFanCountKey);
  if (count == tick.smc.keys.end()) return 0;
  const std::optional<SMCAnswer>& answer = count->second;
  return answer ? fanCount(answer->dataSize, answer->bytesAt(tick.time)) : 0;
}

size_t hidSensorsOf(const MachineTick& tick) {
  size_t sensors = 0;
  for (const auto& list : tick.hid) {
    if (list && *list) sensors += (*list)->size();
  }
  return sensors;
}

}  // namespace

std::string BundledMachine::description() const {
  const MachineFile machine = MachineFile::fromText(json, std::string(fileName));
  const MachineTick& tick = machine.ticks.front();
  const auto cores = static_cast<size_t>(machine.kernelVariables.at("hw.physicalcpu"));
  const size_t drives = tick.drives && *tick.drives ? (*tick.drives)->size() : 0;
  return processorOf(*this) + ", " + counted(cores, "core") + ", " +
         counted(tick.smc.keys.size(), "SMC key") + ", " +
         counted(hidSensorsOf(tick), "HID sensor") + ", " + counted(fansOf(tick), "fan") + ", " +
         counted(drives, "drive");
}

const BundledMachine* findBundledMachine(std::string_view name) {
  for (const BundledMachine& machine : bundledMachines()) {
    const std::string_view stem = machine.fileName.substr(0, machine.fileName.rfind('.'));
    if (equalInAnyCase(name, machine.name) || equalInAnyCase(name, stem)) return &machine;
  }
  return nullptr;
}

}  // namespace halvermonte
