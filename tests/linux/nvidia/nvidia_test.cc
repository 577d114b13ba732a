// NVIDIA's own driver: its devices, read through a stand-in for its library.
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "tests/linux/Computer.hpp"
#include "tests/linux/WatchedCalls.hpp"
#include "tests/linux/nvidia/StandIn.hpp"

namespace halvermonte::test {
namespace {

using ::testing::IsEmpty;

constexpr const char* kCurrent = STAND_IN_current;

bool isLoaded(const char* library) {
  void* const handle = dlopen(library, RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

/// A device's path, below a bridge of its own.
std::string placeOf(const std::string& address) {
  return "pci0000:00/0000:00:" + address.substr(5, 2) + ".0/" + address;
}

const std::string kFirst = keyOf("nvidia", placeOf("0000:01:00.0"));
const std::string kSecond = keyOf("nvidia", placeOf("0000:03:00.0"));

class Nvidia : public ::testing::Test {
 protected:
  Nvidia() : handle_(dlopen(kCurrent, RTLD_NOW)) {
    auto* const function = reinterpret_cast<StandInFunction*>(dlsym(handle_, kStandInFunction));
    library = function();
    add(0, "0000:01:00.0", 54, 1320);
  }
  ~Nvidia() override {
    machine_.reset();
    calls.reset();
    dlclose(handle_);
    EXPECT_FALSE(isLoaded(kCurrent)) << "the next test would find its state";
  }

  /// Adds a device to the tree and to the library.
  void add(size_t index, const char* address, unsigned degrees, unsigned turnsPerMinute) {
    const std::string device = "sys/devices/" + placeOf(address);
    tree.write(device + "/class", "0x030000\n").write(device + "/power/control", "on\n");
    tree.write(device + "/power/runtime_status", "active\n");
    tree.link("sys/bus/pci/drivers/nvidia/" + std::string(address), device);
    StandInDevice& known = library->devices[index];
    known.address = address;
    known.degrees = degrees;
    known.turnsPerMinute = turnsPerMinute;
  }
  void writePower(const std::string& file, const std::string& text) {
    tree.write("sys/devices/" + placeOf("0000:01:00.0") + "/power/" + file, text);
  }

  LinuxMachine& machineWith(const std::string& path) {
    machine_ = std::make_unique<LinuxMachine>(tree.roots(),
                                              ComputerOptions{.managementLibrary = path}, *calls);
    return *machine_;
  }
  LinuxMachine& machine() { return machine_ ? *machine_ : machineWith(kCurrent); }
  void endMachine() { machine_.reset(); }
  SensorListing listing(const std::string& file) { return listed(machine(), "nvidia", file); }
  int openSessions() const { return library->initialised - library->shutDowns; }

  Tree tree;
  std::unique_ptr<WatchedCalls> calls = std::make_unique<WatchedCalls>();
  StandIn* library = nullptr;

 private:
  void* handle_;
  std::unique_ptr<LinuxMachine> machine_;
};

TEST_F(Nvidia, TemperatureAndFanAreReadInEachPass) {
  EXPECT_EQ(temperature(machine(), kFirst), 54);
  EXPECT_EQ(fans(machine()).at(0), std::pair(std::string("nvidia-1"), 1320.0F));
  library->devices[0].degrees = 55;
  library->devices[0].turnsPerMinute = 0;
  calls->seconds += 1;
  const Connection connection(machine());
  EXPECT_EQ(connection.temperature(kFirst), 55);
  EXPECT_EQ(connection.fans().at(0).second, 0);
}

TEST_F(Nvidia, ChipIsListedWithItsDevice) {
  const SensorListing fan = listing("fan1_input");
  EXPECT_EQ(fan.device, placeOf("0000:01:00.0"));
  EXPECT_EQ(fan.quantity, "fan");
  EXPECT_EQ(fan.state, "read");
  EXPECT_EQ(fan.raw, "1320");
  EXPECT_EQ(listing("temp1_input").raw, "54000");
}

TEST_F(Nvidia, DevicesStandInTheOrderOfTheHardwareAmongOtherChips) {
  add(1, "0000:03:00.0", 61, 0);
  addChip(tree, 0, "amdgpu", placeOf("0000:02:00.0"), {{"temp1", "44000", "edge"}});
  std::vector<std::string> texts;
  for (const SensorListing& sensor : machine().inventory()) texts.push_back(sensor.raw);
  EXPECT_THAT(texts, ::testing::ElementsAre("54000", "1320", "44000", "61000", "0"));
}

TEST_F(Nvidia, OnlyGraphicsDevicesAreRead) {
  tree.write("sys/devices/" + placeOf("0000:01:00.0") + "/class", "0x040300\n");
  tree.write("sys/bus/pci/drivers/nvidia/new_id", "");
  EXPECT_THAT(machine().inventory(), IsEmpty());
}

TEST_F(Nvidia, InitialisingWakesNoDevice) {
  listing("temp1_input");
  EXPECT_EQ(library->flags, 2u) << "devices are not attached";
}

TEST_F(Nvidia, SleepingDeviceIsNeverTouched) {
  add(1, "0000:03:00.0", 61, 0);
  writePower("control", "auto\n");
  writePower("runtime_status", "suspended\n");
  EXPECT_EQ(temperature(machine(), kFirst), -1);
  EXPECT_EQ(fans(machine()).at(0).second, -1);
  EXPECT_EQ(listing("temp1_input").state, "asleep: not read");
  EXPECT_EQ(library->devices[0].attached, 0);
  EXPECT_EQ(temperature(machine(), kSecond), 61) << "the other is awake";
  writePower("runtime_status", "active\n");
  EXPECT_EQ(temperature(machine(), kFirst), 54);
}

TEST_F(Nvidia, NothingIsInitialisedIfEveryDeviceSleeps) {
  writePower("runtime_status", "suspended\n");
  machine().inventory();
  EXPECT_EQ(library->initialised, 0);
}

TEST_F(Nvidia, LibraryStaysInitialisedIfNoDeviceFallsAsleep) {
  listing("temp1_input");
  EXPECT_EQ(openSessions(), 1);
  endMachine();
  EXPECT_EQ(openSessions(), 0);
}

TEST_F(Nvidia, DeviceThatMayFallAsleepIsReleasedAfterEachReading) {
  add(1, "0000:03:00.0", 61, 0);
  writePower("control", "auto\n");
  EXPECT_EQ(temperature(machine(), kFirst), 54);
  EXPECT_GT(library->initialised, 0);
  EXPECT_EQ(openSessions(), 0) << "also if another device stays awake";
  calls->seconds += 10;
  EXPECT_EQ(temperature(machine(), kSecond), 61);
  EXPECT_EQ(openSessions(), 0);
}

TEST_F(Nvidia, LibraryIsShutDownOnceADeviceMayFallAsleep) {
  EXPECT_EQ(temperature(machine(), kFirst), 54);
  EXPECT_EQ(openSessions(), 1);
  writePower("control", "auto\n");
  addChip(tree, 0, "acpitz", "virtual/thermal/thermal_zone0", {{"temp1", "30000"}});
  calls->seconds += 10;
  EXPECT_EQ(temperature(machine(), kFirst), 54);
  EXPECT_EQ(openSessions(), 0);
}

TEST_F(Nvidia, DeviceThatMayFallAsleepIsReadOnceInTenSecondsForAllItsSensors) {
  writePower("control", "auto\n");
  for (int i = 0; i < 20; ++i, calls->seconds += 1) {
    const Connection connection(machine());
    EXPECT_EQ(connection.temperature(kFirst), 54);
    EXPECT_EQ(connection.fans().at(0).second, 1320);
  }
  EXPECT_EQ(library->devices[0].attached, 2);
}

TEST_F(Nvidia, SensorsOfADeviceThatMayFallAsleepDoNotTakeTurnsInKeepingItAwake) {
  writePower("control", "auto\n");
  EXPECT_EQ(temperature(machine(), kFirst), 54);
  for (int i = 0; i < 3; ++i) {
    calls->seconds += 10;
    EXPECT_EQ(temperature(machine(), kFirst), 54);
    calls->seconds += 5;
    EXPECT_EQ(fans(machine()).at(0).second, 1320);
  }
  EXPECT_EQ(library->devices[0].attached, 4);
}

TEST_F(Nvidia, MissingLibraryGivesNoReading) {
  machineWith(tree.at("libnvidia-ml.so.1"));
  EXPECT_EQ(temperature(machine(), kFirst), -1);
  EXPECT_THAT(fans(machine()), IsEmpty());
  EXPECT_EQ(listing("temp1_input").state, "no reading: NVIDIA's library is not there, or too old");
}

TEST_F(Nvidia, MissingLibraryIsTriedEveryTenSeconds) {
  machineWith(tree.at("libnvidia-ml.so.1"));
  EXPECT_EQ(temperature(machine(), kFirst), -1);
  std::filesystem::create_symlink(kCurrent, tree.at("libnvidia-ml.so.1"));
  calls->seconds += 9;
  EXPECT_EQ(temperature(machine(), kFirst), -1);
  calls->seconds += 1;
  EXPECT_EQ(temperature(machine(), kFirst), 54);
}

TEST_F(Nvidia, LibraryWithoutFanSpeedsGivesTemperatures) {
  machineWith(STAND_IN_withoutFans);
  void* const handle = dlopen(STAND_IN_withoutFans, RTLD_NOW);
  auto* const older = reinterpret_cast<StandInFunction*>(dlsym(handle, kStandInFunction))();
  older->devices[0].address = "0000:01:00.0";
  older->devices[0].degrees = 47;
  EXPECT_EQ(temperature(machine(), kFirst), 47);
  EXPECT_THAT(fans(machine()), IsEmpty());
  endMachine();
  dlclose(handle);
}

TEST_F(Nvidia, LibraryThatMayWakeDevicesIsNotUsed) {
  machineWith(STAND_IN_tooOld);
  EXPECT_EQ(listing("temp1_input").state, "no reading: NVIDIA's library is not there, or too old");
  EXPECT_FALSE(isLoaded(STAND_IN_tooOld));
}

TEST_F(Nvidia, FailureToInitialiseIsTriedAgainAfterTenSeconds) {
  EXPECT_EQ(temperature(machine(), kFirst), 54);
  library->initialiseCode = 18;
  calls->seconds += 1;
  EXPECT_EQ(temperature(machine(), kFirst), -1);
  EXPECT_EQ(listing("temp1_input").state,
            "no reading: NVIDIA's library and driver are of different versions");
  library->initialiseCode = 0;
  calls->seconds += 9;
  EXPECT_EQ(temperature(machine(), kFirst), -1);
  calls->seconds += 1;
  EXPECT_EQ(temperature(machine(), kFirst), 54);
}

TEST_F(Nvidia, UnknownDeviceGivesNoReading) {
  library->devices[0].address = "0000:09:00.0";
  EXPECT_EQ(listing("temp1_input").state, "no reading: NVIDIA's library does not know the device");
  EXPECT_EQ(openSessions(), 1);
}

TEST_F(Nvidia, DeviceThatTheLibraryLosesIsTriedAgainAfterTenSeconds) {
  EXPECT_EQ(temperature(machine(), kFirst), 54);
  library->devices[0].address = "";
  calls->seconds += 1;
  EXPECT_EQ(temperature(machine(), kFirst), -1);
  library->devices[0].address = "0000:01:00.0";
  calls->seconds += 9;
  EXPECT_EQ(temperature(machine(), kFirst), -1);
  calls->seconds += 1;
  EXPECT_EQ(temperature(machine(), kFirst), 54);
}

TEST_F(Nvidia, FailureOfOneSensorLeavesTheOther) {
  library->devices[0].temperatureCode = 999;
  EXPECT_EQ(listing("temp1_input").state, "no reading: NVIDIA's library reports an error");
  EXPECT_EQ(listing("fan1_input").raw, "1320");
  library->devices[0].fanCode = 3;
  calls->seconds += 10;
  EXPECT_EQ(listing("fan1_input").state, "no reading: the device has no such sensor");
}

TEST_F(Nvidia, DeviceThatTheUserMayNotReadCountsAsDenied) {
  library->initialiseCode = 4;
  EXPECT_EQ(listing("temp1_input").state, "no reading: Permission denied");
  EXPECT_EQ(machine().refusedSensors(), 2u);
}

TEST_F(Nvidia, TreeDoesNotAskThisComputersLibrary) {
  machineWith(ComputerOptions().managementLibrary);
  EXPECT_EQ(listing("temp1_input").state, "no reading: NVIDIA's library knows only this computer");
}

/// Holds up a call of the library, and lets time pass meanwhile.
class Hold {
 public:
  Hold(StandIn& library, WatchedCalls& calls) : calls_(calls) {
    library.context = this;
    library.onTemperature = [](void* hold) { static_cast<Hold*>(hold)->wait(); };
  }
  void release() {
    const std::lock_guard lock(mutex_);
    isReleased_ = true;
    changed_.notify_all();
  }

 private:
  void wait() {
    std::unique_lock lock(mutex_);
    while (!isReleased_) {
      calls_.seconds += 0.021;
      changed_.wait_for(lock, std::chrono::milliseconds(1));
    }
  }

  WatchedCalls& calls_;
  std::mutex mutex_;
  std::condition_variable changed_;
  bool isReleased_ = false;
};

TEST_F(Nvidia, CallThatHangsHoldsUpNeitherAPassNorTheEnd) {
  addChip(tree, 0, "coretemp", "platform/coretemp.0", {{"temp1", "51000", "Package id 0"}});
  Hold hold(*library, *calls);
  while (temperature(machine(), "TC0D") != 51) continue;
  EXPECT_EQ(temperature(machine(), kFirst), -1);
  endMachine();
  EXPECT_TRUE(isLoaded(kCurrent));
  EXPECT_EQ(library->shutDowns, 0) << "the call is still under way";
  hold.release();
  calls.reset();  // waits for the thread
  EXPECT_EQ(openSessions(), 0);
}

}  // namespace
}  // namespace halvermonte::test
