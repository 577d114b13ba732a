#include "platform/linux/StablePath.hpp"

#include <gtest/gtest.h>

#include <string>

#include "platform/linux/SystemCalls.hpp"
#include "tests/linux/Tree.hpp"

namespace halvermonte::test {
namespace {

using linuxos::pciAddressOf;

/// The stable path of a device of a computer, which by default has no files.
std::string stable(const std::string& device, const Tree& tree = {}) {
  return linuxos::stablePath(linuxos::SystemCalls::real(), tree.at("sys"), device);
}

TEST(StablePath, HasTheBusOfTheFirstPciAddressOnly) {
  EXPECT_EQ(stable("pci0000:00/0000:00:01.2/0000:02:00.0/0000:03:01.7"),
            "pci0000:00/0000:00:01.2/00.0/01.7");
  EXPECT_EQ(stable("pci0000:00/0000:00:0e.0/pci10000:e0/10000:e0:06.0/10000:e1:00.0"),
            "pci0000:00/0000:00:0e.0/pci10000:e0/10000:e0:06.0/00.0")
      << "a domain below another one begins anew";
}

TEST(StablePath, HasNoNumbersOfTheKernel) {
  EXPECT_EQ(stable("pci0000:00/0000:00:1d.0/nvme/nvme3"), "pci0000:00/0000:00:1d.0/nvme");
  EXPECT_EQ(stable("pci0000:00/0000:00:1d.0/ieee80211/phy2"), "pci0000:00/0000:00:1d.0");
  EXPECT_EQ(stable("pci0000:00/0000:00:1d.0/net/eth0"), "pci0000:00/0000:00:1d.0");
  EXPECT_EQ(stable("virtual/thermal/thermal_zone7"), "virtual/thermal");
  EXPECT_EQ(stable("platform/cros_ec_lpcs.0/cros-ec-hwmon.3.auto"),
            "platform/cros_ec_lpcs.0/cros-ec-hwmon");
  EXPECT_EQ(stable("platform/switch.auto/sensor.x.auto/3.auto"),
            "platform/switch.auto/sensor.x.auto/3.auto")
      << "these have no number";
}

TEST(StablePath, HasTheAddressOfAPhyOnItsBus) {
  EXPECT_EQ(stable("pci0000:00/0000:0c:00.0/mdio_bus/r8169-0-c00/r8169-0-c00:07"),
            "pci0000:00/0000:0c:00.0/mdio/07");
}

TEST(StablePath, HasThePortOfASataController) {
  Tree tree;
  const std::string controller = "pci0000:00/0000:00:17.0/";
  const std::string drive = "ata10/host9/target9:0:1/9:0:1:0";
  EXPECT_EQ(stable(controller + drive, tree), controller + "ata1/0:1:0");
  for (const char* port : {"ata8", "ata9", "ata10", "power", "atapi11"}) {
    tree.folder("sys/devices/" + controller + port);
  }
  EXPECT_EQ(stable(controller + drive, tree), controller + "ata3/0:1:0") << "the third one of it";
  tree.write("sys/devices/" + controller + "ata10/ata_port/ata10/port_no", "6\n");
  EXPECT_EQ(stable(controller + drive, tree), controller + "ata6/0:1:0");
}

TEST(StablePath, HasThePlaceOfADriveBehindSas) {
  const std::string adapter = "pci0000:00/0000:00:03.0";
  const std::string end = "/host4/port-4:0/expander-4:1/port-4:1:7/end_device-4:1:7";
  const std::string drive = adapter + end + "/target4:0:5/4:0:5:2";
  const std::string facts = "sys/devices/" + adapter + end + "/sas_device/end_device-4:1:7/";
  Tree tree;
  tree.write(facts + "sas_address", "0x5000c50012345678\n");
  EXPECT_EQ(stable(drive, tree), adapter + "/sas0x5000c50012345678/2");
  tree.write(facts + "bay_identifier", "11\n");
  tree.write(facts + "enclosure_identifier", "0x500a\n");
  EXPECT_EQ(stable(drive, tree), adapter + "/bay11@0x500a/2");
}

TEST(StablePath, HasTheRanksOfI2CAdapters) {
  Tree tree;
  const std::string smbus = "pci0000:00/0000:00:1f.4/";
  for (const char* adapter : {"i2c-8", "i2c-9", "i2c-10", "power2"}) {
    tree.folder("sys/devices/" + smbus + adapter);
  }
  EXPECT_EQ(stable(smbus + "i2c-10/10-0051", tree), smbus + "i2c-2/0051");
  EXPECT_EQ(stable(smbus + "i2c-8/i2c-12/12-0048", tree), smbus + "i2c-0/i2c-0/0048");
  EXPECT_EQ(stable(smbus + "i2c-8/i2c-SENS0001:00", tree), smbus + "i2c-0/i2c-SENS0001:00");
}

TEST(StablePath, HasThePortsOnUsb) {
  Tree tree;
  const std::string device = "pci0000:00/0000:00:14.0/usb3/3-4/3-4.2/3-4.2:1.0/0003:1B1C:0c10.00FA";
  EXPECT_EQ(stable(device, tree), "pci0000:00/0000:00:14.0/usb/4/4.2/1.0/0003:1B1C:0c10");
  tree.write("sys/devices/pci0000:00/0000:00:14.0/usb3/version", " 2.00\n");
  EXPECT_EQ(stable(device, tree), "pci0000:00/0000:00:14.0/usb2.00/4/4.2/1.0/0003:1B1C:0c10")
      << "a controller has a bus for each speed";
}

TEST(StablePath, KeepsWhatOnlyLooksLikeANumber) {
  for (const char* device :
       {"platform/nct6775.656", "platform/chip.1.2", "platform/asus-ec-sensors", "w1/28-00000a",
        "LNXSYSTM:00/PNP0C0A:00/power_supply/BAT0", "a/b-1", "a/1-", "a/1-x", "platform/1:2",
        "platform/a:b:c:d", "x/0003:1B1C:0C10.00070", "x/0003:1B1C:0G10.0007",
        "x/0003-1B1C-0C10-0007"}) {
    EXPECT_EQ(stable(device), device);
  }
}

TEST(StablePath, RecognisesPciAddresses) {
  EXPECT_EQ(pciAddressOf("0000:3a:1f.7")->slot, "0000:3a:1f");
  EXPECT_EQ(pciAddressOf("10000:e1:00.0")->function, "00.0");
  for (const char* step : {"pci0000:00", "000:3a:1f.7", "0000:3a:1f.77", "0000:3a:1g.7",
                           "0000:3a:1f:7", "zzzz:3a:1f.7", "3a:1f.7", ""}) {
    EXPECT_FALSE(pciAddressOf(step)) << step;
  }
}

}  // namespace
}  // namespace halvermonte::test
