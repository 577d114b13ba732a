#include <IOKit/IOKitLib.h>
#include <gtest/gtest.h>

#include <set>

#include "platform/Foundation.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

constexpr auto kNotOpen = static_cast<kern_return_t>(0x10000003);
constexpr auto kBadArgument = static_cast<kern_return_t>(0xE00002C2);
constexpr auto kError = static_cast<kern_return_t>(0xE00002BC);

/// Every test leaves as many objects and handles as it found.
class IOKitTest : public ::testing::Test {
 protected:
  ~IOKitTest() override {
    EXPECT_EQ(portable::liveObjects(), objects_);
    EXPECT_EQ(portable::liveHandles(), handles_);
  }

  static kern_return_t match(const char* className, io_iterator_t* iterator) {
    mach_port_t port = 0;
    EXPECT_EQ(IOMasterPort(bootstrap_port, &port), KERN_SUCCESS);
    EXPECT_NE(port, MACH_PORT_NULL);
    return IOServiceGetMatchingServices(port, IOServiceMatching(className), iterator);
  }

  io_iterator_t matchDrives(std::vector<Drive> drives) {
    machine_.drives = std::move(drives);
    io_iterator_t iterator = 0;
    EXPECT_EQ(match("IOBlockStorageDriver", &iterator), KERN_SUCCESS);
    return iterator;
  }

  io_connect_t connect() {
    io_iterator_t iterator = 0;
    EXPECT_EQ(match("AppleSMC", &iterator), KERN_SUCCESS);
    const io_service_t service = IOIteratorNext(iterator);
    io_connect_t connection = 0;
    EXPECT_EQ(IOServiceOpen(service, mach_task_self(), 0, &connection), KERN_SUCCESS);
    IOObjectRelease(service);
    IOObjectRelease(iterator);
    return connection;
  }

  TestMachine machine_;
  ScopedMachine scope_{machine_};

 private:
  size_t objects_ = portable::liveObjects();
  size_t handles_ = portable::liveHandles();
};

int64_t bytesUnder(const void* statistics, CFStringRef key) {
  int64_t bytes = -99;
  const void* const number = CFDictionaryGetValue(static_cast<CFDictionaryRef>(statistics), key);
  if (number != nullptr) {
    CFNumberGetValue(static_cast<CFNumberRef>(number), kCFNumberSInt64Type, &bytes);
  }
  return bytes;
}

TEST_F(IOKitTest, AMatchingDictionaryTellsItsClassAndIsTakenOver) {
  const CFMutableDictionaryRef matching = IOServiceMatching("AppleSMC");
  const void* const name = CFDictionaryGetValue(matching, CFSTR("IOProviderClass"));
  ASSERT_NE(name, nullptr);
  EXPECT_EQ(CFStringGetLength(static_cast<CFStringRef>(name)), 8);
  machine_.controller.code = 0xE00002BC;  // taken over by a call that fails too
  io_iterator_t iterator = 77;
  EXPECT_EQ(IOServiceGetMatchingServices(1, matching, &iterator), kError);
  EXPECT_EQ(iterator, 77u);
}

TEST_F(IOKitTest, OnlyTheBootstrapPortOrNoneGivesTheMainPort) {
  mach_port_t port = 77;
  EXPECT_EQ(IOMasterPort(bootstrap_port + 1, &port), kNotOpen);
  EXPECT_EQ(IOMasterPort(mach_task_self(), &port), kNotOpen);
  EXPECT_EQ(port, 77u);
  EXPECT_EQ(IOMasterPort(MACH_PORT_NULL, &port), KERN_SUCCESS);
  EXPECT_NE(port, 77u);
}

TEST_F(IOKitTest, ServicesAreMatchedByTheMainPortOrNoneAlone) {
  machine_.drives = {DriveStatistics{1, 1}};
  mach_port_t port = 0;
  IOMasterPort(MACH_PORT_NULL, &port);
  io_iterator_t iterator = 77;
  for (const char* name : {"AppleSMC", "IOBlockStorageDriver"}) {
    for (const mach_port_t other : {bootstrap_port, mach_task_self(), port + 99}) {
      EXPECT_EQ(IOServiceGetMatchingServices(other, IOServiceMatching(name), &iterator), kNotOpen);
    }
  }
  EXPECT_EQ(iterator, 77u);
  EXPECT_EQ(IOServiceGetMatchingServices(MACH_PORT_NULL, IOServiceMatching("AppleSMC"), &iterator),
            KERN_SUCCESS);
  IOObjectRelease(iterator);
}

TEST_F(IOKitTest, AnotherClassMatchesNothing) {
  io_iterator_t iterator = 77;
  EXPECT_EQ(match("IOFireWireUnit", &iterator), kBadArgument);
  EXPECT_EQ(match("", &iterator), kBadArgument);
  EXPECT_EQ(iterator, 77u);
}

TEST_F(IOKitTest, TheControllerIsOneServiceOrNone) {
  for (const bool present : {true, false}) {
    machine_.controller.present = present;
    io_iterator_t iterator = 0;
    ASSERT_EQ(match("AppleSMC", &iterator), KERN_SUCCESS);
    const io_service_t service = IOIteratorNext(iterator);
    EXPECT_EQ(service != 0, present);
    EXPECT_EQ(IOIteratorNext(iterator), 0u);
    EXPECT_EQ(IOObjectRelease(iterator), KERN_SUCCESS);
    EXPECT_EQ(IOObjectRelease(service), present ? KERN_SUCCESS : kNotOpen);
  }
}

TEST_F(IOKitTest, AFailedMatchingOfDrivesLeavesTheIterator) {
  machine_.drives.reset();
  io_iterator_t iterator = 77;
  EXPECT_EQ(match("IOBlockStorageDriver", &iterator), kError);
  EXPECT_EQ(iterator, 77u);
}

TEST_F(IOKitTest, AnIteratorGivesEachDriveOnceAndAllAgainAfterAReset) {
  const io_iterator_t iterator = matchDrives({DriveStatistics{1, 10}, DriveStatistics{2, 20}});
  for (int walk = 0; walk < 3; ++walk) {
    for (const int64_t bytes : {1, 2}) {
      const io_object_t drive = IOIteratorNext(iterator);
      CFMutableDictionaryRef properties = nullptr;
      ASSERT_EQ(IORegistryEntryCreateCFProperties(drive, &properties, kCFAllocatorDefault, 0),
                KERN_SUCCESS);
      const void* const statistics = CFDictionaryGetValue(properties, CFSTR("Statistics"));
      EXPECT_EQ(bytesUnder(statistics, CFSTR("Bytes (Read)")), bytes);
      EXPECT_EQ(bytesUnder(statistics, CFSTR("Bytes (Write)")), bytes * 10);
      CFRelease(properties);
      IOObjectRelease(drive);
    }
    EXPECT_EQ(IOIteratorNext(iterator), 0u);
    EXPECT_EQ(IOIteratorNext(iterator), 0u);
    IOIteratorReset(iterator);
  }
  IOObjectRelease(iterator);
}

TEST_F(IOKitTest, ADrivesPropertiesHoldWhatItHas) {
  const io_iterator_t iterator = matchDrives({DriveStatistics{5, {}}, DriveStatistics{{}, 6},
                                              DriveWithoutStatistics{}, UnreadableDrive{}});
  const auto propertiesOfNext = [=] {
    const io_object_t drive = IOIteratorNext(iterator);
    CFMutableDictionaryRef properties = nullptr;
    IORegistryEntryCreateCFProperties(drive, &properties, kCFAllocatorDefault, 0);
    IOObjectRelease(drive);
    return properties;
  };
  const CFMutableDictionaryRef readOnly = propertiesOfNext();
  const void* statistics = CFDictionaryGetValue(readOnly, CFSTR("Statistics"));
  EXPECT_EQ(CFDictionaryGetCount(static_cast<CFDictionaryRef>(statistics)), 1);
  EXPECT_EQ(bytesUnder(statistics, CFSTR("Bytes (Read)")), 5);
  const CFMutableDictionaryRef writeOnly = propertiesOfNext();
  statistics = CFDictionaryGetValue(writeOnly, CFSTR("Statistics"));
  EXPECT_EQ(CFDictionaryGetCount(static_cast<CFDictionaryRef>(statistics)), 1);
  EXPECT_EQ(bytesUnder(statistics, CFSTR("Bytes (Write)")), 6);
  const CFMutableDictionaryRef without = propertiesOfNext();
  EXPECT_EQ(CFDictionaryGetCount(without), 0);
  EXPECT_EQ(propertiesOfNext(), nullptr);
  for (const CFMutableDictionaryRef properties : {readOnly, writeOnly, without})
    CFRelease(properties);
  IOObjectRelease(iterator);
}

TEST_F(IOKitTest, PropertiesOfWhatIsNoDriveAreRefused) {
  const io_iterator_t iterator = matchDrives({DriveStatistics{1, 1}});
  const io_object_t drive = IOIteratorNext(iterator);
  IOObjectRelease(drive);
  CFMutableDictionaryRef properties = nullptr;
  for (const io_object_t entry : {io_object_t{0}, drive, iterator, io_object_t{0xFFFFFFFF}}) {
    EXPECT_EQ(IORegistryEntryCreateCFProperties(entry, &properties, kCFAllocatorDefault, 0),
              kNotOpen);
  }
  EXPECT_EQ(properties, nullptr);
  IOObjectRelease(iterator);
}

TEST_F(IOKitTest, PropertiesAreGivenWithoutOptionsAlone) {
  const io_iterator_t iterator = matchDrives({DriveStatistics{1, 1}});
  const io_object_t drive = IOIteratorNext(iterator);
  CFMutableDictionaryRef properties = nullptr;
  EXPECT_EQ(IORegistryEntryCreateCFProperties(drive, &properties, kCFAllocatorDefault, 1),
            kBadArgument);
  EXPECT_EQ(properties, nullptr);
  IOObjectRelease(drive);
  IOObjectRelease(iterator);
}

TEST_F(IOKitTest, AWalkThatRaisesTakesNoDriveAndMayBeginAgain) {
  const io_iterator_t iterator = matchDrives({DriveStatistics{1, 1}});
  machine_.driveReason = "a loose cable";
  EXPECT_THROW(IOIteratorNext(iterator), PlatformException);
  machine_.driveReason.reset();
  const io_object_t drive = IOIteratorNext(iterator);
  EXPECT_NE(drive, 0u);
  machine_.driveReason = "a loose cable";
  EXPECT_EQ(IOIteratorNext(iterator), 0u) << "the walk had begun before";
  IOObjectRelease(drive);
  IOObjectRelease(iterator);
}

TEST_F(IOKitTest, NoHandleIsGivenTwice) {
  std::set<io_object_t> given;
  for (int i = 0; i < 1000; ++i) {
    const io_iterator_t iterator = matchDrives({DriveStatistics{1, 1}});
    const io_object_t drive = IOIteratorNext(iterator);
    EXPECT_TRUE(given.insert(iterator).second);
    EXPECT_TRUE(given.insert(drive).second);
    IOObjectRelease(drive);
    IOObjectRelease(iterator);
  }
  EXPECT_FALSE(given.contains(0));
}

TEST_F(IOKitTest, AReleasedHandleNeverAnswersAgain) {
  const io_iterator_t iterator = matchDrives({DriveStatistics{1, 1}});
  EXPECT_EQ(IOObjectRelease(iterator), KERN_SUCCESS);
  EXPECT_EQ(IOObjectRelease(iterator), kNotOpen);
  EXPECT_EQ(IOIteratorNext(iterator), 0u);
  IOIteratorReset(iterator);
  EXPECT_EQ(IOIteratorNext(iterator), 0u);
  EXPECT_EQ(IOObjectRelease(0), kNotOpen);
}

TEST_F(IOKitTest, AConnectionIsOpenedToTheControllerAlone) {
  const io_iterator_t drives = matchDrives({DriveStatistics{1, 1}});
  const io_object_t drive = IOIteratorNext(drives);
  io_connect_t connection = 77;
  for (const io_service_t service : {io_service_t{0}, drive, drives}) {
    EXPECT_EQ(IOServiceOpen(service, mach_task_self(), 0, &connection), kNotOpen);
  }
  EXPECT_EQ(connection, 77u);
  EXPECT_EQ(IOServiceClose(drive), kNotOpen);
  IOObjectRelease(drive);
  IOObjectRelease(drives);
}

TEST_F(IOKitTest, AConnectionIsOpenedForTheOwnTaskWithType0Alone) {
  io_iterator_t iterator = 0;
  match("AppleSMC", &iterator);
  const io_service_t service = IOIteratorNext(iterator);
  io_connect_t connection = 77;
  for (const task_port_t task : {MACH_PORT_NULL, bootstrap_port, mach_task_self() + 99}) {
    EXPECT_EQ(IOServiceOpen(service, task, 0, &connection), kBadArgument);
  }
  EXPECT_EQ(IOServiceOpen(service, mach_task_self(), 1, &connection), kBadArgument);
  EXPECT_EQ(connection, 77u);
  IOObjectRelease(service);
  IOObjectRelease(iterator);
}

TEST_F(IOKitTest, AnOpeningThatTheControllerRefusesLeavesTheConnection) {
  machine_.openCode = 0xE00002C1;
  io_iterator_t iterator = 0;
  match("AppleSMC", &iterator);
  const io_service_t service = IOIteratorNext(iterator);
  io_connect_t connection = 77;
  EXPECT_EQ(IOServiceOpen(service, mach_task_self(), 0, &connection),
            static_cast<kern_return_t>(0xE00002C1));
  EXPECT_EQ(connection, 77u);
  IOObjectRelease(service);
  IOObjectRelease(iterator);
}

TEST_F(IOKitTest, AConnectionIsClosedOnce) {
  const io_connect_t connection = connect();
  machine_.asked.clear();
  EXPECT_EQ(IOServiceClose(connection), KERN_SUCCESS);
  EXPECT_EQ(IOServiceClose(connection), kNotOpen);
  EXPECT_EQ(machine_.asked, std::vector<std::string>{"close"});
  const io_connect_t another = connect();
  EXPECT_NE(another, connection);
  IOServiceClose(another);
}

}  // namespace
}  // namespace halvermonte::test
