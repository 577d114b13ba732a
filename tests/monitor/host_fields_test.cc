// What the record says about the computer, from its files to the properties.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "monitor/Sampling.hpp"
#include "tests/linux/Tree.hpp"

namespace halvermonte::test {
namespace {

class HostFields : public ::testing::Test {
 protected:
  const StatisticsData& fill() {
    sampling.reset();
    sampling = std::make_unique<Sampling>(
        ChosenMachine{.machine = std::make_unique<LinuxMachine>(tree.roots())});
    return *sampling->pass().record;
  }

  Tree tree;

 private:
  std::unique_ptr<Sampling> sampling;
};

TEST_F(HostFields, ModelComesFromTheFirmwareTable) {
  tree.write("sys/class/dmi/id/sys_vendor", "Dell Inc.\n");
  tree.write("sys/class/dmi/id/product_name", "XPS 13 9310\n");
  const StatisticsData& record = fill();
  EXPECT_EQ(record.modelName(), "XPS 13 9310");
  EXPECT_EQ(record.modelIdentifier(), "XPS 13 9310");
}

TEST_F(HostFields, ModelComesFromTheDeviceTree) {
  tree.write("sys/firmware/devicetree/base/model",
             std::string("Apple MacBook Air (M1, 2020)\0", 29));
  tree.write("sys/firmware/devicetree/base/compatible",
             std::string("apple,j313\0apple,t8103\0apple,arm-platform\0", 42));
  const StatisticsData& record = fill();
  EXPECT_EQ(record.modelName(), "Apple MacBook Air (M1, 2020)");
  EXPECT_EQ(record.modelIdentifier(), "apple,j313");
  EXPECT_EQ(record.processorName(), "Apple M1");
}

TEST_F(HostFields, CoresArePhysicalAndLogical) {
  for (const char* processor : {"cpu0", "cpu1", "cpu2", "cpu3", "cpu5"}) {
    const std::string core = std::string(processor) == "cpu5" ? "5" : "0-1";
    tree.write("sys/devices/system/cpu/" + std::string(processor) + "/topology/core_cpus_list",
               core + "\n");
  }
  tree.write("sys/devices/system/cpu/online", "0-3,5\n");
  const StatisticsData& record = fill();
  EXPECT_EQ(record.summary_cpuCores().int32Value(), 2);
  EXPECT_EQ(record.summary_cpuLogicalCores().int32Value(), 5);
}

TEST_F(HostFields, GarbledListOfProcessorsIsNotCounted) {
  for (const char* list : {"", "x", "3-1", "0-", "0-99999999999"}) {
    tree.write("sys/devices/system/cpu/online", list);
    EXPECT_EQ(fill().summary_cpuLogicalCores().int32Value(), 1) << list;
  }
}

TEST_F(HostFields, UptimeIsInSecondsAndInWords) {
  const std::pair<const char*, const char*> texts[] = {{"59.99", "0 min"},
                                                       {"3599", "59 min"},
                                                       {"3660.5", "1 h 1 min"},
                                                       {"273700.10 500.2", "3 d 4 h"}};
  for (const auto& [file, text] : texts) {
    tree.write("proc/uptime", file);
    EXPECT_EQ(fill().uptimeText(), text);
  }
  const StatisticsData& record = fill();
  EXPECT_EQ(record.uptime().uint64Value(), 273700U);
  EXPECT_EQ(record.uptime().form(), Number::Form::uint64);
}

TEST_F(HostFields, MemoryIsInBytesWithTexts) {
  tree.write(
      "proc/meminfo",
      "MemTotal:       8000000 kB\nMemFree:         1000000 kB\nMemAvailable:    5000000 kB\n"
      "Active:          100 kB\nInactive:        2000000 kB\nUnevictable:       100000 kB\n"
      "SUnreclaim:       200000 kB\nKernelStack:       10000 kB\nPageTables:        20000 kB\n");
  const StatisticsData& record = fill();
  EXPECT_EQ(record.summary_memoryTotal().uint64Value(), 8192000000U);
  EXPECT_EQ(record.summary_memoryFree().uint64Value(), 1024000000U);
  EXPECT_EQ(record.summary_memoryUsed().uint64Value(), 3072000000U);
  EXPECT_EQ(record.summary_memoryInactive().uint64Value(), 2048000000U);
  EXPECT_EQ(record.summary_memoryWired().uint64Value(), 337920000U);
  EXPECT_EQ(record.summary_memoryOther().uint64Value(), 4782080000U);
  EXPECT_EQ(record.summary_memoryTotalText(), "8.19 GB");
  EXPECT_EQ(record.summary_memoryFreeText(), "1.02 GB");
  EXPECT_EQ(record.summary_memoryUsedText(), "3.07 GB");
  EXPECT_EQ(record.summary_memoryInactiveText(), "2.05 GB");
  EXPECT_EQ(record.summary_memoryWiredText(), "337.9 MB");
  EXPECT_EQ(record.summary_memoryOtherText(), "4.78 GB");
}

TEST_F(HostFields, MissingSourcesLeaveTheDefaults) {
  const StatisticsData& record = fill();
  EXPECT_EQ(record.modelName(), "");
  EXPECT_EQ(record.modelIdentifier(), "");
  EXPECT_EQ(record.uptime().int32Value(), 0);
  EXPECT_EQ(record.uptimeText(), "");
  EXPECT_EQ(record.summary_memoryTotal().int32Value(), 1);
  EXPECT_EQ(record.summary_memoryTotalText(), "");
  EXPECT_EQ(record.summary_cpuLogicalCores().int32Value(), 1);
}

}  // namespace
}  // namespace halvermonte::test
