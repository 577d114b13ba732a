#include "engine/DiskPublishing.hpp"
#include "halvermonte/Values.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "platform/Conversions.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {
namespace {

using foundation::ByteCountStyle;

/// Bytes per second. Uneven on purpose: no 200000 and no 2000000, but 1-2-5 above 10000000.
constexpr int64_t kScales[] = {
    50'000,        100'000,       500'000,        1'000'000,      5'000'000,      10'000'000,
    20'000'000,    50'000'000,    100'000'000,    200'000'000,    500'000'000,    1'000'000'000,
    2'000'000'000, 5'000'000'000, 10'000'000'000, 20'000'000'000, 50'000'000'000, 100'000'000'000,
};

float highest(const std::vector<Value>& history) {
  float most = std::numeric_limits<float>::lowest();
  for (const Value& point : history) most = std::max(most, point.asNumber().float32Value());
  return most;
}

/// The first scale that the highest rate does not exceed, compared as 32-bit floats, or the last.
int64_t chartScale(const EngineState& engine) {
  const float most = std::max(highest(engine.writeDiskPoint), highest(engine.readDiskPoint));
  const auto* const fits = std::ranges::find_if(
      kScales, [=](int64_t scale) { return most <= static_cast<float>(scale); });
  return fits != std::end(kScales) ? *fits : *(std::end(kScales) - 1);
}

float newest(const std::vector<Value>& history) { return history.back().asNumber().float32Value(); }

/// Up to a thousand bytes per second are shown as none.
Text speedText(float bytesPerSecond) {
  if (bytesPerSecond <= 1000.0F) return Text(foundation::bundleText("0 KB/s"));
  const std::string amount =
      foundation::byteCountText(truncated<int64_t>(bytesPerSecond), ByteCountStyle::file);
  return Text(foundation::formatted(foundation::bundleText("%@/s"), amount));
}

Text totalText(const Number& total) {
  return Text(
      foundation::byteCountText(static_cast<int64_t>(total.uint64Value()), ByteCountStyle::file));
}

}  // namespace

void publishDisks(const EngineState& engine, const DiskTotals& totals, SensorsRecord& record) {
  const int64_t scale = chartScale(engine);
  record.setDiskIO_activitiesMax(Number::ofFloat32(static_cast<float>(scale)));
  record.setDiskIO_activitiesMaxText(
      Text(foundation::byteCountText(scale, ByteCountStyle::decimal)));
  const float readSpeed = newest(engine.readDiskPoint);
  const float writeSpeed = newest(engine.writeDiskPoint);
  record.setDiskIO_speedRead(Number::ofFloat32(readSpeed));
  record.setDiskIO_speedWrite(Number::ofFloat32(writeSpeed));
  record.setDiskIO_speedReadText(speedText(readSpeed));
  record.setDiskIO_speedWriteText(speedText(writeSpeed));
  record.setDiskIO_read(totals.read);
  record.setDiskIO_write(totals.written);
  record.setDiskIO_readText(totalText(totals.read));
  record.setDiskIO_writeText(totalText(totals.written));
  // Writes come first: hosts draw them by position.
  record.setDiskIO_activities(Array({Array(engine.writeDiskPoint), Array(engine.readDiskPoint)}));
}

}  // namespace halvermonte
