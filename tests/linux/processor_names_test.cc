// The names of processors' temperatures, from what the kernel says about sockets, dies and cores.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/linux/Computer.hpp"

namespace halvermonte::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;
using ::testing::Pair;

void addProcessor(Tree& tree, int number, const std::string& package, const std::string& core) {
  const std::string topology = "sys/devices/system/cpu/cpu" + std::to_string(number) + "/topology/";
  tree.write(topology + "physical_package_id", package + "\n");
  tree.write(topology + "core_id", core + "\n");
}

/// AMD's chip with that address on the root bus.
void addNode(Tree& tree, int chip, const std::string& address, int degrees) {
  addChip(tree, chip, "k10temp", "pci0000:00/0000:00:" + address,
          {{"temp1", std::to_string(degrees * 1000), "Tctl"}});
}

TEST(ProcessorNames, SocketsAreCountedWhateverTheirNumbers) {
  Tree tree;
  for (const int socket : {0, 1}) {
    const std::string package = std::to_string(socket * 3 + 2);
    addProcessor(tree, socket * 2, package, "0");
    addProcessor(tree, socket * 2 + 1, package, std::to_string(socket * 5 + 3));
    addChip(tree, socket, "coretemp", "platform/coretemp." + std::to_string(socket),
            {{"temp3", "-1", "Package id " + std::to_string(socket)},
             {"temp1", std::to_string(41000 + socket * 10000), "Core 0"},
             {"temp2", std::to_string(42000 + socket * 10000),
              "Core " + std::to_string(socket * 5 + 3)}});
  }
  tree.write("sys/devices/cpu_atom/cpus", "1,3\n");
  tree.folder("sys/devices/system/cpu/cpu4");  // offline
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("CPU 2 Core 1", 51), Pair("CPU 2 Efficiency Core 1", 52),
                          Pair("CPU Core 1", 41), Pair("CPU Efficiency Core 1", 42)));
}

TEST(ProcessorNames, CoresOfAProcessorThatIsPartlyUnknownAreCountedInItsChip) {
  Tree tree;
  addProcessor(tree, 0, "0", "0");
  addProcessor(tree, 1, "0", "9");
  tree.folder("sys/devices/system/cpu/cpu2").folder("sys/devices/system/cpu/cpufreq");
  tree.write("sys/devices/cpu_atom/cpus", "0\n");
  addChip(tree, 0, "coretemp", "platform/coretemp.0",
          {{"temp1", "40000", "Package id 0"},
           {"temp2", "41000", "Core 0"},
           {"temp3", "42000", "Core 4  "},
           {"temp4", "43000", "Core 9"}});
  EXPECT_THAT(shown(tree), ElementsAre(Pair("CPU 1 Package", 40), Pair("CPU Core 1", 41),
                                       Pair("CPU Core 2", 42), Pair("CPU Core 3", 43)));
}

TEST(ProcessorNames, ProcessorWithoutANumberForItsCoreIsNotTheFirst) {
  Tree tree;
  addProcessorOfPackage(tree, 0, 0);
  tree.write("sys/devices/cpu_atom/cpus", "0\n");
  addChip(tree, 0, "coretemp", "platform/coretemp.0", {{"temp1", "41000", "Core 0"}});
  EXPECT_THAT(shown(tree), ElementsAre(Pair("CPU Core 1", 41)));
}

TEST(ProcessorNames, AmdsChipOutsideItsAddressesIsTheFirstSockets) {
  for (const char* address : {"05.3", "17.3"}) {
    Tree tree;
    addNode(tree, 0, address, 41);
    EXPECT_THAT(shown(tree), ElementsAre(Pair("CPU 1 Package", 41))) << address;
  }
  Tree tree;
  addChip(tree, 0, "k10temp", "platform/k10temp", {{"temp1", "41000", "Tctl"}});
  EXPECT_THAT(shown(tree), ElementsAre(Pair("CPU 1 Package", 41)));
}

TEST(ProcessorNames, OtherDevicesBesideAmdsAreNotDies) {
  Tree tree;
  addNode(tree, 0, "18.3", 41);
  addNode(tree, 1, "19.3", 42);
  addChip(tree, 2, "ice", "pci0000:00/0000:00:1f.6", {{"temp1", "43000"}});
  for (const int socket : {0, 1}) addProcessorOfPackage(tree, socket, socket);
  EXPECT_THAT(shown(tree), ElementsAre(Pair("CPU 1 Package", 41), Pair("CPU 2 Package", 42),
                                       Pair("Ethernet", 43)));
}

TEST(ProcessorNames, SocketsMayOutnumberAmdsChips) {
  Tree tree;
  addNode(tree, 0, "18.3", 41);
  for (const int socket : {0, 1}) addProcessorOfPackage(tree, socket, socket);
  EXPECT_THAT(shown(tree), ElementsAre(Pair("CPU 1 Package", 41)));
}

TEST(ProcessorNames, OtherDriversOfTheFirstSocketNeedNoNumber) {
  Tree tree;
  addChip(tree, 0, "via_cputemp", "platform/via_cputemp.0", {{"temp1", "41000", "Core 0"}});
  EXPECT_THAT(shown(tree), ElementsAre(Pair("CPU Core 1", 41)));
  addChip(tree, 1, "peci_cputemp.cpu1.30", "platform/peci-0/0-31", {{"temp1", "42000", "Die"}});
  addChip(tree, 2, "peci_dimmtemp.cpu0.30", "platform/peci-0/0-30",
          {{"temp1", "43000", "DIMM A1"}});
  EXPECT_THAT(shown(tree),
              IsSupersetOf({Pair("CPU 2 Package (PECI)", 42), Pair("CPU 1 DIMM A1", 43)}));
}

}  // namespace
}  // namespace halvermonte::test
