// Passes over a machine that never stays as it is: keys, sensors, drives and fans come and go, the
// controller and the drives fail now and then, the clock jumps.
#pragma once

#include <cstdint>
#include <memory>
#include <random>

#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/StatisticsData.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {

class ChangingMachine : public TestMachine {
 public:
  ChangingMachine();

  /// What the machine is like at the next pass.
  void change();

  /// Gives fewer readings than names now and then, which ends a pass.
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override;

 private:
  int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }
  bool oneIn(int times) { return below(times) == 0; }
  KeyAnswer answer();
  void changeController();
  void changeSensors();
  void changeFans();
  void changeDrives();

  std::mt19937 random_{75};
  std::vector<std::string> names_;
  bool forgetsAReading_ = false;
};

class Soak {
 public:
  Soak();

  /// One more pass; throws a std::runtime_error if it left an object or a handle behind.
  void pass();

  uint64_t passes() const { return passes_; }
  /// Passes that ended with an exception, as the machine made them to.
  uint64_t exceptions() const { return exceptions_; }

 private:
  void useOtherwise();

  ChangingMachine machine_;
  ScopedMachine scope_{machine_};
  HalvermonteSensorsEngine engine_;
  std::shared_ptr<StatisticsData> record_ = std::make_shared<StatisticsData>();
  uint64_t passes_ = 0;
  uint64_t exceptions_ = 0;
};

}  // namespace halvermonte::test
