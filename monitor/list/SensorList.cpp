#include "monitor/list/SensorList.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>
#include <vector>

#include "halvermonte/CountTexts.hpp"
#include "halvermonte/SensorSources.hpp"
#include "monitor/Line.hpp"
#include "monitor/SensorGroups.hpp"
#include "monitor/list/Drives.hpp"
#include "monitor/list/Group.hpp"

namespace halvermonte {
namespace {

using Row = std::array<std::string, 6>;  // name, reading, key, source, raw, shown

/// Rows under a heading.
struct Section {
  std::string_view heading;
  std::vector<Row> rows = {};
};

std::vector<Section> emptySections() {
  std::vector<Section> sections = {{kFanGroup}};
  for (const SensorGroup group : kSensorGroups) sections.push_back({nameOf(group)});
  return sections;
}

/// With at most three decimals, and none that is a 0 at the end.
std::string decimalText(double number) {
  char digits[400];
  const auto fixed = std::chars_format::fixed;
  std::string text(digits, std::to_chars(digits, digits + sizeof digits, number, fixed, 3).ptr);
  if (text.find('.') == text.npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text == "-0" ? "0" : text;
}

std::string readingOf(const SensorSource& sensor, bool fahrenheit) {
  if (!sensor.number) return "-";
  if (fahrenheit && sensor.quantity == "temperature") {
    return decimalText(*sensor.number * 9 / 5 + 32) + " °F";
  }
  return decimalText(*sensor.number) + " " + std::string(sensor.unit);
}

std::string sourceOf(const SensorSource& sensor) {
  return sensor.label.empty() ? sensor.source : sensor.source + " \"" + sensor.label + "\"";
}

std::string_view listNameOf(ShownIn list) {
  switch (list) {
    case ShownIn::nothing:
      return "no";
    case ShownIn::fullList:
      return "full list";
    case ShownIn::shortList:
      return "short list";
    case ShownIn::fans:
      return "fans";
  }
  return "";
}

std::string shownText(const SensorSource& sensor) {
  std::string list(listNameOf(sensor.shownIn));
  if (sensor.reason.empty()) return list;
  return list + (sensor.shownIn == ShownIn::nothing ? ": " : "; ") + sensor.reason;
}

std::string orDash(const std::string& text) { return text.empty() ? "-" : text; }

Row rowOf(const SensorSource& sensor, bool fahrenheit) {
  return {orDash(sensor.name), readingOf(sensor, fahrenheit),
          orDash(sensor.key),  sourceOf(sensor),
          orDash(sensor.raw),  shownText(sensor)};
}

std::string bytesText(const std::optional<int64_t>& bytes) {
  return byteCountText(static_cast<uint64_t>(std::max<int64_t>(0, bytes.value_or(0))));
}

Row rowOf(const ListedDrive& drive) {
  if (!drive.reason.empty()) return {"Disks", "-", "-", drive.source, "-", "no: " + drive.reason};
  return {"Disks",
          bytesText(drive.bytesRead) + " read, " + bytesText(drive.bytesWritten) + " written",
          "-",
          drive.source,
          std::to_string(*drive.bytesRead) + " " + std::to_string(*drive.bytesWritten),
          "disks"};
}

std::vector<Section> sectionsOf(Sampling& sampling, bool fahrenheit) {
  std::vector<Section> sections = emptySections();
  for (const SensorSource& sensor : sensorSources(sampling.engine(), sampling.machine())) {
    const std::string_view heading = groupNameOf(sensor);
    std::ranges::find(sections, heading, &Section::heading)
        ->rows.push_back(rowOf(sensor, fahrenheit));
  }
  Section disks{"Disks"};
  for (const ListedDrive& drive : listedDrives(sampling.machine())) {
    disks.rows.push_back(rowOf(drive));
  }
  sections.push_back(disks);
  std::erase_if(sections, [](const Section& section) { return section.rows.empty(); });
  return sections;
}

using Widths = std::array<size_t, std::tuple_size_v<Row>>;

std::string lineOf(const Row& row, const Widths& widths) {
  Line line = {{"  "}};
  for (size_t i = 0; i < row.size(); ++i) line.push_back({leftAligned(row[i], widths[i]) + "  "});
  return rendered(line, false) + "\n";
}

}  // namespace

std::string sensorList(Sampling& sampling, const Options& options) {
  const Row titles = {"name", "reading", "key", "source", "raw", "shown"};
  std::vector<Section> sections = sectionsOf(sampling, options.fahrenheit);
  Widths widths{};
  const auto widen = [&widths](const Row& row) {
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], cells(row[i]));
  };
  widen(titles);
  for (Section& section : sections) {
    for (Row& row : section.rows) {
      for (std::string& text : row) text = printable(text, true);
      widen(row);
    }
  }
  std::string list = printable(sampling.view().title, true) + "\n\n" + lineOf(titles, widths);
  for (const Section& section : sections) {
    list += std::string(section.heading) + "\n";
    for (const Row& row : section.rows) list += lineOf(row, widths);
  }
  return list;
}

}  // namespace halvermonte
