#include "tests/engine/LiteralDisks.hpp"

#include <cmath>

namespace halvermonte::test {
namespace {

using History = std::vector<std::optional<uint64_t>>;

/// From one total to another, forward; through 2^64 if it went down.
uint64_t growth(uint64_t from, uint64_t to) {
  return to >= from ? to - from : UINT64_MAX - (from - to) + 1;
}

void shift(History& history, uint64_t rate) {
  for (size_t i = 0; i + 1 < history.size(); ++i) history[i] = history[i + 1];
  history.back() = rate;
}

float highest(const History& history, float most) {
  for (const auto& rate : history) {
    const float value = rate ? static_cast<float>(*rate) : -1.0F;
    if (value > most) most = value;
  }
  return most;
}

}  // namespace

int64_t literalScale(float highest) {
  int64_t scale = 50000;
  if (highest > 50000.0F) scale = 100000;
  if (highest > 100000.0F) scale = 500000;
  if (highest > 500000.0F) scale = 1000000;
  if (highest > 1000000.0F) scale = 5000000;
  if (highest > 5000000.0F) scale = 10000000;
  if (highest > 10000000.0F) scale = 20000000;
  if (highest > 20000000.0F) scale = 50000000;
  if (highest > 50000000.0F) scale = 100000000;
  if (highest > 100000000.0F) scale = 200000000;
  if (highest > 200000000.0F) scale = 500000000;
  if (highest > 500000000.0F) scale = 1000000000;
  if (highest > 1000000000.0F) scale = 2000000000;
  if (highest > 2000000000.0F) scale = 5000000000;
  if (highest > 5000000000.0F) scale = 10000000000;
  if (highest > 10000000000.0F) scale = 20000000000;
  if (highest > 20000000000.0F) scale = 50000000000;
  if (highest > 50000000000.0F) scale = 100000000000;
  return scale;
}

LiteralDisks::LiteralDisks() : reads_(75), writes_(75) {}

void LiteralDisks::pass(uint64_t read, uint64_t written, double now) {
  const double elapsed = before_ ? std::floor(now - *before_) : 0;
  uint64_t readRate = 0;
  uint64_t writeRate = 0;
  if (elapsed >= 1 && read_ != 0) {
    const auto seconds = static_cast<uint64_t>(elapsed);
    readRate = growth(read_, read) / seconds;
    writeRate = growth(written_, written) / seconds;
  }
  shift(reads_, readRate);
  shift(writes_, writeRate);
  read_ = read;
  written_ = written;
  before_ = now;
}

int64_t LiteralDisks::scale() const { return literalScale(highest(writes_, highest(reads_, -2))); }

}  // namespace halvermonte::test
