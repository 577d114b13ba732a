#include "monitor/live/Rows.hpp"

#include <algorithm>
#include <utility>

#include "monitor/SensorGroups.hpp"

namespace halvermonte {
namespace {

/// A heading with what it hides when it is folded.
struct Block {
  Row heading;
  std::vector<Row> rows;
};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Whether the text has the part. The case of ASCII letters does not matter.
bool mentions(std::string_view text, std::string_view part) {
  return part.empty() || !std::ranges::search(text, part, {}, lower, lower).empty();
}

Section sectionOf(const SensorView& sensor, const Origins& origins) {
  const auto origin = origins.find({Quantity::temperature, sensor.identity});
  if (origin == origins.end()) return static_cast<Section>(groupOf(sensor.name));
  return static_cast<Section>(groupOf(sensor.name, origin->second.driver));
}

/// Sorts, and gives the heading the one with the highest number.
Block sensorBlock(Section section, std::string_view name, Row::Kind kind,
                  const std::vector<const SensorView*>& sensors, Order order) {
  Block block{.heading = {.section = section, .name = name, .count = sensors.size()}, .rows = {}};
  for (const SensorView* const sensor : sensors) {
    block.rows.push_back({.kind = kind, .section = section, .sensor = sensor});
  }
  const auto number = [](const Row& row) { return row.sensor->number; };
  block.heading.sensor = std::ranges::max_element(block.rows, {}, number)->sensor;
  if (order == Order::byHeat) std::ranges::stable_sort(block.rows, std::ranges::greater(), number);
  return block;
}

class RowMaker {
 public:
  RowMaker(const PassView& view, const Origins& origins, const ViewState& state, const Room& room)
      : view_(view), origins_(origins), state_(state), room_(room) {}

  std::vector<Row> rows() {
    addTemperatures();
    addFans();
    addDisks();
    fold();
    std::vector<Row> rows;
    for (const Block& block : blocks_) {
      rows.push_back(block.heading);
      // The fastest of a few fans is seen at once, unless they are folded.
      if (isFansUnfolded(block)) rows.back().sensor = nullptr;
      if (!block.heading.isFolded) rows.insert(rows.end(), block.rows.begin(), block.rows.end());
    }
    return rows;
  }

 private:
  bool isFiltered() const { return !state_.filter.empty(); }

  void addTemperatures() {
    std::array<std::vector<const SensorView*>, kSensorGroups.size()> groups;
    for (const SensorView& sensor : view_.temperatures) {
      if (!mentions(sensor.name, state_.filter)) continue;
      groups[static_cast<size_t>(sectionOf(sensor, origins_))].push_back(&sensor);
    }
    for (const SensorGroup group : kSensorGroups) {
      const auto& sensors = groups[static_cast<size_t>(group)];
      if (sensors.empty()) continue;
      blocks_.push_back(sensorBlock(static_cast<Section>(group), nameOf(group),
                                    Row::Kind::temperature, sensors, state_.order));
    }
  }

  void addFans() {
    std::vector<const SensorView*> fans;
    for (const SensorView& fan : view_.fans) {
      if (mentions(fan.name, state_.filter)) fans.push_back(&fan);
    }
    if (fans.empty()) return;
    blocks_.push_back(sensorBlock(Section::fans, "Fans", Row::Kind::fan, fans, state_.order));
  }

  void addDisks() {
    if (!mentions("Disks", state_.filter)) return;
    Block block{.heading = {.section = Section::disks, .name = "Disks", .count = 0}, .rows = {}};
    addDirection("read", view_.disks.read, block);
    addDirection("write", view_.disks.written, block);
    blocks_.push_back(std::move(block));
  }

  void addDirection(std::string_view name, const DiskTraffic& traffic, Block& block) const {
    const Row row{.kind = Row::Kind::traffic,
                  .section = Section::disks,
                  .traffic = &traffic,
                  .name = name,
                  .hasChartBelow = room_.hasColumns};
    block.rows.push_back(row);
    for (size_t line = 0; room_.hasColumns && line < kTallChart; ++line) {
      block.rows.push_back(row);
      block.rows.back().kind = Row::Kind::chart;
      block.rows.back().line = line;
    }
  }

  /// As a person left them; the others unfold in order, as long as all headings keep their place.
  void fold() {
    size_t needed = 0;
    for (Block& block : blocks_) {
      const auto chosen = state_.folded.find(block.heading.section);
      const bool isChosen = chosen != state_.folded.end();
      block.heading.isFolded = !isFiltered() && (!isChosen || chosen->second);
      if (sharesRoom(block)) needed += 1 + (block.heading.isFolded ? 0 : block.rows.size());
    }
    const auto unfoldIfFree = [&](Block& block) {
      if (!block.heading.isFolded || state_.folded.contains(block.heading.section)) return;
      const size_t more = sharesRoom(block) ? block.rows.size() : 0;
      if (needed + more > room_.rows) return;
      needed += more;
      block.heading.isFolded = false;
    };
    // Fans and disks are few rows, and last.
    std::for_each(blocks_.rbegin(), blocks_.rend(), [&](Block& block) {
      if (block.heading.section >= Section::fans) unfoldIfFree(block);
    });
    std::ranges::for_each(blocks_, unfoldIfFree);
  }

  static bool isFansUnfolded(const Block& block) {
    return block.heading.section == Section::fans && !block.heading.isFolded;
  }

  bool sharesRoom(const Block& block) const {
    return !room_.hasColumns || block.heading.section < Section::fans;
  }

  const PassView& view_;
  const Origins& origins_;
  const ViewState& state_;
  const Room& room_;
  std::vector<Block> blocks_;
};

}  // namespace

RowId Row::id() const {
  if (kind == Kind::heading) return {section, ""};
  return {section, sensor != nullptr ? sensor->identity : std::string(name)};
}

Track Row::track() const {
  const Quantity quantity = section == Section::fans ? Quantity::fan : Quantity::temperature;
  return {quantity, sensor->identity};
}

std::vector<Row> makeRows(const PassView& view, const Origins& origins, const ViewState& state,
                          const Room& room) {
  return RowMaker(view, origins, state, room).rows();
}

}  // namespace halvermonte
