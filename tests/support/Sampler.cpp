#include "tests/support/Sampler.hpp"

#include <gtest/gtest.h>

namespace halvermonte::test {
namespace {

std::vector<std::string> linesOf(const Text& text) {
  std::vector<std::string> lines;
  for (const Text& piece : text.split('\n')) lines.emplace_back(piece.view());
  EXPECT_EQ(lines.back(), "") << "the text does not end with a line feed";
  lines.pop_back();
  return lines;
}

}  // namespace

Entries entriesOf(const Text& names, const Text& values) {
  const std::vector<std::string> nameLines = linesOf(names);
  const std::vector<std::string> valueLines = linesOf(values);
  EXPECT_EQ(nameLines.size(), valueLines.size());
  Entries entries;
  for (size_t i = 0; i < std::min(nameLines.size(), valueLines.size()); ++i) {
    entries.emplace_back(nameLines[i], valueLines[i]);
  }
  return entries;
}

Entries entriesOf(const Dictionary& dictionary) {
  Entries entries;
  for (const Dictionary::Entry& entry : dictionary) {
    EXPECT_EQ(entry.value.kind(), Value::Kind::text);
    entries.emplace_back(entry.key.view(), entry.value.asText().str());
  }
  return entries;
}

}  // namespace halvermonte::test
