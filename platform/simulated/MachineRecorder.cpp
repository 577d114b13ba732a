#include "halvermonte/MachineRecorder.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "halvermonte/Exceptions.hpp"
#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/MachineAnswers.hpp"
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

/// Asks what a pass does not ask in every tick.
void completeTick(RecordedTick& tick, Machine& machine) {
  if (!tick.time) tick.time = machine.clock();
  tick.answersWideCalls = machine.answersWideCalls();
  for (const auto kind :
       {HIDSensorKind::temperature, HIDSensorKind::current, HIDSensorKind::voltage}) {
    std::optional<std::shared_ptr<const HIDServices>>& services =
        tick.hid[static_cast<size_t>(kind)];
    if (!services) services = machine.hidServices(kind);
  }
}

/// Whether the type is one of numbers. A text may tell whose computer it is.
bool isNumeric(uint32_t type) {
  constexpr std::string_view kStarts[] = {"flt", "sp", "fp", "ui", "si", "ioft", "flag"};
  const std::string name = charactersOf(type);
  return std::ranges::any_of(kStarts,
                             [&](std::string_view start) { return name.starts_with(start); });
}

/// Opens the machine's controller.
bool isOpened(Machine& machine) {
  const SMCService service = machine.smcService();
  return service.code == kCodeSuccess && service.present && machine.openSMC() == kCodeSuccess;
}

RecordedTick::Key answersFor(uint32_t key, Machine& machine) {
  RecordedTick::Key answers{.info = machine.smcKeyInfo(key), .data = SMCKeyBytes{}};
  if (isNumeric(answers.info->dataType)) answers.data = machine.smcKeyBytes(key);
  return answers;
}

/// Asks for the keys that the controller lists and the engine did not ask for.
void askForOtherKeys(RecordedTick& tick, Machine& machine) {
  std::vector<uint32_t> others;
  for (const SensorListing& sensor : machine.inventory()) {
    const bool isKeyAlone = sensor.driver.empty() && !sensor.key.empty();
    if (isKeyAlone && !tick.keys.contains(fourCharacterCode(sensor.key))) {
      others.push_back(fourCharacterCode(sensor.key));
    }
  }
  if (others.empty() || !isOpened(machine)) return;
  for (const uint32_t key : others) tick.keys[key] = answersFor(key, machine);
  machine.closeSMC();
}

/// Asks what the passes of the last tick did not, so that the recording has it.
void complete(Recording& recording, Machine& machine) {
  completeTick(recording.tick(), machine);
  if (recording.ticks.size() == 1) askForOtherKeys(recording.tick(), machine);
}

}  // namespace

MachineRecorder::MachineRecorder(Machine& machine, HostName hostName)
    : MachineWrapper(machine), recording_(std::make_unique<Recording>()) {
  recording_->tellsHostName = hostName == HostName::kept;
}

MachineRecorder::~MachineRecorder() = default;

bool MachineRecorder::nextTick() {
  complete(*recording_, inner_);
  RecordedTick next;
  // A walk may end early. The drives after it are as they were.
  next.drives = recording_->tick().drives;
  recording_->ticks.push_back(std::move(next));
  return inner_.nextTick();
}

std::string MachineRecorder::machineFile() {
  complete(*recording_, inner_);
  recording_->name = inner_.name();
  recording_->hostName = inner_.localizedHostName();
  return writtenAsMachineFile(*recording_);
}

SMCService MachineRecorder::smcService() {
  return keep(recording_->tick().service, inner_.smcService());
}

uint32_t MachineRecorder::openSMC() { return keep(recording_->tick().openCode, inner_.openSMC()); }

SMCKeyInfo MachineRecorder::smcKeyInfo(uint32_t key) {
  return keep(recording_->tick().keys[key].info, inner_.smcKeyInfo(key));
}

SMCKeyBytes MachineRecorder::smcKeyBytes(uint32_t key) {
  return keep(recording_->tick().keys[key].data, inner_.smcKeyBytes(key));
}

std::vector<SensorName> MachineRecorder::sensorNames() {
  recording_->sensorNames = inner_.sensorNames();
  return recording_->sensorNames;
}

std::shared_ptr<const HIDServices> MachineRecorder::hidServices(HIDSensorKind kind) {
  return keep(recording_->tick().hid[static_cast<size_t>(kind)], inner_.hidServices(kind));
}

std::optional<size_t> MachineRecorder::driveCount() {
  const std::optional<size_t> count = inner_.driveCount();
  recording_->drivesMatched = count.has_value();
  recording_->tick().drives.assign(count.value_or(0), UnreadableDrive{});
  return count;
}

void MachineRecorder::beginDriveWalk() {
  try {
    inner_.beginDriveWalk();
  } catch (const PlatformException& exception) {
    recording_->tick().drivesRaise = exception.reason();
    throw;
  }
}

Drive MachineRecorder::drive(size_t index) {
  const Drive answer = inner_.drive(index);
  if (index < recording_->tick().drives.size()) recording_->tick().drives[index] = answer;
  return answer;
}

double MachineRecorder::clock() {
  if (!recording_->tick().time) recording_->tick().time = inner_.clock();
  return *recording_->tick().time;
}

std::optional<std::string> MachineRecorder::outputOfCommand(const std::string& command) {
  std::optional<std::string> output = inner_.outputOfCommand(command);
  recording_->commands[command] = output;
  return output;
}

std::optional<int64_t> MachineRecorder::kernelVariable(const std::string& name) {
  const std::optional<int64_t> value = inner_.kernelVariable(name);
  if (value) recording_->kernelVariables[name] = *value;
  return value;
}

}  // namespace halvermonte
