// The places that tell apart devices of one name.
#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

#include "tests/linux/Computer.hpp"

namespace halvermonte::test {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

/// The names of a computer with two chips of the driver.
std::vector<std::string> namesOfTwo(Tree& tree, const std::string& driver, const std::string& first,
                                    const std::string& second) {
  addChip(tree, 0, driver, first, {{"temp1", "31000"}});
  addChip(tree, 1, driver, second, {{"temp1", "32000"}});
  std::vector<std::string> names;
  for (const auto& [name, degrees] : shown(tree, {.driveTemperatures = true})) {
    names.push_back(name);
  }
  return names;
}

std::vector<std::string> namesOfTwo(const std::string& driver, const std::string& first,
                                    const std::string& second) {
  Tree tree;
  return namesOfTwo(tree, driver, first, second);
}

TEST(DevicePlaces, OnUsbAreThePortsUpToTheDevice) {
  const std::string bus = "pci0000:00/0000:00:14.0/usb3/";
  EXPECT_THAT(namesOfTwo("lm75", bus + "3-4/3-4.2/3-4.2:1.0/0003:1B1C:0C10.0001",
                         bus + "3-4/3-4.3/3-4.3:1.0/i2c-12/12-0048"),
              ElementsAre("lm75 Sensor 1 (00:14.0 USB 4.2)", "lm75 Sensor 1 (00:14.0 USB 4.3)"));
}

TEST(DevicePlaces, OnI2CAreTheAdaptersAndTheAddress) {
  EXPECT_THAT(namesOfTwo("lm75", "platform/1e78a000.i2c/i2c-4/4-0048",
                         "platform/1e78a000.i2c/i2c-4/i2c-9/9-1048"),
              ElementsAre("lm75 Sensor 1 (I2C 0-0-1048)", "lm75 Sensor 1 (I2C 0-48)"));
}

TEST(DevicePlaces, BehindSasAreBays) {
  Tree tree;
  std::vector<std::string> drives;
  for (const std::string number : {"0", "1"}) {
    const std::string end =
        "pci0000:00/0000:00:03.0/host4/port-4:" + number + "/end_device-4:" + number;
    tree.write("sys/devices/" + end + "/sas_device/end_device-4:" + number + "/bay_identifier",
               number + "1\n");
    drives.push_back(end + "/target4:0:" + number + "/4:0:" + number + ":0");
  }
  EXPECT_THAT(namesOfTwo(tree, "drivetemp", drives[0], drives[1]),
              ElementsAre("Drive (Bay 01)", "Drive (Bay 11)"));
}

TEST(DevicePlaces, OnSataHaveTheControllerOnlyIfThereAreSeveral) {
  Tree tree;
  const std::string controller = "pci0000:00/0000:00:17.0/";
  for (const std::string number : {"1", "2"}) {
    const std::string port = controller + "ata" + number + "/ata_port/ata" + number;
    tree.write("sys/devices/" + port + "/port_no", number + "\n");
    tree.link("sys/class/ata_port/ata" + number, "sys/devices/" + port);
  }
  const auto names = namesOfTwo(tree, "drivetemp", controller + "ata1/host0/target0:0:0/0:0:0:0",
                                controller + "ata2/host1/target1:0:0/1:0:0:0");
  EXPECT_THAT(names, ElementsAre("Drive (SATA 1)", "Drive (SATA 2)"));
}

TEST(DevicePlaces, OnPciAreTheSlotsOrTheWaysToTheDevices) {
  Tree tree;
  tree.write("sys/bus/pci/slots/3/address", "0000:02:00\n");
  tree.write("sys/bus/pci/slots/5/address", "\n");
  EXPECT_THAT(namesOfTwo(tree, "nouveau", "pci0000:00/0000:00:01.0/0000:02:00.0",
                         "pci0000:00/0000:00:02.1/0000:03:00.0/0000:04:08.0/0000:05:00.1"),
              ElementsAre("GPU Die (00:02.1/08.0/00.1)", "GPU Die (Slot 3)"));
  EXPECT_THAT(namesOfTwo("nouveau", "pci0000:00/0000:00:01.0/0000:02:00.0",
                         "pci10000:e0/10000:e0:06.0/10000:e1:00.0"),
              ElementsAre("GPU Die (00:01.0)", "GPU Die (10000:e0:06.0)"));
}

TEST(DevicePlaces, ElsewhereAreTheDevicesOwnNames) {
  EXPECT_THAT(namesOfTwo("newchip", "platform/newchip.656", "platform/newchip.2608"),
              ElementsAre("newchip Sensor 1 (newchip.2608)", "newchip Sensor 1 (newchip.656)"));
}

TEST(DevicePlaces, ThatLeaveNoRoomForASensorAreReplacedByKeys) {
  const std::string device = "platform/a_name_of_18_chars";
  EXPECT_THAT(
      namesOfTwo("newchip", device, device + "/b"),
      ElementsAre("newchip Sensor 1 (b)", "newchip Sensor 1 (" + keyOf("newchip", device) + ")"));
  EXPECT_THAT(namesOfTwo("a_driver_of_a_long_name", "platform/a_name_of_17_char", "platform/b"),
              ElementsAre("a_driver_of Sensor 1 (a_name_of_17_char)",
                          "a_driver_of_a_long_name Sensor 1 (b)"));
}

TEST(DevicePlaces, AreShownByAllSensorsOfTheDevice) {
  Tree tree;
  addChip(tree, 0, "nvme", "pci0000:00/0000:00:1c.0/nvme/nvme0",
          {{"temp1", "31000", "Composite"}, {"temp2", "32000", "Sensor 1"}});
  addChip(tree, 1, "nvme", "pci0000:00/0000:00:1d.0/nvme/nvme1", {{"temp1", "33000", "Composite"}});
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("NVMe Drive (00:1c.0)", 31), Pair("NVMe Drive (00:1d.0)", 33),
                          Pair("NVMe Drive Sensor 1 (00:1c.0)", 32)));
}

}  // namespace
}  // namespace halvermonte::test
