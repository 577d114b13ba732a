// A snapshot of the record: its values, and its readings and disk traffic as plain numbers.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "capi/Engine.hpp"
#include "capi/Errors.hpp"
#include "capi/Values.hpp"
#include "halvermonte/Readings.hpp"
#include "halvermonte/StatisticsData.hpp"
#include "halvermonte/Values.hpp"
#include "halvermonte/halvermonte.h"

using halvermonte::Array;
using halvermonte::Int;
using halvermonte::Number;
using halvermonte::Reading;
using halvermonte::StatisticsData;
using halvermonte::Value;
using halvermonte::capi::Failure;
using halvermonte::capi::handleOf;
using halvermonte::capi::require;
using halvermonte::capi::requireBelow;
using halvermonte::capi::statusOf;

namespace {

constexpr std::array kPropertyNames = {
#define PROPERTY(name, Name, Type, initial, copy, turn) #name,
#include "halvermonte/properties.def"
};
using Properties = std::array<Value, kPropertyNames.size()>;

const Value& boxed(const Value& value) { return value; }
Value boxed(Int number) { return Number::ofInt32(number); }

Properties propertiesOf(const StatisticsData& record) {
  return {
#define PROPERTY(name, Name, Type, initial, copy, turn) boxed(record.name()),
#include "halvermonte/properties.def"
  };
}

struct Traffic {
  double rate;
  uint64_t total;
  std::vector<double> history;
};

Traffic trafficOf(const Number& rate, const Number& total, const Array& history) {
  Traffic traffic{rate.float64Value(), total.uint64Value(), {}};
  for (const Value& point : history) {
    traffic.history.push_back(point.asNumber().float64Value());
  }
  return traffic;
}

}  // namespace

struct halvermonte_snapshot {
  explicit halvermonte_snapshot(const StatisticsData& record)
      : properties(propertiesOf(record)),
        lists{temperatures(record), shortTemperatures(record), fans(record)},
        traffic{trafficOf(record.diskIO_speedRead(), record.diskIO_read(),
                          record.diskIO_activities()[1].asArray()),
                trafficOf(record.diskIO_speedWrite(), record.diskIO_write(),
                          record.diskIO_activities()[0].asArray())} {}

  const Properties properties;
  const std::array<std::vector<Reading>, 3> lists;  ///< by the list's number
  const std::array<Traffic, 2> traffic;             ///< by the direction's number
};

namespace {

const std::vector<Reading>& listOf(const halvermonte_snapshot* snapshot, halvermonte_list list) {
  require(snapshot, "snapshot");
  requireBelow(snapshot->lists.size(), static_cast<size_t>(list), "list");
  return snapshot->lists[static_cast<size_t>(list)];
}

const Traffic& trafficOf(const halvermonte_snapshot* snapshot, halvermonte_direction direction) {
  require(snapshot, "snapshot");
  requireBelow(snapshot->traffic.size(), static_cast<size_t>(direction), "direction");
  return snapshot->traffic[static_cast<size_t>(direction)];
}

}  // namespace

halvermonte_status halvermonte_engine_snapshot(const halvermonte_engine* engine,
                                               halvermonte_snapshot** snapshot) {
  return statusOf([&] {
    require(engine, "engine");
    require(snapshot, "snapshot");
    *snapshot = new halvermonte_snapshot(*engine->record);
  });
}

void halvermonte_snapshot_free(halvermonte_snapshot* snapshot) { delete snapshot; }

halvermonte_status halvermonte_snapshot_reading_count(const halvermonte_snapshot* snapshot,
                                                      halvermonte_list list, size_t* count) {
  return statusOf([&] {
    require(count, "count");
    *count = listOf(snapshot, list).size();
  });
}

halvermonte_status halvermonte_snapshot_reading(const halvermonte_snapshot* snapshot,
                                                halvermonte_list list, size_t index,
                                                const char** name, int32_t* number,
                                                const char** unit) {
  return statusOf([&] {
    require(name, "name");
    require(number, "number");
    require(unit, "unit");
    const std::vector<Reading>& readings = listOf(snapshot, list);
    requireBelow(readings.size(), index, "index");
    const Reading& reading = readings[index];
    *name = reading.name.c_str();
    *number = reading.number;
    *unit = symbolOf(reading.unit).data();
  });
}

halvermonte_status halvermonte_snapshot_disk_rate(const halvermonte_snapshot* snapshot,
                                                  halvermonte_direction direction, double* rate) {
  return statusOf([&] {
    require(rate, "rate");
    *rate = trafficOf(snapshot, direction).rate;
  });
}

halvermonte_status halvermonte_snapshot_disk_total(const halvermonte_snapshot* snapshot,
                                                   halvermonte_direction direction,
                                                   uint64_t* bytes) {
  return statusOf([&] {
    require(bytes, "bytes");
    *bytes = trafficOf(snapshot, direction).total;
  });
}

halvermonte_status halvermonte_snapshot_disk_history(const halvermonte_snapshot* snapshot,
                                                     halvermonte_direction direction,
                                                     const double** rates, size_t* count) {
  return statusOf([&] {
    require(rates, "rates");
    require(count, "count");
    const std::vector<double>& history = trafficOf(snapshot, direction).history;
    *rates = history.data();
    *count = history.size();
  });
}

const char* halvermonte_property_name(size_t index) {
  return index < kPropertyNames.size() ? kPropertyNames[index] : nullptr;
}

halvermonte_status halvermonte_snapshot_property(const halvermonte_snapshot* snapshot,
                                                 const char* name,
                                                 const halvermonte_value** value) {
  return statusOf([&] {
    require(snapshot, "snapshot");
    require(name, "name");
    require(value, "value");
    const auto* const found = std::ranges::find(kPropertyNames, std::string_view(name));
    if (found == kPropertyNames.end()) {
      throw Failure(HALVERMONTE_UNKNOWN_NAME,
                    "no property is called \"" + std::string(name) + "\"");
    }
    *value = handleOf(snapshot->properties[static_cast<size_t>(found - kPropertyNames.begin())]);
  });
}
