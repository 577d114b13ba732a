#include "tests/mac/Sandwich.hpp"

#include "halvermonte/FourCharacterCode.hpp"
#include "platform/ParameterRecord.hpp"

namespace halvermonte::test {

Sandwich::~Sandwich() {
  const ScopedMachine scope(below_);
  mac_.reset();
}

SMCService Sandwich::smcService() {
  return ask([](MacMachine& mac) { return mac.smcService(); });
}
uint32_t Sandwich::openSMC() {
  return ask([](MacMachine& mac) { return mac.openSMC(); });
}
void Sandwich::closeSMC() {
  ask([](MacMachine& mac) { mac.closeSMC(); });
}
bool Sandwich::answersWideCalls() {
  return ask([](MacMachine& mac) { return mac.answersWideCalls(); });
}
SMCKeyInfo Sandwich::smcKeyInfo(uint32_t key) {
  return ask([=](MacMachine& mac) { return mac.smcKeyInfo(key); });
}
SMCKeyBytes Sandwich::smcKeyBytes(uint32_t key) {
  return ask([=](MacMachine& mac) { return mac.smcKeyBytes(key); });
}
std::shared_ptr<const HIDServices> Sandwich::hidServices(HIDSensorKind kind) {
  return ask([=](MacMachine& mac) { return mac.hidServices(kind); });
}
std::optional<size_t> Sandwich::driveCount() {
  return ask([](MacMachine& mac) { return mac.driveCount(); });
}
void Sandwich::beginDriveWalk() {
  ask([](MacMachine& mac) { mac.beginDriveWalk(); });
}
Drive Sandwich::drive(size_t index) {
  return ask([=](MacMachine& mac) { return mac.drive(index); });
}
double Sandwich::clock() {
  return ask([](MacMachine& mac) { return mac.clock(); });
}
std::optional<std::string> Sandwich::localizedHostName() {
  return ask([](MacMachine& mac) { return mac.localizedHostName(); });
}
std::optional<std::string> Sandwich::outputOfCommand(const std::string& command) {
  return ask([&](MacMachine& mac) { return mac.outputOfCommand(command); });
}
std::optional<int64_t> Sandwich::kernelVariable(const std::string& name) {
  return ask([&](MacMachine& mac) { return mac.kernelVariable(name); });
}
SensorInventory Sandwich::inventory() {
  return ask([](MacMachine& mac) { return mac.inventory(); });
}

SMCKeyInfo CountedKeys::smcKeyInfo(uint32_t key) {
  if (key != kKeyCountKey) return inner_.smcKeyInfo(key);
  return {.dataSize = sizeof(uint32_t), .dataType = fourCharacterCode("ui32")};
}

SMCKeyBytes CountedKeys::smcKeyBytes(uint32_t key) {
  if (key != kKeyCountKey) return inner_.smcKeyBytes(key);
  const size_t count = inventory().size();
  SMCKeyBytes data;
  data.bytes[2] = static_cast<uint8_t>(count >> 8);
  data.bytes[3] = static_cast<uint8_t>(count);
  return data;
}

SensorInventory CountedKeys::inventory() {
  SensorListing count;
  count.key = charactersOf(kKeyCountKey);
  SensorInventory all = {count};
  for (const SensorListing& sensor : inner_.inventory()) all.push_back(sensor);
  return all;
}

}  // namespace halvermonte::test
