#include "tests/engine/soak/Soak.hpp"

#include <stdexcept>

#include "platform/Foundation.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/engine/CatalogueExpectations.hpp"

namespace halvermonte::test {
namespace {

constexpr const char* kProducts[] = {"pACC MTR Temp Sensor1",
                                     "eACC MTR Temp Sensor0",
                                     "GPU MTR Temp Sensor4",
                                     "SOC MTR Temp Sensor0",
                                     "ANE MTR Temp Sensor1",
                                     "ISP MTR Temp Sensor5",
                                     "Tg1b",
                                     "NAND CH0 temp",
                                     "gas gauge battery",
                                     "PMU tdie1",
                                     "PMU tdev2",
                                     "TC0P",
                                     "a name that is longer than what a text keeps within itself"};
constexpr size_t kDrives = 4;

}  // namespace

ChangingMachine::ChangingMachine() : names_(expectedTemperatureKeys()) {
  names_.insert(names_.end(), {"TI0P", "TI1P"});
  setProcessor("Apple M2 Max");
  kernelVariables["hw.physicalcpu"] = 12;
  commands["ps -p 1 -o %cpu"] = "%CPU\n 1.5\n";
  drives = std::vector<Drive>(kDrives, DriveStatistics{0, 0});
  sensors[HIDSensorKind::current] = services({sensor("current", 1.5), sensor("another", 2)});
  sensors[HIDSensorKind::voltage] = services({sensor("voltage", 12)});
}

KeyAnswer ChangingMachine::answer() {
  const double degrees = below(150) - 10 + below(4) / 4.0;
  switch (below(12)) {
    case 0:
      return ui8(40);
    case 1:
      return sp78(degrees).withSize(0);
    case 2:
      return sp78(degrees).withInfoCode(kCodeError);
    case 3:
      return sp78(degrees).withReadCode(kCodeError);
    case 4:
    case 5:
    case 6:
      return flt(static_cast<float>(degrees));
    default:
      return sp78(degrees);
  }
}

void ChangingMachine::changeController() {
  controller = {.code = oneIn(1000) ? kCodeError : kCodeSuccess, .present = !oneIn(1000)};
  openCode = oneIn(1000) ? kCodeError : kCodeSuccess;
  for (int change = 0; change < 10; ++change) {
    const std::string& name = names_[static_cast<size_t>(below(static_cast<int>(names_.size())))];
    if (oneIn(3)) {
      keys.erase(name);
    } else {
      keys[name] = answer();
    }
  }
}

void ChangingMachine::changeSensors() {
  if (oneIn(50)) {
    sensors[HIDSensorKind::temperature] = nullptr;
    return;
  }
  HIDServices list;
  for (int i = below(20); i > 0; --i) {
    list.push_back(sensor(kProducts[below(std::size(kProducts))], below(130)));
    if (oneIn(20)) list.back().product.reset();
    if (oneIn(20)) list.back().value.reset();
  }
  forgetsAReading_ = !list.empty() && oneIn(100);
  setTemperatureSensors(std::move(list));
}

void ChangingMachine::changeFans() {
  const int fans = below(11);
  keys["FNum"] = ui8(static_cast<uint8_t>(fans));
  for (int fan = 0; fan < fans; ++fan) {
    const std::string key = "F" + std::to_string(fan);
    keys[key + "ID"] = oneIn(3) ? answer() : fanDescriptor("Fan no." + std::to_string(below(9)));
    keys[key + "Ac"] = oneIn(3) ? flt(static_cast<float>(below(4000) - 100)) : fpe2(below(4000));
  }
}

void ChangingMachine::changeDrives() {
  driveReason.reset();
  if (oneIn(1000)) driveReason = "the drives are busy";
  drives->resize(static_cast<size_t>(below(kDrives + 2)), DriveStatistics{1, 1});
  for (Drive& drive : *drives) {
    drive = DriveStatistics{below(1'000'000'000), below(1'000'000'000)};
    if (oneIn(10)) drive = UnreadableDrive{};
    if (oneIn(10)) drive = DriveWithoutStatistics{};
  }
}

void ChangingMachine::change() {
  asked.clear();
  now += oneIn(100) ? -1 : below(5) / 2.0;
  changeController();
  changeSensors();
  changeFans();
  changeDrives();
}

std::shared_ptr<const HIDServices> ChangingMachine::hidServices(HIDSensorKind kind) {
  const auto list = TestMachine::hidServices(kind);
  const bool shorter = kind == HIDSensorKind::temperature && std::exchange(forgetsAReading_, false);
  return shorter ? services(HIDServices(list->begin(), list->end() - 1)) : list;
}

Soak::Soak() = default;

/// What else a host does from time to time.
void Soak::useOtherwise() {
  engine_.askSystemPS(1);
  engine_.askSytemInfoForProcessorName();
  engine_.currentArray();
  engine_.voltageArray();
  engine_.thermalArray();
  engine_.returnCurrentValues();
  engine_.returnVoltageValues();
  engine_.returnThermalValues();
  const auto snapshot = std::make_shared<StatisticsData>();
  snapshot->populateStatisticsDataFrom(*record_);
  record_ = snapshot;
}

void Soak::pass() {
  const size_t objects = portable::liveObjects();
  const size_t handles = portable::liveHandles();
  machine_.change();
  try {
    engine_.getSensorsInfo(record_);
  } catch (const RangeException&) {
    ++exceptions_;
  }
  ++passes_;
  if (passes_ % 100 == 0) useOtherwise();
  if (portable::liveObjects() != objects || portable::liveHandles() != handles) {
    throw std::runtime_error("pass " + std::to_string(passes_) + " left " +
                             std::to_string(portable::liveObjects() - objects) + " objects and " +
                             std::to_string(portable::liveHandles() - handles) + " handles");
  }
}

}  // namespace halvermonte::test
