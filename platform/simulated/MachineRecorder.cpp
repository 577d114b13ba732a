#include "platform/simulated/MachineRecorder.hpp"
#include "halvermonte/Exceptions.hpp"

#include <cstddef>
#include <optional>
#include <utility>

#include "platform/Foundation.hpp"
#include "platform/simulated/RecordingWriter.hpp"

namespace halvermonte {
namespace {

/// Keeps the answer where the tick has it, and returns it.
template <class Answer>
Answer keep(std::optional<Answer>& place, Answer answer) {
  place = answer;
  return answer;
}

}  // namespace

MachineRecorder::MachineRecorder(Machine& machine, HostName hostName)
    : MachineWrapper(machine), hostName_(hostName) {}

bool MachineRecorder::nextTick() {
  complete();
  RecordedTick next;
  next.drives = tick().drives;  // a walk may end early; the drives after it are as they were
  ticks_.push_back(std::move(next));
  return inner_.nextTick();
}

void MachineRecorder::complete() {
  if (!tick().time) tick().time = inner_.clock();
  tick().answersWideCalls = inner_.answersWideCalls();
  for (const auto kind :
       {HIDSensorKind::temperature, HIDSensorKind::current, HIDSensorKind::voltage}) {
    std::optional<std::shared_ptr<const HIDServices>>& services =
        tick().hid[static_cast<size_t>(kind)];
    if (!services) services = inner_.hidServices(kind);
  }
}

std::string MachineRecorder::machineFile() {
  complete();
  return writtenAsMachineFile({.name = inner_.name(),
                               .tellsHostName = hostName_ == HostName::kept,
                               .hostName = inner_.localizedHostName(),
                               .commands = commands_,
                               .kernelVariables = kernelVariables_,
                               .sensorNames = sensorNames_,
                               .drivesMatched = driveCount_.has_value(),
                               .ticks = ticks_});
}

SMCService MachineRecorder::smcService() { return keep(tick().service, inner_.smcService()); }

uint32_t MachineRecorder::openSMC() { return keep(tick().openCode, inner_.openSMC()); }

SMCKeyInfo MachineRecorder::smcKeyInfo(uint32_t key) {
  return keep(tick().keys[key].info, inner_.smcKeyInfo(key));
}

SMCKeyBytes MachineRecorder::smcKeyBytes(uint32_t key) {
  return keep(tick().keys[key].data, inner_.smcKeyBytes(key));
}

std::vector<SensorName> MachineRecorder::sensorNames() {
  sensorNames_ = inner_.sensorNames();
  return sensorNames_;
}

std::shared_ptr<const HIDServices> MachineRecorder::hidServices(HIDSensorKind kind) {
  return keep(tick().hid[static_cast<size_t>(kind)], inner_.hidServices(kind));
}

std::optional<size_t> MachineRecorder::driveCount() {
  driveCount_ = inner_.driveCount();
  tick().drives.assign(driveCount_.value_or(0), UnreadableDrive{});
  return driveCount_;
}

void MachineRecorder::beginDriveWalk() {
  try {
    inner_.beginDriveWalk();
  } catch (const PlatformException& exception) {
    tick().drivesRaise = exception.reason();
    throw;
  }
}

Drive MachineRecorder::drive(size_t index) {
  const Drive answer = inner_.drive(index);
  if (index < tick().drives.size()) tick().drives[index] = answer;
  return answer;
}

double MachineRecorder::clock() {
  if (!tick().time) tick().time = inner_.clock();
  return *tick().time;
}

std::optional<std::string> MachineRecorder::outputOfCommand(const std::string& command) {
  std::optional<std::string> output = inner_.outputOfCommand(command);
  commands_[command] = output;
  return output;
}

std::optional<int64_t> MachineRecorder::kernelVariable(const std::string& name) {
  const std::optional<int64_t> value = inner_.kernelVariable(name);
  if (value) kernelVariables_[name] = *value;
  return value;
}

}  // namespace halvermonte
