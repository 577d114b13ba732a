#include "monitor/exporter/ReadingsJson.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <string>

namespace halvermonte {
namespace {

using ::testing::HasSubstr;

std::string jsonOf(const PassView& view) {
  return readingsJson(view, sensorIds(view), std::chrono::duration<double>(0.5));
}

TEST(ReadingsJson, IsOneLineWithEverything) {
  PassView view;
  view.name = "M3 Max";
  view.isSimulated = true;
  view.processor = "Apple M3 Max";
  view.cores = 16;
  view.number = 12;
  view.hostName = "Hazel's Notebook";
  view.uptime = "3 d 4 h";
  view.memoryUsed = "12 GB";
  view.memoryTotal = "36 GB";
  view.temperatures = {{.name = "CPU Core 1", .number = 63, .lists = InLists::both},
                       {.name = "Palm Rest", .number = 30, .isRead = false}};
  view.fans = {{.name = "Left", .number = 1866}};
  view.disks.read.rate = 2.5F;
  view.disks.read.total = 1ULL << 60;
  view.disks.read.history = {-1, 2.5F};
  view.disks.historyScale = 5'000'000;
  view.disks.historyScaleText = "5 MB";
  view.cost = std::chrono::milliseconds(125);
  view.time = 1767225612;
  EXPECT_EQ(jsonOf(view),
            R"({"machine":"M3 Max","simulated":true,"processor":"Apple M3 Max","cores":16,)"
            R"("host":"Hazel's Notebook","uptime":"3 d 4 h","memoryUsed":"12 GB",)"
            R"("memoryTotal":"36 GB","pass":12,"time":"2026-01-01T00:00:12.000Z",)"
            R"("interval":0.5,"cost":0.125,"exception":null,"temperatures":[)"
            R"({"id":"cpu-core-1","name":"CPU Core 1","group":"CPU","celsius":63,)"
            R"("short":true,"read":true},)"
            R"({"id":"palm-rest","name":"Palm Rest","group":"Air and board","celsius":30,)"
            R"("short":false,"read":false}],)"
            R"("fans":[{"id":"fan-left","name":"Left","rpm":1866,"read":true}],)"
            R"("disks":{"read":{"rate":2.5,"total":1152921504606846976,"history":[-1,2.5]},)"
            R"("write":{"rate":0,"total":0,"history":[]},)"
            R"("scale":5e+06,"scaleText":"5 MB"}})"
            "\n");
}

TEST(ReadingsJson, SaysWhyAPassEndedEarly) {
  PassView view;
  view.exception = "index 3 beyond bounds";
  EXPECT_THAT(jsonOf(view), HasSubstr(R"("exception":"index 3 beyond bounds",)"));
}

TEST(ReadingsJson, NamesMayHoldAnything) {
  PassView view;
  view.hostName = "a\"\n\xFF<";
  EXPECT_THAT(jsonOf(view), HasSubstr("\"host\":\"a\\\"\\n\xEF\xBF\xBD<\""));
}

}  // namespace
}  // namespace halvermonte
