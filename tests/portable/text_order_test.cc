#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "platform/Foundation.hpp"

namespace halvermonte::test {
namespace {

using foundation::standsBefore;

TEST(TextOrderTest, TextsStandInTheOrderShownToPeople) {
  const std::vector<std::string> ordered = {
      "",
      " ",
      "007",
      "07",
      "7",
      "10",
      "Airflow Left",
      "Battery",
      "Battery 1",
      "Battery 2",
      "Battery TS_MAX",
      "CPU 1 Package",
      "CPU 1 Package Alt.",
      "CPU 2 Package",
      "CPU Core",
      "CPU Core 1",
      "CPU Core 2",
      "CPU Core 9",
      "CPU Core 10",
      "CPU Core 010a",
      "CPU Core 10b",
      "CPU Core 99999999999999999999",
      "CPU Core 100000000000000000000",
      "CPU Efficiency Core 1",
      "GPU Cluster 2",
      "GPU Cluster 10",
      "Mem Bank A1",
      "mem bank A2",
      "Mem Bank B1",
      "Wi-Fi",
      "wi-fi",
  };
  for (size_t i = 0; i < ordered.size(); ++i) {
    for (size_t j = 0; j < ordered.size(); ++j) {
      EXPECT_EQ(standsBefore(ordered[i], ordered[j]), i < j) << ordered[i] << " | " << ordered[j];
    }
  }
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The order as one key to compare by: the characters without case and the runs of digits by value;
/// then the runs' leading zeros, more of them first; then the bytes.
using Key =
    std::tuple<std::vector<std::tuple<int, size_t, std::string>>, std::vector<int>, std::string>;

Key keyOf(const std::string& text) {
  Key key;
  auto& [parts, zeros, bytes] = key;
  for (size_t i = 0; i < text.size();) {
    if (!isDigit(text[i])) {
      parts.emplace_back(std::tolower(static_cast<unsigned char>(text[i++])), 0, "");
      continue;
    }
    std::string run;
    while (i < text.size() && isDigit(text[i])) run += text[i++];
    const size_t value = std::min(run.find_first_not_of('0'), run.size());
    zeros.push_back(-static_cast<int>(value));
    parts.emplace_back('0', run.size() - value, run.substr(value));
  }
  bytes = text;
  return key;
}

std::vector<std::string> allTexts(const std::string& alphabet, size_t longest) {
  std::vector<std::string> texts = {""};
  for (size_t first = 0, length = 1; length <= longest; ++length) {
    const size_t end = texts.size();
    for (; first < end; ++first) {
      for (const char character : alphabet) texts.push_back(texts[first] + character);
    }
  }
  return texts;
}

TEST(TextOrderTest, AllShortTextsStandInTheOrderOfTheRule) {
  const std::vector<std::string> texts = allTexts("aB01 ", 4);
  std::vector<Key> keys;
  for (const std::string& text : texts) keys.push_back(keyOf(text));
  for (size_t i = 0; i < texts.size(); ++i) {
    for (size_t j = 0; j < texts.size(); ++j) {
      ASSERT_EQ(standsBefore(texts[i], texts[j]), keys[i] < keys[j])
          << texts[i] << " | " << texts[j];
    }
  }
}

}  // namespace
}  // namespace halvermonte::test
