// A machine whose answers a test writes down, and what it was asked.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/Machine.hpp"

namespace halvermonte::test {

/// What the controller answers to both commands for one key.
struct KeyAnswer {
  SMCKeyInfo info;
  SMCKeyBytes data;

  KeyAnswer&& withSize(uint32_t size) &&;
  KeyAnswer&& withInfoCode(uint32_t code) &&;
  KeyAnswer&& withInfoResult(uint8_t result) &&;
  KeyAnswer&& withReadCode(uint32_t code) &&;
  KeyAnswer&& withReadResult(uint8_t result) &&;
};

/// The bytes as they lie in the reply; their number is the size.
KeyAnswer rawKey(std::string_view type, const std::vector<uint8_t>& bytes);
KeyAnswer sp78(double degrees);
KeyAnswer flt(float number);
KeyAnswer fpe2(double revolutions);
KeyAnswer ui8(uint8_t number);
/// A fan descriptor: 4 zero bytes, then the name padded with spaces to 12.
KeyAnswer fanDescriptor(std::string_view name);

inline HIDService sensor(std::string product, double value) { return {std::move(product), value}; }
HIDService sensorWithoutProduct(double value);
HIDService sensorWithoutEvent(std::string product);

std::shared_ptr<const HIDServices> services(HIDServices list);

/// A hardware report of one item with the entry.
std::string hardwareReport(std::string_view key, std::string_view value);

/// Everything is there for the test to set: a controller without keys, empty sensor lists and no
/// drives to begin with.
class TestMachine : public Machine {
 public:
  SMCService controller{.present = true};
  uint32_t openCode = kCodeSuccess;
  bool wideCalls = true;
  std::map<std::string, KeyAnswer, std::less<>> keys;
  std::vector<SensorName> addedNames;
  /// Null: the event system has no list of the kind.
  std::map<HIDSensorKind, std::shared_ptr<const HIDServices>> sensors;
  /// Absent: the matching call fails. Drives beyond the first count are not asked for.
  std::optional<std::vector<Drive>> drives = std::vector<Drive>{};
  /// Raised by the walk over the drives before it takes the first.
  std::optional<std::string> driveReason;
  double now = 1'000'000;
  std::optional<std::string> hostName = "test";
  std::map<std::string, std::optional<std::string>> commands;
  std::map<std::string, int64_t> kernelVariables;

  /// The questions in order, such as "info TC0P", "drive 0" or "clock".
  std::vector<std::string> asked;

  void setTemperatureSensors(HIDServices list) {
    sensors[HIDSensorKind::temperature] = services(std::move(list));
  }
  void setProcessor(std::string_view name);

  SMCService smcService() override;
  uint32_t openSMC() override;
  void closeSMC() override { asked.push_back("close"); }
  bool answersWideCalls() override { return wideCalls; }
  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  std::vector<SensorName> sensorNames() override;
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override;
  std::optional<size_t> driveCount() override;
  void beginDriveWalk() override;
  Drive drive(size_t index) override;
  double clock() override;
  std::optional<std::string> localizedHostName() override { return hostName; }
  std::optional<std::string> outputOfCommand(const std::string& command) override;
  std::optional<int64_t> kernelVariable(const std::string& name) override;
};

}  // namespace halvermonte::test
