#include <gtest/gtest.h>

#include "hid/HIDSensors.h"
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

  static CFArrayRef copyServices(uint32_t page, uint32_t usage) {
    const CFOwned sensors(matching(page, usage));
    const CFOwned client(IOHIDEventSystemClientCreate(kCFAllocatorDefault));
    EXPECT_EQ(IOHIDEventSystemClientSetMatching(client.get(), sensors.get()), 0);
    return IOHIDEventSystemClientCopyServices(client.get());
  }

  static IOHIDServiceClientRef serviceAt(CFArrayRef list, CFIndex index) {
    return static_cast<IOHIDServiceClientRef>(
        const_cast<void*>(CFArrayGetValueAtIndex(list, index)));
  }

  /// The first field of the service's event of the type, or -99 where it gives none.
  static double reading(IOHIDServiceClientRef service, int64_t type) {
    const CFOwned event(IOHIDServiceClientCopyEvent(service, type, 0, 0));
    return event ? IOHIDEventGetFloatValue(event.get(), static_cast<int32_t>(type << 16)) : -99;
  }

  TestMachine machine_;
  ScopedMachine scope_{machine_};

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
  const CFOwned event(IOHIDServiceClientCopyEvent(serviceAt(list.get(), 0), 15, 0, 0));
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

TEST_F(HIDEventSystemTest, AClientWithoutMatchingHasNoServices) {
  const CFOwned client(IOHIDEventSystemClientCreate(kCFAllocatorDefault));
  const CFOwned list(IOHIDEventSystemClientCopyServices(client.get()));
  EXPECT_EQ(CFArrayGetCount(list.get()), 0);
}

}  // namespace
}  // namespace halvermonte::test
