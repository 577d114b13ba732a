// Machine files that are not JSON, and JSON that machine files may not contain.
#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "halvermonte/MachineFileError.hpp"
#include "platform/simulated/JsonValue.hpp"
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

TEST(MachineFileJson, IsNoLargerThanAComputerNeeds) {
  EXPECT_EQ(refusalOf(std::string(64000001, 'x')), "sample.json: expected at most 64 MB");
  EXPECT_EQ(refusalOf(std::string(64000000, 'x')), "sample.json: line 1, column 1" + kNoJson);
}

TEST(MachineFileJson, HasAtMostHalfAMillionElementsInAnArray) {
  std::string zeros = "[0";
  for (int i = 1; i < 500000; ++i) zeros += ",0";
  EXPECT_EQ(refusalOf(zeros + "]"), "sample.json: /: expected an object");
  EXPECT_EQ(refusalOf(zeros + ",0]"),
            "sample.json: /500000: expected at most 500000 elements of an array");
}

/// The error message for the text if no container may have more than 3 entries and the text no more
/// than 10 values, without the elements of the member "taken". "" if it is valid.
std::string refusalOfMany(const std::string& text) {
  try {
    const std::string name = "many.json";
    const JsonLimits limits = {.entries = 3, .values = 10};
    parseJson(
        text, name, "taken", [](size_t, const JsonValue&) {}, limits);
  } catch (const MachineFileError& error) {
    return error.what();
  }
  return {};
}

TEST(MachineFileJson, HasLimitsForWhatItContains) {
  EXPECT_EQ(refusalOfMany(R"({"a": [1, [2, 3, 4], {"b": 5, "c": 6}]})"), "");
  EXPECT_EQ(refusalOfMany(R"({"a": [1, [2, 3, 4], {"b": 5, "c": 6, "d": 7}]})"),
            "many.json: /a/2/d: expected at most 10 values in a file");
  EXPECT_EQ(refusalOfMany(R"({"a": [1, [2, 3, 4, 5]]})"),
            "many.json: /a/1/3: expected at most 3 elements of an array");
  EXPECT_EQ(refusalOfMany(R"({"a": [{"b": 1, "c": 2, "d": 3, "e": 4}]})"),
            "many.json: /a/0/e: expected at most 3 members of an object");
  EXPECT_EQ(refusalOfMany(R"({"a": 1, "taken": [[1], 2, 3]})"), "");
  EXPECT_EQ(refusalOfMany(R"({"a": 1, "taken": [[1], 2, 3, 4]})"),
            "many.json: /taken/3: expected at most 3 elements of an array");
  EXPECT_EQ(refusalOfMany(R"({"taken": [[1], 2, {"a": 1, "a": 2}]})"),
            "many.json: /taken/2/a: expected this member only once");
}

TEST(MachineFileJson, IsRefusedAtItsFirstTickThatIsWrong) {
  EXPECT_EQ(refusalOf(R"({"ticks": [{}, 5, )"), "sample.json: /ticks/1: expected an object");
  EXPECT_EQ(refusalOf(R"({"name": "a", "ticks": [], "ticks": [{}]})"),
            "sample.json: /ticks: expected this member only once");
  EXPECT_EQ(refusalOf(R"([{"ticks": [5]}])"), "sample.json: /: expected an object");
}

TEST(MachineFileJson, MayGiveItsTicksFirst) {
  const auto machine =
      SimulatedMachine::fromText(R"({"ticks": [{"time": 3}, {}], "name": "Late"})", "sample.json");
  EXPECT_EQ(machine->name(), "Late");
  EXPECT_EQ(machine->clock(), 3);
  machine->nextTick();
  EXPECT_EQ(machine->clock(), 4);
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
