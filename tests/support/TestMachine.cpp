#include "tests/support/TestMachine.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "platform/Foundation.hpp"

namespace halvermonte::test {

KeyAnswer&& KeyAnswer::withSize(uint32_t size) && {
  info.dataSize = size;
  return std::move(*this);
}
KeyAnswer&& KeyAnswer::withInfoCode(uint32_t code) && {
  info.code = code;
  return std::move(*this);
}
KeyAnswer&& KeyAnswer::withInfoResult(uint8_t result) && {
  info.result = result;
  return std::move(*this);
}
KeyAnswer&& KeyAnswer::withReadCode(uint32_t code) && {
  data.code = code;
  return std::move(*this);
}
KeyAnswer&& KeyAnswer::withReadResult(uint8_t result) && {
  data.result = result;
  return std::move(*this);
}

KeyAnswer rawKey(std::string_view type, const std::vector<uint8_t>& bytes) {
  KeyAnswer answer;
  answer.info.dataSize = static_cast<uint32_t>(bytes.size());
  answer.info.dataType = fourCharacterCode(type);
  std::copy(bytes.begin(), bytes.end(), answer.data.bytes.begin());
  return answer;
}

namespace {

KeyAnswer bigEndian16(std::string_view type, long number) {
  return rawKey(type, {static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number)});
}

}  // namespace

KeyAnswer sp78(double degrees) { return bigEndian16("sp78", std::lround(degrees * 256)); }

KeyAnswer flt(float number) {
  std::vector<uint8_t> bytes(sizeof number);
  std::memcpy(bytes.data(), &number, sizeof number);
  return rawKey("flt ", bytes);
}

KeyAnswer fpe2(double revolutions) { return bigEndian16("fpe2", std::lround(revolutions * 4)); }

KeyAnswer ui8(uint8_t number) { return rawKey("ui8 ", {number}); }

KeyAnswer fanDescriptor(std::string_view name) {
  std::vector<uint8_t> bytes(16, ' ');
  std::fill_n(bytes.begin(), 4, uint8_t{0});
  std::copy(name.begin(), name.end(), bytes.begin() + 4);
  return rawKey("{fds", bytes);
}

HIDService sensorWithoutProduct(double value) { return {std::nullopt, value}; }
HIDService sensorWithoutEvent(std::string product) { return {std::move(product), std::nullopt}; }

std::shared_ptr<const HIDServices> services(HIDServices list) {
  return std::make_shared<const HIDServices>(std::move(list));
}

std::string hardwareReport(std::string_view key, std::string_view value) {
  std::string report = "<plist version=\"1.0\"><array><dict><key>_items</key><array><dict><key>";
  report.append(key).append("</key><string>").append(value);
  return report + "</string></dict></array></dict></array></plist>\n";
}

void TestMachine::setProcessor(std::string_view name) {
  commands["system_profiler SPHardwareDataType -xml"] = hardwareReport("chip_type", name);
}

SMCService TestMachine::smcService() {
  asked.push_back("controller");
  return controller;
}

uint32_t TestMachine::openSMC() {
  asked.push_back("open");
  return openCode;
}

SMCKeyInfo TestMachine::smcKeyInfo(uint32_t key) {
  const std::string characters = charactersOf(key);
  asked.push_back("info " + characters);
  const auto found = keys.find(characters);
  return found != keys.end() ? found->second.info : Machine::smcKeyInfo(key);
}

SMCKeyBytes TestMachine::smcKeyBytes(uint32_t key) {
  const std::string characters = charactersOf(key);
  asked.push_back("bytes " + characters);
  const auto found = keys.find(characters);
  return found != keys.end() ? found->second.data : Machine::smcKeyBytes(key);
}

std::vector<SensorName> TestMachine::sensorNames() {
  asked.push_back("names");
  return addedNames;
}

std::shared_ptr<const HIDServices> TestMachine::hidServices(HIDSensorKind kind) {
  asked.push_back("sensors");
  const auto found = sensors.find(kind);
  return found != sensors.end() ? found->second : Machine::hidServices(kind);
}

std::optional<size_t> TestMachine::driveCount() {
  asked.push_back("drives");
  return drives ? std::optional(drives->size()) : std::nullopt;
}

void TestMachine::beginDriveWalk() {
  asked.push_back("walk");
  if (driveReason) throw PlatformException(*driveReason);
}

Drive TestMachine::drive(size_t index) {
  asked.push_back("drive " + std::to_string(index));
  return drives && index < drives->size() ? (*drives)[index] : Drive(UnreadableDrive{});
}

double TestMachine::clock() {
  asked.push_back("clock");
  return now;
}

std::optional<std::string> TestMachine::outputOfCommand(const std::string& command) {
  asked.push_back(command);
  const auto found = commands.find(command);
  return found != commands.end() ? found->second : Machine::outputOfCommand(command);
}

std::optional<int64_t> TestMachine::kernelVariable(const std::string& name) {
  asked.push_back(name);
  const auto found = kernelVariables.find(name);
  return found != kernelVariables.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace halvermonte::test
