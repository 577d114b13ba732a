// Machine files that are not JSON, and JSON that machine files may not contain.
#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "tests/simulated/MachineTexts.hpp"

namespace halvermonte {
namespace {

const std::string kNoJson = ": expected well-formed JSON in UTF-8";

struct NoJson {
  std::string text;
  std::string place;
};

const NoJson kNoJsons[] = {
    {"", "line 1, column 1"},
    {"  \n ", "line 2, column 2"},
    {"{", "line 1, column 2"},
    {"{\"name\": \"a\",\n \"ticks\": [{}]} x", "line 2, column 17"},
    {"{\"name\": \"a\", \"ticks\": [{}],}", "line 1, column 29"},
    {"{\"name\": \"a\", // comment\n \"ticks\": [{}]}", "line 1, column 15"},
    {"{'name': \"a\"}", "line 1, column 2"},
    {"{\"name\": \"a\nb\"}", "line 1, column 12"},
    {"{\"name\": NaN}", "line 1, column 10"},
    {"{\"name\": 01}", "line 1, column 11"},
    {"{\"name\": \"\\ud800\"}", "line 1, column 17"},
    {"{\"name\": \"\xC3\xA9\xC3\x28\"}", "line 1, column 13"},
    {"{\"name\": \"\xED\xA0\x80\"}", "line 1, column 12"},
    {std::string("{\"name\": \"a\", \"ticks\": [{}]}\0", 29), "line 1, column 29"},
    {std::string("{\"name\": \"a\", \"ticks\": [{}]}\0{", 30), "line 1, column 29"},
};

TEST(MachineFileJson, IsRefusedByLineAndColumnIfItIsNotWellFormed) {
  for (const auto& [text, place] : kNoJsons) {
    EXPECT_EQ(refusalOf(text), "sample.json: " + place + kNoJson) << text;
  }
}

TEST(MachineFileJson, NamesAMemberOnlyOnce) {
  EXPECT_EQ(refusalOf(R"({"name": "a", "ticks": [{}], "name": "b"})"),
            "sample.json: /name: expected this member only once");
  EXPECT_EQ(refusalOf(machineText(R"({}, {"smc": {"keys": {"TC0P": null, "TC0P": null}}})")),
            "sample.json: /ticks/1/smc/keys/TC0P: expected this member only once");
}

TEST(MachineFileJson, NamesAMemberOnlyOnceEvenIfItIsEscaped) {
  EXPECT_EQ(refusalOf(R"({"name": "a", "ticks": [{}], "n\u0061me": "b"})"),
            "sample.json: /name: expected this member only once");
}

TEST(MachineFileJson, HasNoNumberOutsideTheRangeOfA64BitFloat) {
  EXPECT_EQ(refusalOf(machineText(R"({"time": 1e309})")),
            "sample.json: /ticks/0/time: expected a number within the range of a 64-bit float");
  EXPECT_EQ(refusalOf("[1, -1e999]"),
            "sample.json: /1: expected a number within the range of a 64-bit float");
  EXPECT_EQ(refusalOf("1e999"),
            "sample.json: /: expected a number within the range of a 64-bit float");
}

TEST(MachineFileJson, NestsAtMost32Levels) {
  EXPECT_EQ(refusalOf(std::string(32, '[') + std::string(32, ']')),
            "sample.json: /: expected an object");
  std::string place;
  for (int level = 0; level < 32; ++level) place += "/0";
  EXPECT_EQ(refusalOf(std::string(1000000, '[')),
            "sample.json: " + place + ": expected at most 32 levels of nesting");
}

TEST(MachineFileJson, MayBeginWithAByteOrderMark) {
  EXPECT_EQ(refusalOf("\xEF\xBB\xBF" + machineText("{}")), "");
}

TEST(MachineFileJson, HasItsDecimalPointInEveryLocale) {
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  const char* const comma = std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  if (comma == nullptr) GTEST_SKIP() << "needs the locale de_DE.UTF-8";
  const auto machine = machineOf(R"({"time": 2.5})");
  std::setlocale(LC_NUMERIC, before.c_str());
  EXPECT_EQ(machine->clock(), 2.5);
}

}  // namespace
}  // namespace halvermonte
