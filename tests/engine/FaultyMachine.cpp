#include "tests/engine/FaultyMachine.hpp"

#include <limits>
#include <map>
#include <new>

#include "platform/Foundation.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

constexpr uint32_t kHighBits = 0x4000;

const std::map<Question, std::vector<Way>> kWays = {
    {Question::smcService, {Way::code, Way::absent, Way::outOfMemory}},
    {Question::openSMC, {Way::code, Way::outOfMemory}},
    {Question::closeSMC, {Way::outOfMemory}},
    {Question::wideCalls, {Way::refused, Way::outOfMemory}},
    {Question::keyInfo,
     {Way::code, Way::codeOfHighBits, Way::result, Way::noData, Way::outOfMemory}},
    {Question::keyBytes, {Way::code, Way::codeOfHighBits, Way::result, Way::outOfMemory}},
    {Question::sensors,
     {Way::absent, Way::empty, Way::oneLess, Way::withoutProducts, Way::withoutEvents,
      Way::outOfMemory}},
    {Question::driveCount, {Way::absent, Way::empty, Way::outOfMemory}},
    {Question::driveWalk, {Way::raises, Way::outOfMemory}},
    {Question::drive, {Way::absent, Way::empty, Way::raises, Way::outOfMemory}},
    {Question::clock, {Way::backwards, Way::notANumber, Way::outOfMemory}},
    {Question::command, {Way::absent, Way::empty, Way::outOfMemory}},
    {Question::kernelVariable, {Way::absent, Way::outOfMemory}},
};

}  // namespace

const std::vector<Way>& waysOf(Question question) { return kWays.at(question); }

std::string described(const Call& call, Way way) {
  static const char* const kQuestions[] = {"matching the controller",
                                           "opening the controller",
                                           "closing the controller",
                                           "asking for wide calls",
                                           "key information",
                                           "key bytes",
                                           "sensors",
                                           "matching the drives",
                                           "the walk over the drives",
                                           "drive",
                                           "the clock",
                                           "command",
                                           "kernel variable"};
  static const char* const kWayNames[] = {"well",
                                          "with a code",
                                          "with a code of high bits",
                                          "with a result",
                                          "with no data",
                                          "refused",
                                          "absent",
                                          "empty",
                                          "with one less",
                                          "without products",
                                          "without events",
                                          "backwards",
                                          "with no number",
                                          "with an exception",
                                          "out of memory"};
  return std::string(kQuestions[static_cast<size_t>(call.question)]) + ' ' + call.subject + ": " +
         kWayNames[static_cast<size_t>(way)];
}

void FaultyMachine::failAt(size_t place, Way way) {
  calls_.clear();
  every_.reset();
  place_ = place;
  way_ = way;
}

void FaultyMachine::failEvery(const Call& call, Way way) {
  failAt(0, way);
  every_ = call;
}

Way FaultyMachine::noted(Question question, std::string subject) {
  calls_.push_back({question, std::move(subject)});
  const bool fails = every_ ? calls_.back() == *every_ : calls_.size() == place_ + 1;
  const Way way = fails ? way_ : Way::none;
  if (way == Way::outOfMemory) throw std::bad_alloc();
  if (way == Way::raises) throw PlatformException("a fault on purpose");
  return way;
}

SMCService FaultyMachine::smcService() {
  switch (noted(Question::smcService)) {
    case Way::code:
      return {.code = kCodeError, .present = true};
    case Way::absent:
      return {};
    default:
      return MachineWrapper::smcService();
  }
}

uint32_t FaultyMachine::openSMC() {
  return noted(Question::openSMC) == Way::code ? kCodeError : MachineWrapper::openSMC();
}

void FaultyMachine::closeSMC() {
  noted(Question::closeSMC);
  MachineWrapper::closeSMC();
}

bool FaultyMachine::answersWideCalls() {
  return noted(Question::wideCalls) != Way::refused && MachineWrapper::answersWideCalls();
}

SMCKeyInfo FaultyMachine::smcKeyInfo(uint32_t key) {
  switch (noted(Question::keyInfo, charactersOf(key))) {
    case Way::code:
      return {.code = kCodeError};
    case Way::codeOfHighBits:
      return {.code = kHighBits};
    case Way::result:
      return {.result = kSMCKeyNotFound};
    case Way::noData: {
      SMCKeyInfo info = MachineWrapper::smcKeyInfo(key);
      info.dataSize = 0;
      return info;
    }
    default:
      return MachineWrapper::smcKeyInfo(key);
  }
}

SMCKeyBytes FaultyMachine::smcKeyBytes(uint32_t key) {
  switch (noted(Question::keyBytes, charactersOf(key))) {
    case Way::code:
      return {.code = kCodeError};
    case Way::codeOfHighBits:
      return {.code = kHighBits};
    case Way::result:
      return {.result = kSMCKeyNotFound};
    default:
      return MachineWrapper::smcKeyBytes(key);
  }
}

std::shared_ptr<const HIDServices> FaultyMachine::hidServices(HIDSensorKind kind) {
  const Way way = noted(Question::sensors);
  HIDServices list = *MachineWrapper::hidServices(kind);
  switch (way) {
    case Way::absent:
      return nullptr;
    case Way::empty:
      list.clear();
      break;
    case Way::oneLess:
      list.pop_back();
      break;
    case Way::withoutProducts:
      for (HIDService& sensor : list) sensor.product.reset();
      break;
    case Way::withoutEvents:
      for (HIDService& sensor : list) sensor.value.reset();
      break;
    default:
      break;
  }
  return services(std::move(list));
}

std::optional<size_t> FaultyMachine::driveCount() {
  switch (noted(Question::driveCount)) {
    case Way::absent:
      return std::nullopt;
    case Way::empty:
      return 0;
    default:
      return MachineWrapper::driveCount();
  }
}

void FaultyMachine::beginDriveWalk() {
  noted(Question::driveWalk);
  MachineWrapper::beginDriveWalk();
}

Drive FaultyMachine::drive(size_t index) {
  switch (noted(Question::drive, std::to_string(index))) {
    case Way::absent:
      return UnreadableDrive{};
    case Way::empty:
      return DriveWithoutStatistics{};
    default:
      return MachineWrapper::drive(index);
  }
}

double FaultyMachine::clock() {
  switch (noted(Question::clock)) {
    case Way::backwards:
      return MachineWrapper::clock() - 100;
    case Way::notANumber:
      return std::numeric_limits<double>::quiet_NaN();
    default:
      return MachineWrapper::clock();
  }
}

std::optional<std::string> FaultyMachine::outputOfCommand(const std::string& command) {
  switch (noted(Question::command, command)) {
    case Way::absent:
      return std::nullopt;
    case Way::empty:
      return "";
    default:
      return MachineWrapper::outputOfCommand(command);
  }
}

std::optional<int64_t> FaultyMachine::kernelVariable(const std::string& name) {
  return noted(Question::kernelVariable, name) == Way::absent
             ? std::nullopt
             : MachineWrapper::kernelVariable(name);
}

}  // namespace halvermonte::test
