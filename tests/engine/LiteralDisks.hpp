// Disk throughput a second time: slow, word by word, and sharing nothing with the
// engine but its inputs.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace halvermonte::test {

/// The chart's scale for a highest rate.
int64_t literalScale(float highest);

class LiteralDisks {
 public:
  LiteralDisks();

  /// The drives' totals at a pass, and what the clock shows.
  void pass(uint64_t read, uint64_t written, double now);

  /// The rates, oldest first; absent in a slot that has none.
  const std::vector<std::optional<uint64_t>>& reads() const { return reads_; }
  const std::vector<std::optional<uint64_t>>& writes() const { return writes_; }
  int64_t scale() const;

 private:
  uint64_t read_ = 0;
  uint64_t written_ = 0;
  std::optional<double> before_;
  std::vector<std::optional<uint64_t>> reads_;
  std::vector<std::optional<uint64_t>> writes_;
};

}  // namespace halvermonte::test
