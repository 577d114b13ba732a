#include "monitor/exporter/Metrics.hpp"

#include <prometheus/client_metric.h>
#include <prometheus/metric_family.h>
#include <prometheus/metric_type.h>
#include <prometheus/text_serializer.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "monitor/Line.hpp"

namespace halvermonte {
namespace {

using prometheus::ClientMetric;
using prometheus::MetricFamily;
using prometheus::MetricType;
using Labels = std::vector<ClientMetric::Label>;

Labels labelsOf(const std::string& id, const SensorView& sensor) {
  return {{"hw_id", id}, {"hw_name", printable(sensor.name, true)}};
}

ClientMetric gauge(double value, Labels labels = {}) {
  ClientMetric metric;
  metric.label = std::move(labels);
  metric.gauge.value = value;
  return metric;
}

ClientMetric counter(uint64_t value, Labels labels = {}) {
  ClientMetric metric;
  metric.label = std::move(labels);
  metric.counter.value = static_cast<double>(value);
  return metric;
}

using Sensors = std::vector<SensorView>;
using Ids = std::vector<std::string>;

std::vector<ClientMetric> numbersOf(const Sensors& sensors, const Ids& ids) {
  std::vector<ClientMetric> samples;
  for (size_t i = 0; i < sensors.size(); ++i) {
    if (!sensors[i].isRead) continue;
    samples.push_back(gauge(sensors[i].number, labelsOf(ids[i], sensors[i])));
  }
  return samples;
}

void addUnread(const Sensors& sensors, const Ids& ids, std::vector<ClientMetric>& samples) {
  for (size_t i = 0; i < sensors.size(); ++i) {
    if (!sensors[i].isRead) samples.push_back(gauge(0, labelsOf(ids[i], sensors[i])));
  }
}

std::vector<ClientMetric> unreadOf(const PassView& view, const SensorIds& ids) {
  std::vector<ClientMetric> samples;
  addUnread(view.temperatures, ids.temperatures, samples);
  addUnread(view.fans, ids.fans, samples);
  return samples;
}

std::vector<ClientMetric> bytesOf(const PassView& view) {
  if (view.drives == 0) return {};
  return {counter(view.disks.read.total, {{"disk_io_direction", "read"}}),
          counter(view.disks.written.total, {{"disk_io_direction", "write"}})};
}

ClientMetric buildInfo(const PassView& view) {
  return gauge(1, {{"version", HALVERMONTE_VERSION},
                   {"machine", printable(view.name, true)},
                   {"simulated", view.isSimulated ? "true" : "false"}});
}

std::vector<ClientMetric> lastGoodOf(const PassCounts& counts) {
  const auto since1970 = counts.lastGood.time_since_epoch();
  if (since1970.count() == 0) return {};
  return {gauge(std::chrono::duration<double>(since1970).count())};
}

}  // namespace

std::string metricsText(const PassView& view, const SensorIds& ids, const PassCounts& counts) {
  const std::vector<MetricFamily> families = {
      {"hw_temperature_celsius", "Temperature in degrees Celsius, as the engine shows it.",
       MetricType::Gauge, numbersOf(view.temperatures, ids.temperatures)},
      {"hw_fan_speed_rpm", "Speed of a fan in revolutions per minute; 0 if it stands still.",
       MetricType::Gauge, numbersOf(view.fans, ids.fans)},
      {"halvermonte_sensor_read",
       "0 for a sensor that is listed, but gave no reading in the last pass.", MetricType::Gauge,
       unreadOf(view, ids)},
      {"system_disk_io_bytes_total",
       "Bytes that all physical drives together have moved since they started.",
       MetricType::Counter, bytesOf(view)},
      {"halvermonte_build_info",
       "The exporter's version and the machine that it samples.",
       MetricType::Gauge,
       {buildInfo(view)}},
      {"halvermonte_pass_duration_seconds",
       "Time that the last pass took.",
       MetricType::Gauge,
       {gauge(std::chrono::duration<double>(view.cost).count())}},
      {"halvermonte_passes_total",
       "Passes over the sensors since the exporter started.",
       MetricType::Counter,
       {counter(counts.passes)}},
      {"halvermonte_pass_errors_total",
       "Passes that ended early, with an exception.",
       MetricType::Counter,
       {counter(counts.errors)}},
      {"halvermonte_last_pass_timestamp_seconds",
       "When the last complete pass ended, in seconds since 1970-01-01T00:00:00Z.",
       MetricType::Gauge, lastGoodOf(counts)},
  };
  return prometheus::TextSerializer().Serialize(families);
}

}  // namespace halvermonte
