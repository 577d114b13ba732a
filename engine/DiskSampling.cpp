#include "engine/DiskSampling.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "halvermonte/DiskCounters.h"
#include "platform/Conversions.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {
namespace {

struct Rates {
  uint64_t read = 0;
  uint64_t written = 0;
};

void readCounters(EngineState& engine) {
  engine.i_dsk.bytes_prev = engine.i_dsk.bytes;
  engine.o_dsk.bytes_prev = engine.o_dsk.bytes;
  if (engine.drivelist == 0) return;
  const auto reason = foundation::reasonRaisedBy(
      [&] { getDISKcounters(engine.drivelist, &engine.i_dsk, &engine.o_dsk); });
  if (reason) foundation::log(*reason);
}

/// Whole seconds since the previous pass, on purpose: below one second there is no rate, and the
/// bytes moved meanwhile are not carried forward.
uint64_t elapsedSeconds(const EngineState& engine) {
  if (!engine.lastDataFetch) return 0;
  return truncated<uint64_t>(foundation::currentDate().secondsSince(engine.lastDataFetch));
}

/// Differences wrap: a total that went down gives a huge rate. The reads' previous total decides
/// for both directions: it is 0 at the first pass, when a difference is not a rate.
Rates currentRates(const EngineState& engine) {
  const uint64_t seconds = elapsedSeconds(engine);
  if (seconds == 0 || engine.i_dsk.bytes_prev == 0) return {};
  return {(engine.i_dsk.bytes - engine.i_dsk.bytes_prev) / seconds,
          (engine.o_dsk.bytes - engine.o_dsk.bytes_prev) / seconds};
}

void append(std::vector<Value>& history, uint64_t rate) {
  history.erase(history.begin());
  history.push_back(Number::ofUInt64(rate));
}

}  // namespace

void seedDiskHistories(EngineState& engine) {
  std::vector<Value> markers;
  for (size_t i = 0; i < kDiskPoints; ++i) markers.push_back(Number::ofInt32(-1));
  engine.readDiskPoint = markers;
  engine.writeDiskPoint = markers;
}

DiskTotals sampleDisks(EngineState& engine) {
  readCounters(engine);
  const Rates rates = currentRates(engine);
  append(engine.readDiskPoint, rates.read);
  append(engine.writeDiskPoint, rates.written);
  engine.lastDataFetch = foundation::currentDate();
  return {Number::ofUInt64(engine.i_dsk.bytes), Number::ofUInt64(engine.o_dsk.bytes)};
}

}  // namespace halvermonte
