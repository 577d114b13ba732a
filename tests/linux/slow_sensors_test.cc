// Sensors that take long, fail slowly or never return.
#include <gmock/gmock.h>

#include <atomic>
#include <cerrno>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/linux/Computer.hpp"
#include "tests/linux/WatchedCalls.hpp"

namespace halvermonte::test {
namespace {

const std::string kPackage = "hwmon0/temp1_input";
const std::string kCore = "hwmon0/temp2_input";

/// A processor whose package may be slow.
class SlowSensors : public ::testing::Test {
 protected:
  SlowSensors() {
    addChip(tree, 0, "coretemp", "platform/coretemp.0",
            {{"temp1", "51000", "Package id 0"}, {"temp2", "41000", "Core 0"}});
  }

  double package() { return temperature(machine(), "TC0D"); }
  double core() { return temperature(machine(), "TC1C"); }
  LinuxMachine& machine() {
    if (!machine_)
      machine_ = std::make_unique<LinuxMachine>(tree.roots(), ComputerOptions(), calls);
    return *machine_;
  }
  void endMachine() { machine_.reset(); }

  void setPackage(const std::string& text) { tree.write(chipFile(0, "temp1_input"), text + "\n"); }
  /// Its reads take half a second from now on, and fail if there is an error.
  void makePackageSlow(int error = 0) {
    calls.readFails = [this, error](std::string_view path) {
      if (!path.ends_with("temp1_input")) return 0;
      calls.seconds += 0.5;
      return error;
    };
  }
  /// Makes passes until a thread has read what the test expects. ctest ends a test that waits in
  /// vain.
  void awaitPackage(double degrees) {
    while (package() != degrees) std::this_thread::yield();
  }
  /// Returns when that many reads have ended.
  void awaitReads(const std::string& file, size_t count) {
    while (calls.readsOf(file) < count || calls.waitingThreads() == 0) std::this_thread::yield();
  }
  /// Lets the package's thread read it once.
  void readInTheBackground() {
    const size_t before = calls.readsOf(kPackage);
    calls.seconds += 10;
    package();
    while (calls.readsOf(kPackage) == before) std::this_thread::yield();
    while (calls.runningThreads() > 0 && calls.waitingThreads() == 0) std::this_thread::yield();
  }

  Tree tree;
  WatchedCalls calls;

 private:
  std::unique_ptr<LinuxMachine> machine_;
};

TEST_F(SlowSensors, FirstReadThatTakesLongDoesNotHoldUpThePass) {
  calls.hold(kPackage);
  EXPECT_EQ(core(), 41);
  EXPECT_EQ(package(), -1);
  EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state,
            "no reading: not answered yet, read in the background");
  calls.release(kPackage);
  awaitPackage(51);
  EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state, "read in the background");
  EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").raw, "51000");
  EXPECT_EQ(calls.readsOf(kPackage), 1u);
}

TEST_F(SlowSensors, ReadThatNeverReturnsHoldsUpNeitherPassesNorTheEnd) {
  calls.hold(kPackage);
  for (int pass = 0; pass < 5; ++pass) {
    EXPECT_EQ(core(), 41);
    calls.seconds += 60;
  }
  EXPECT_EQ(calls.readsOf(kPackage), 1u) << "one thread hangs, not one a pass";
  endMachine();
  LinuxMachine next(tree.roots(), {}, calls);
  EXPECT_EQ(temperature(next, "TC1C"), 41);
}

TEST_F(SlowSensors, DriveThatHasToSpinUpHoldsUpNoPassAlthoughItWasFastBefore) {
  addChip(tree, 5, "nvme", "pci0000:01/nvme/nvme0", {{"temp1", "31000", "Composite"}});
  const std::string drive = keyOf("nvme", "pci0000:01/nvme/nvme0", "Composite");
  EXPECT_EQ(temperature(machine(), drive), 31);
  tree.write(chipFile(5, "temp1_input"), "35000\n");
  calls.hold("hwmon5/temp1_input");
  calls.seconds += 10;
  const double began = calls.seconds;
  EXPECT_EQ(temperature(machine(), drive), 31);
  EXPECT_LT(calls.seconds - began, 0.05);
  calls.release("");
  while (temperature(machine(), drive) != 35) std::this_thread::yield();
}

TEST_F(SlowSensors, ReadingsAreMadeEveryTenSecondsOnceOneTookLong) {
  EXPECT_EQ(package(), 51);
  EXPECT_EQ(calls.threads(), 1u) << "that of the trial";
  makePackageSlow();
  setPackage("52000");
  EXPECT_EQ(package(), 52);
  setPackage("53000");
  calls.seconds += 9.4;
  EXPECT_EQ(package(), 52);
  EXPECT_EQ(calls.threads(), 1u);
  calls.seconds += 0.6;
  awaitPackage(53);
  setPackage("54000");
  for (int pass = 0; pass < 3; ++pass) EXPECT_EQ(package(), 53);
  calls.seconds += 10;
  awaitPackage(54);
  EXPECT_EQ(calls.threads(), 2u);
  EXPECT_EQ(calls.readsOf(kPackage), 4u);
}

TEST_F(SlowSensors, PassesReadAgainAfterSixReadingsThatAreFast) {
  EXPECT_EQ(package(), 51);
  for (const size_t needed : {6U, 12U}) {
    makePackageSlow();
    package();
    calls.readFails = nullptr;
    for (size_t count = 1; count < needed; ++count) readInTheBackground();
    EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state, "read in the background");
    makePackageSlow();
    readInTheBackground();
    calls.readFails = nullptr;
    for (size_t count = 0; count < needed; ++count) {
      EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state, "read in the background");
      readInTheBackground();
    }
    while (calls.runningThreads() > 0) std::this_thread::yield();
    for (const int degrees : {52, 53}) {
      setPackage(std::to_string(degrees * 1000));
      EXPECT_EQ(package(), degrees);
    }
    EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state, "read");
  }
}

TEST_F(SlowSensors, ReadThatTakesTwentyMillisecondsIsNotSlow) {
  EXPECT_EQ(package(), 51);
  calls.readFails = [this](std::string_view path) {
    if (path.ends_with("temp1_input")) calls.seconds += 0.0195;
    return 0;
  };
  for (const int degrees : {52, 53, 54}) {
    setPackage(std::to_string(degrees * 1000));
    EXPECT_EQ(package(), degrees);
  }
}

TEST_F(SlowSensors, SlowFailureIsNotRepeatedInTheNextPass) {
  EXPECT_EQ(package(), 51);
  makePackageSlow(ETIMEDOUT);
  calls.seconds += 29;
  EXPECT_EQ(package(), 51) << "the last reading is young";
  EXPECT_EQ(package(), 51);
  EXPECT_EQ(calls.readsOf(kPackage), 2u);
  EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state, "read in the background");
  calls.seconds += 0.5;
  EXPECT_EQ(package(), -1) << "now it is old";
  EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state,
            "no reading: Connection timed out, read in the background");
  EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").raw, "");
  EXPECT_EQ(core(), 41);
}

TEST_F(SlowSensors, SensorThatFailsEverySecondTimeKeepsItsReadingInBetween) {
  int attempts = 0;
  calls.readFails = [&](std::string_view path) {
    if (!path.ends_with("temp1_input")) return 0;
    calls.seconds += 3;
    return ++attempts % 2 == 0 ? EIO : 0;
  };
  EXPECT_EQ(package(), 51);
  for (const size_t count : {2U, 3U, 4U, 5U}) {
    calls.seconds += 10;
    EXPECT_EQ(package(), 51);
    awaitReads(kPackage, count);
    EXPECT_EQ(package(), 51);
  }
}

TEST_F(SlowSensors, ReadingIsUsedForThirtySeconds) {
  calls.hold(kPackage);
  package();
  calls.release(kPackage);
  awaitPackage(51);
  calls.hold(kPackage);
  calls.seconds += 10;
  package();
  while (calls.readsOf(kPackage) < 2) std::this_thread::yield();
  calls.seconds += 19.9;
  EXPECT_EQ(package(), 51);
  calls.seconds += 0.1;
  EXPECT_EQ(package(), -1);
  EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state,
            "no reading: not answered yet, read in the background");
}

TEST_F(SlowSensors, OutOfRangeReadingReplacesTheLastOne) {
  EXPECT_EQ(package(), 51);
  makePackageSlow();
  setPackage("-127000");
  EXPECT_EQ(package(), -1);
  EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state,
            "no reading: outside its range, read in the background");
}

TEST_F(SlowSensors, ReadingsGoOnForAHostWithRarePasses) {
  EXPECT_EQ(package(), 51);
  makePackageSlow();
  package();
  calls.seconds += 10;
  package();
  awaitReads(kPackage, 3);
  for (size_t count = 4; count < 10; ++count) {
    calls.seconds += 10;
    awaitReads(kPackage, count);
  }
  EXPECT_EQ(package(), 51);
  EXPECT_EQ(calls.threads(), 2u);
}

TEST_F(SlowSensors, ReadingsEndSomeMinutesAfterTheLastPass) {
  EXPECT_EQ(package(), 51);
  makePackageSlow();
  package();
  calls.seconds += 10;
  package();
  awaitReads(kPackage, 3);
  calls.seconds += 301;
  while (calls.runningThreads() > 0) std::this_thread::yield();
  EXPECT_EQ(calls.readsOf(kPackage), 3u);
  setPackage("52000");
  awaitPackage(52);
}

TEST_F(SlowSensors, SlowFaultFileIsReadInTheBackgroundToo) {
  tree.write(chipFile(0, "temp1_fault"), "0\n");
  calls.hold("temp1_fault");
  EXPECT_EQ(core(), 41);
  EXPECT_EQ(package(), -1);
  calls.release("");
  awaitPackage(51);
}

TEST_F(SlowSensors, SleepingDeviceIsNotReadInTheBackground) {
  const std::string device = "pci0000:00/0000:03:00.0";
  const std::string status = "sys/devices/" + device + "/power/runtime_status";
  addChip(tree, 5, "amdgpu", device, {{"temp1", "44000", "edge"}});
  tree.write(status, "active\n");
  calls.hold("hwmon5/temp1_input");
  EXPECT_EQ(temperature(machine(), "TG0D"), -1);
  calls.release("");
  while (temperature(machine(), "TG0D") != 44) std::this_thread::yield();
  calls.seconds += 10;
  EXPECT_EQ(temperature(machine(), "TG0D"), 44);
  awaitReads("hwmon5/temp1_input", 2);
  tree.write(status, "suspended\n");
  EXPECT_EQ(temperature(machine(), "TG0D"), -1);
  calls.seconds += 20;
  while (calls.runningThreads() > 0) std::this_thread::yield();
  EXPECT_EQ(temperature(machine(), "TG0D"), -1);
  EXPECT_EQ(calls.readsOf("hwmon5/temp1_input"), 2u);
}

TEST_F(SlowSensors, ListingWaitsABoundedTimeForSensorsThatHang) {
  for (int i = 0; i < 30; ++i) {
    addChip(tree, 40 + i, "a_new_chip", "platform/a." + std::to_string(i), {{"in1", "20000"}});
  }
  calls.hold("in1_input");
  EXPECT_EQ(package(), 51);
  const double began = calls.seconds;
  EXPECT_EQ(machine().inventory().size(), 32u);
  EXPECT_GT(calls.seconds - began, 0.28);
  EXPECT_LT(calls.seconds - began, 0.35);
}

TEST_F(SlowSensors, SensorsBehindHangingOnesAreReadInLaterPasses) {
  for (int i = 0; i < 16; ++i) {
    addChip(tree, 40 + i, "jc42", "pci0000:00/i2c-0/0-00" + std::to_string(10 + i),
            {{"temp1", "20000"}});
    calls.hold("hwmon" + std::to_string(40 + i) + "/temp1_input");
  }
  addChip(tree, 60, "nvme", "pci0000:01/nvme/nvme0", {{"temp1", "31000", "Composite"}});
  const double began = calls.seconds;
  const std::string drive = keyOf("nvme", "pci0000:01/nvme/nvme0", "Composite");
  EXPECT_EQ(temperature(machine(), drive), -1) << "the pass has waited for others long enough";
  EXPECT_LT(calls.seconds - began, 0.35);
  calls.release("hwmon40/temp1_input");
  while (calls.runningThreads() == 16) std::this_thread::yield();
  EXPECT_EQ(calls.readsOf("hwmon60/temp1_input"), 0u) << "a thread that was late reads no others";
  while (temperature(machine(), drive) != 31) std::this_thread::yield();
  EXPECT_EQ(package(), 51);
}

TEST_F(SlowSensors, HangingFanDoesNotHoldUpTheChoiceOfFans) {
  for (int i = 0; i < 12; ++i) {
    addChip(tree, 40 + i, "nct6798", "platform/nct." + std::to_string(10 + i), {{"fan1", "900"}});
  }
  calls.hold("hwmon43/fan1_input");
  EXPECT_EQ(fans(machine()).size(), 10u);
  EXPECT_EQ(calls.readsOf("hwmon43/fan1_input"), 1u);
}

TEST_F(SlowSensors, ListingTwiceStartsNoSecondReadOfASensorThatHangs) {
  addChip(tree, 1, "a_new_chip", "platform/a", {{"in1", "7"}});
  calls.hold("in1_input");
  for (int listing = 0; listing < 3; ++listing) {
    EXPECT_EQ(listed(machine(), "a_new_chip", "in1_input").state,
              "no reading: not answered yet, read in the background");
    addChip(tree, 90 + listing, "empty", "virtual/empty" + std::to_string(listing), {{"in0", "1"}});
  }
  EXPECT_EQ(calls.readsOf("in1_input"), 1u);
}

TEST_F(SlowSensors, NoThreadMeansNoReadingYet) {
  calls.hasNoThreads = true;
  EXPECT_EQ(package(), -1);
  EXPECT_EQ(listed(machine(), "coretemp", "temp1_input").state, "no reading: not answered yet");
  calls.hasNoThreads = false;
  EXPECT_EQ(package(), 51);
  makePackageSlow();
  package();
  calls.hasNoThreads = true;
  calls.seconds += 10;
  EXPECT_EQ(package(), 51);
  setPackage("52000");
  calls.hasNoThreads = false;
  calls.seconds += 10;
  awaitPackage(52);
}

TEST_F(SlowSensors, StaySlowIfTheChipGetsAnotherNumber) {
  calls.hold(kPackage);
  package();
  calls.release("");
  awaitPackage(51);
  calls.restart();
  tree.move("sys/class/hwmon/hwmon0", "sys/former").remove("sys/devices/platform/coretemp.0");
  addChip(tree, 7, "coretemp", "platform/coretemp.0", {{"temp1", "52000", "Package id 0"}});
  EXPECT_EQ(package(), 51) << "the last reading is kept";
  EXPECT_EQ(calls.readsOf("temp1_input"), 0u);
  calls.seconds += 10;
  awaitPackage(52);
}

TEST_F(SlowSensors, KeepTheirThreadIfAnotherChipIsAdded) {
  calls.hold(kPackage);
  package();
  const size_t before = calls.threads();
  addChip(tree, 7, "empty", "virtual/empty", {{"in0", "1"}});
  EXPECT_EQ(core(), 41);
  EXPECT_EQ(calls.readsOf(kPackage), 1u);
  EXPECT_EQ(calls.threads(), before) << "sensors that are known as fast need no trial";
  calls.release("");
  awaitPackage(51);
}

TEST_F(SlowSensors, OfTwoMachinesHoldUpNeither) {
  calls.hold(kPackage);
  LinuxMachine other(tree.roots(), {}, calls);
  EXPECT_EQ(core(), 41);
  EXPECT_EQ(temperature(other, "TC1C"), 41);
  endMachine();
  calls.release("");
  while (temperature(other, "TC0D") != 51) std::this_thread::yield();
}

TEST_F(SlowSensors, MayBeReadByManyThreads) {
  calls.hold(kPackage);
  EXPECT_EQ(package(), -1);
  const auto ask = [this] {
    while (package() != 51) {
      calls.release("");
      machine().inventory();
      calls.seconds += 1;
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(ask);
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace halvermonte::test
