#include <gtest/gtest.h>

#include "halvermonte/HIDSensors.h"
#include "platform/CFOwned.hpp"
#include "platform/IOHIDEventSystem.h"
#include "platform/portable/LiveCounters.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

constexpr int64_t kTemperatureEvent = 15;
constexpr int64_t kPowerEvent = 25;

class HIDEventSystemTest : public ::testing::Test {
 protected:
  HIDEventSystemTest() {
    machine_.sensors[HIDSensorKind::temperature] = services({sensor("temperature", 30.5)});
    machine_.sensors[HIDSensorKind::current] = services({sensor("current", 1.5)});
    machine_.sensors[HIDSensorKind::voltage] = services({sensor("voltage", 12.5)});
    CFSTR("Product");  // made before objects are counted
  }
  ~HIDEventSystemTest() override { EXPECT_EQ(portable::liveObjects(), objects_); }

  /// The services that match, given by the test's own client.
  CFArrayRef copyServices(CFDictionaryRef sensors) {
    IOHIDEventSystemClientSetMatching(client_.get(), sensors);
    return IOHIDEventSystemClientCopyServices(client_.get());
  }
  CFArrayRef copyServices(uint32_t page, uint32_t usage) {
    const CFOwned sensors(matching(page, usage));
    return copyServices(sensors.get());
  }

  static IOHIDServiceClientRef serviceAt(CFArrayRef list, CFIndex index) {
    return static_cast<IOHIDServiceClientRef>(
        const_cast<void*>(CFArrayGetValueAtIndex(list, index)));
  }

  /// The first field of the service's event of the type, or -99 if it gives none.
  static double reading(IOHIDServiceClientRef service, int64_t type) {
    const CFOwned event(IOHIDServiceClientCopyEvent(service, type, nullptr, 0));
    return event ? IOHIDEventGetFloatValue(event.get(), static_cast<int32_t>(type << 16)) : -99;
  }

  TestMachine machine_;
  ScopedMachine scope_{machine_};
  CFOwned<IOHIDEventSystemClientRef> client_{IOHIDEventSystemClientCreate(kCFAllocatorDefault)};

 private:
  size_t objects_ = portable::liveObjects();
};

struct Usage {
  uint32_t page;
  uint32_t usage;
  int64_t event;
  double reading;
};
constexpr Usage kUsages[] = {
    {65280, 5, kTemperatureEvent, 30.5},
    {65288, 2, kPowerEvent, 1.5},
    {65288, 3, kPowerEvent, 12.5},
};

TEST_F(HIDEventSystemTest, AUsageMatchesItsKindWhoseServicesGiveItsEventAlone) {
  for (const Usage& usage : kUsages) {
    const CFOwned list(copyServices(usage.page, usage.usage));
    ASSERT_EQ(CFArrayGetCount(list.get()), 1);
    const IOHIDServiceClientRef service = serviceAt(list.get(), 0);
    EXPECT_EQ(reading(service, usage.event), usage.reading);
    const int64_t other = kTemperatureEvent + kPowerEvent - usage.event;
    EXPECT_EQ(reading(service, other), -99) << "an event of another type";
  }
}

TEST_F(HIDEventSystemTest, AnotherUsageMatchesNoService) {
  constexpr std::pair<uint32_t, uint32_t> kOthers[] = {{0xFF00, 2}, {0xFF00, 0}, {0xFF08, 5},
                                                       {0xFF08, 0}, {0, 5},      {0xFFFFFFFF, 5}};
  for (const auto& [page, usage] : kOthers) {
    const CFOwned list(copyServices(page, usage));
    ASSERT_TRUE(list);
    EXPECT_EQ(CFArrayGetCount(list.get()), 0) << page << ' ' << usage;
  }
}

TEST_F(HIDEventSystemTest, AMissingListIsToldFromAnEmptyOne) {
  machine_.sensors[HIDSensorKind::temperature] = services({});
  machine_.sensors[HIDSensorKind::current] = nullptr;
  const CFOwned empty(copyServices(0xFF00, 5));
  ASSERT_TRUE(empty);
  EXPECT_EQ(CFArrayGetCount(empty.get()), 0);
  EXPECT_EQ(copyServices(0xFF08, 2), nullptr);
}

TEST_F(HIDEventSystemTest, OnlyTheFirstFieldOfAnEventHasAValue) {
  const CFOwned list(copyServices(0xFF00, 5));
  const CFOwned event(IOHIDServiceClientCopyEvent(serviceAt(list.get(), 0), 15, nullptr, 0));
  ASSERT_TRUE(event);
  EXPECT_EQ(IOHIDEventGetFloatValue(event.get(), 0xF0000), 30.5);
  EXPECT_EQ(IOHIDEventGetFloatValue(event.get(), 0xF0001), 0.0);
  EXPECT_EQ(IOHIDEventGetFloatValue(event.get(), 0x190000), 0.0);
}

TEST_F(HIDEventSystemTest, AServiceHasAProductOrNot) {
  machine_.setTemperatureSensors({sensor("Tg1b", 1), sensorWithoutProduct(2)});
  const CFOwned list(copyServices(0xFF00, 5));
  const CFOwned product(IOHIDServiceClientCopyProperty(serviceAt(list.get(), 0), CFSTR("Product")));
  ASSERT_TRUE(product);
  EXPECT_EQ(CFStringGetLength(static_cast<CFStringRef>(product.get())), 4);
  EXPECT_EQ(IOHIDServiceClientCopyProperty(serviceAt(list.get(), 0), CFSTR("Serial")), nullptr);
  EXPECT_EQ(IOHIDServiceClientCopyProperty(serviceAt(list.get(), 1), CFSTR("Product")), nullptr);
}

TEST_F(HIDEventSystemTest, AServiceOutlivesItsListAndTheMachinesChange) {
  const CFOwned list(copyServices(0xFF00, 5));
  const IOHIDServiceClientRef service = serviceAt(list.get(), 0);
  machine_.sensors.clear();
  EXPECT_EQ(reading(service, kTemperatureEvent), 30.5);
}

TEST_F(HIDEventSystemTest, AServiceWhoseClientIsGoneHasNeitherProductNorEvent) {
  const CFOwned sensors(matching(0xFF00, 5));
  CFArrayRef services = nullptr;
  {
    const CFOwned client(IOHIDEventSystemClientCreate(kCFAllocatorDefault));
    IOHIDEventSystemClientSetMatching(client.get(), sensors.get());
    services = IOHIDEventSystemClientCopyServices(client.get());
    const CFOwned product(IOHIDServiceClientCopyProperty(serviceAt(services, 0), CFSTR("Product")));
    EXPECT_TRUE(product);
    EXPECT_EQ(reading(serviceAt(services, 0), kTemperatureEvent), 30.5);
  }
  const CFOwned list(services);
  EXPECT_EQ(IOHIDServiceClientCopyProperty(serviceAt(services, 0), CFSTR("Product")), nullptr);
  EXPECT_EQ(reading(serviceAt(services, 0), kTemperatureEvent), -99);
}

TEST_F(HIDEventSystemTest, AServiceGivesNoEventForOneToMatchOrWithOptions) {
  const CFOwned list(copyServices(0xFF00, 5));
  const IOHIDServiceClientRef service = serviceAt(list.get(), 0);
  const CFOwned event(IOHIDServiceClientCopyEvent(service, 15, nullptr, 0));
  ASSERT_TRUE(event);
  EXPECT_EQ(IOHIDServiceClientCopyEvent(service, 15, event.get(), 0), nullptr);
  EXPECT_EQ(IOHIDServiceClientCopyEvent(service, 15, nullptr, 1), nullptr);
}

TEST_F(HIDEventSystemTest, NumbersOfAnotherTypeMatchNoService) {
  const int32_t page = 0xFF00;
  const int64_t wideUsage = 5;
  const double realUsage = 5;
  const std::pair<CFNumberType, const void*> others[] = {{kCFNumberSInt64Type, &wideUsage},
                                                         {kCFNumberDoubleType, &realUsage}};
  for (const auto& [type, usage] : others) {
    const CFOwned pageNumber(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &page));
    const CFOwned usageNumber(CFNumberCreate(kCFAllocatorDefault, type, usage));
    const void* keys[] = {CFSTR("PrimaryUsagePage"), CFSTR("PrimaryUsage")};
    const void* values[] = {pageNumber.get(), usageNumber.get()};
    const CFOwned sensors(CFDictionaryCreate(kCFAllocatorDefault, keys, values, 2,
                                             &kCFTypeDictionaryKeyCallBacks,
                                             &kCFTypeDictionaryValueCallBacks));
    const CFOwned list(copyServices(sensors.get()));
    EXPECT_EQ(CFArrayGetCount(list.get()), 0) << type;
  }
}

using HIDEventSystemDeathTest = HIDEventSystemTest;

TEST_F(HIDEventSystemDeathTest, CallsWithoutTheirObjectEndTheProcess) {
  const CFOwned sensors(matching(0xFF00, 5));
  EXPECT_DEATH(IOHIDEventSystemClientSetMatching(nullptr, sensors.get()),
               "^IOHIDEventSystemClientSetMatching: expected a live client");
  EXPECT_DEATH(IOHIDEventSystemClientCopyServices(nullptr),
               "^IOHIDEventSystemClientCopyServices: expected a live client");
  EXPECT_DEATH(IOHIDServiceClientCopyEvent(nullptr, 15, nullptr, 0), "expected a live HID service");
  EXPECT_DEATH(IOHIDServiceClientCopyProperty(nullptr, CFSTR("Product")),
               "expected a live HID service");
  EXPECT_DEATH(IOHIDEventGetFloatValue(nullptr, 0xF0000), "expected a live HID event");
}

TEST_F(HIDEventSystemTest, AClientWithoutMatchingHasNoServices) {
  const CFOwned list(IOHIDEventSystemClientCopyServices(client_.get()));
  EXPECT_EQ(CFArrayGetCount(list.get()), 0);
}

}  // namespace
}  // namespace halvermonte::test
