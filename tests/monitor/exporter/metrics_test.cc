#include "monitor/exporter/Metrics.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <string>

namespace halvermonte {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

std::string textOf(const PassView& view, const PassCounts& counts = {}) {
  return metricsText(view, sensorIds(view), counts);
}

TEST(Metrics, TemperaturesAndFansAreSamplesWithTheirNames) {
  PassView view;
  view.temperatures = {{.name = "CPU Core 1", .number = 63}};
  view.fans = {{.name = "Left", .number = 0}};
  EXPECT_THAT(textOf(view), AllOf(HasSubstr("# TYPE hw_temperature_celsius gauge\n"
                                            "hw_temperature_celsius{hw_id=\"cpu-core-1\","
                                            "hw_name=\"CPU Core 1\"} 63\n"),
                                  HasSubstr("# TYPE hw_fan_speed_rpm gauge\n"
                                            "hw_fan_speed_rpm{hw_id=\"fan-left\","
                                            "hw_name=\"Left\"} 0\n")));
}

TEST(Metrics, TwoSensorsOfOneNameAreTwoSeries) {
  PassView view;
  view.fans = {{.name = "Exhaust", .number = 700}, {.name = "Exhaust", .number = 900}};
  EXPECT_THAT(textOf(view),
              AllOf(HasSubstr("{hw_id=\"fan-exhaust\",hw_name=\"Exhaust\"} 700\n"),
                    HasSubstr("{hw_id=\"fan-exhaust-2\",hw_name=\"Exhaust\"} 900\n")));
}

TEST(Metrics, SensorThatIsNoLongerReadHasNoReading) {
  PassView view;
  view.temperatures = {{.name = "Die", .number = 40, .isRead = false}};
  view.fans = {{.name = "Left", .number = 0, .isRead = false}};
  EXPECT_THAT(textOf(view),
              AllOf(Not(HasSubstr("hw_temperature_celsius{")), Not(HasSubstr("hw_fan_speed_rpm{")),
                    HasSubstr("halvermonte_sensor_read{hw_id=\"die\",hw_name=\"Die\"} 0\n"),
                    HasSubstr("halvermonte_sensor_read{hw_id=\"fan-left\",hw_name=\"Left\"} 0\n")));
}

TEST(Metrics, BytesOfDrivesAreCountersAsRead) {
  PassView view;
  view.drives = 1;
  view.disks.read.total = 2'320'000'000'123;
  view.disks.written.total = 5;
  EXPECT_THAT(
      textOf(view),
      AllOf(HasSubstr("# TYPE system_disk_io_bytes_total counter\n"),
            HasSubstr("system_disk_io_bytes_total{disk_io_direction=\"read\"} 2320000000123\n"),
            HasSubstr("system_disk_io_bytes_total{disk_io_direction=\"write\"} 5\n")));
}

TEST(Metrics, ComputerWithoutDrivesHasNoBytes) {
  EXPECT_THAT(textOf(PassView()), Not(HasSubstr("system_disk_io_bytes_total{")));
}

TEST(Metrics, SayWhichMachineItIs) {
  PassView view;
  view.name = "M3 \"Max\"\n\xFF";
  view.isSimulated = true;
  EXPECT_THAT(textOf(view),
              HasSubstr("machine=\"M3 \\\"Max\\\"?\xEF\xBF\xBD\",simulated=\"true\"} 1\n"));
  view.isSimulated = false;
  EXPECT_THAT(textOf(view), HasSubstr("simulated=\"false\"} 1\n"));
}

TEST(Metrics, SayWhatThePassesCost) {
  PassView view;
  view.cost = std::chrono::milliseconds(250);
  const PassCounts counts{
      .passes = 7,
      .errors = 2,
      .lastGood = std::chrono::system_clock::time_point(std::chrono::milliseconds(1'500))};
  EXPECT_THAT(textOf(view, counts),
              AllOf(HasSubstr("\nhalvermonte_pass_duration_seconds 0.25\n"),
                    HasSubstr("\nhalvermonte_passes_total 7\n"),
                    HasSubstr("\nhalvermonte_pass_errors_total 2\n"),
                    HasSubstr("\nhalvermonte_last_pass_timestamp_seconds 1.5\n")));
}

TEST(Metrics, TimeOfAGoodPassIsAbsentBeforeTheFirst) {
  EXPECT_THAT(textOf(PassView()), Not(HasSubstr("\nhalvermonte_last_pass_timestamp_seconds ")));
}

}  // namespace
}  // namespace halvermonte
