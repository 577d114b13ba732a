#include "monitor/json/JsonWriter.hpp"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "monitor/IsoDate.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::ElementsAreArray;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class JsonLine : public ::testing::Test {
 protected:
  JsonLine() { view.record = shared; }

  std::string line() const { return jsonLine(view); }

  // How the writer writes a property of any kind.
  std::string written(const Value& value) {
    record.setDiskDrives(Array({value}));
    const std::string text = line();
    const std::string before = "\"diskDrives\":[", after = "],\"videoAdapters\"";
    const size_t start = text.find(before) + before.size();
    return text.substr(start, text.find(after) - start);
  }
  std::string written(std::string_view text) { return written(Text(text)); }

  TestMachine machine;
  ScopedMachine scope{machine};
  const std::shared_ptr<StatisticsData> shared = std::make_shared<StatisticsData>();
  StatisticsData& record = *shared;
  PassView view;
};

TEST_F(JsonLine, HasAllPropertiesInDeclarationOrder) {
  std::vector<std::string> declared;
#define PROPERTY(name, Name, Type, initial, copy, turn) declared.push_back(#name);
#include "halvermonte/properties.def"
  ASSERT_EQ(declared.size(), 103U);

  const auto parsed = nlohmann::ordered_json::parse(line());
  std::vector<std::string> found;
  for (const auto& [name, value] : parsed["record"].items()) found.push_back(name);
  EXPECT_THAT(found, ElementsAreArray(declared));
}

TEST_F(JsonLine, IsOneLineWithTheTickAhead) {
  view.number = 18446744073709551615U;
  const std::string text = line();
  EXPECT_THAT(text,
              StartsWith("{\"tick\":18446744073709551615,\"record\":{\"hostName\":\"test\","));
  EXPECT_THAT(text, EndsWith("}}\n"));
  EXPECT_EQ(text.find('\n'), text.size() - 1);
}

TEST_F(JsonLine, ShowsFreshRecordsDefaults) {
  const auto members = nlohmann::json::parse(line())["record"];
  EXPECT_EQ(members["summary_memoryTotal"], 1);
  EXPECT_EQ(members["network_connectedToInternet"], -1);
  EXPECT_EQ(members["diskIO_readText"], "-");
  EXPECT_TRUE(members["summary_cpuUserLoad"].is_null());
  EXPECT_TRUE(members["network_ipExternalCountryFlag"].is_null());
  EXPECT_TRUE(members["cpu_userActivities"].is_null());
  EXPECT_EQ(members["sensors"], nlohmann::json::object());
  EXPECT_EQ(members["cpu_cores"], nlohmann::json::array());
  EXPECT_EQ(members["appsUpdateTime"], "1970-01-12T13:46:40.000Z");
}

TEST_F(JsonLine, FlagsAreTrueOrFalse) {
  record.setBattery_isCharging(1);
  record.setBattery_onPower(-1);
  EXPECT_THAT(line(), HasSubstr("\"battery_isCharging\":true,\"battery_onPower\":true,"
                                "\"battery_hasBattery\":false"));
}

TEST_F(JsonLine, FloatsAreShortestTextsThatReadBackTheSame) {
  EXPECT_EQ(written(Number::ofFloat32(0.1F)), "0.1");
  EXPECT_EQ(written(Number::ofFloat32(99999997952.0F)), "1e+11");
  EXPECT_EQ(written(Number::ofFloat32(50000)), "50000");
  EXPECT_EQ(written(Number::ofFloat64(0.1)), "0.1");
  EXPECT_EQ(written(Number::ofFloat64(static_cast<double>(0.1F))), "0.10000000149011612");
  EXPECT_EQ(written(Number::ofFloat64(-0.0)), "-0");
}

TEST_F(JsonLine, IntegersAreWhole) {
  EXPECT_EQ(written(Number::ofUInt64(18446744073709551615U)), "18446744073709551615");
  EXPECT_EQ(written(Number::ofInt32(std::numeric_limits<int32_t>::min())), "-2147483648");
  EXPECT_EQ(written(Number::ofInt64(std::numeric_limits<int64_t>::min())), "-9223372036854775808");
}

TEST_F(JsonLine, NumbersThatJsonCannotWriteAreNull) {
  EXPECT_EQ(written(Number::ofFloat64(kInfinity)), "null");
  EXPECT_EQ(written(Number::ofFloat64(-kInfinity)), "null");
  EXPECT_EQ(written(Number::ofFloat32(std::numeric_limits<float>::quiet_NaN())), "null");
  EXPECT_EQ(written(Date(kNaN)), "null");
}

TEST_F(JsonLine, TextsAreEscapedAndOtherwiseAsTheyAre) {
  EXPECT_EQ(written("\"\\/\b\f\n\r\t"), R"("\"\\/\b\f\n\r\t")");
  EXPECT_EQ(written(std::string_view("\0\x1f\x7f", 3)), R"("\u0000\u001f\u007f")");
  EXPECT_EQ(written("\u009b\u202e\u2028\u200b\U000E0041"),
            R"("\u009b\u202e\u2028\u200b\udb40\udc41")");
  EXPECT_EQ(written("\u00e9\U0001F600"), "\"\u00e9\U0001F600\"");
}

TEST_F(JsonLine, BytesThatAreNotUtf8AreReplaced) {
  EXPECT_EQ(written("a\xFFz\xE2\x82"), "\"a\uFFFDz\uFFFD\"");
}

TEST_F(JsonLine, DictionariesAreSortedBytewiseAtEveryDepth) {
  const Dictionary inner({{Text("b"), Number::ofInt32(1)}, {Text("B"), Value()}});
  const Dictionary outer({{Text("\u00e9"), inner}, {Text("z"), Text("\n")}, {Text(""), Array()}});
  EXPECT_EQ(written(outer), R"({"":null,"z":"\n","é":{"B":null,"b":1}})");
}

TEST_F(JsonLine, ArraysNestAndImagesAreNull) {
  const Image image(std::make_shared<int>(1));
  const Array empty{std::vector<Value>()};
  EXPECT_EQ(written(Array({empty, image, Array({Text("x"), Value()})})), R"([[],null,["x",null]])");
}

TEST(IsoDate, IsUtcToTheNearestMillisecond) {
  EXPECT_EQ(isoDate(0), "1970-01-01T00:00:00.000Z");
  EXPECT_EQ(isoDate(1767323045.678), "2026-01-02T03:04:05.678Z");
  EXPECT_EQ(isoDate(951782399.9996), "2000-02-29T00:00:00.000Z") << "rounded into the next day";
  EXPECT_EQ(isoDate(-0.25), "1969-12-31T23:59:59.750Z");
  EXPECT_EQ(isoDate(-1), "1969-12-31T23:59:59.000Z");
}

TEST(IsoDate, YearsKeepFourDigits) {
  EXPECT_EQ(isoDate(-62167219200), "0000-01-01T00:00:00.000Z");
  EXPECT_EQ(isoDate(253402300799.999), "9999-12-31T23:59:59.999Z");
  EXPECT_EQ(isoDate(253402300800), "9999-12-31T23:59:59.999Z");
  EXPECT_EQ(isoDate(1e300), "9999-12-31T23:59:59.999Z");
  EXPECT_EQ(isoDate(-kInfinity), "0000-01-01T00:00:00.000Z");
  EXPECT_EQ(isoDate(kNaN), "");
}

TEST_F(JsonLine, HasTheProcessOnlyIfThereIsOne) {
  EXPECT_FALSE(nlohmann::json::parse(line()).contains("process"));
  view.process = {.identifier = 42, .percentOfOneCore = 150.25F};
  EXPECT_THAT(line(), StartsWith("{\"tick\":0,\"process\":{\"pid\":42,\"cpuPercent\":150.25,"
                                 "\"hasEnded\":false},\"record\":{"));
}

TEST_F(JsonLine, ProcessThatIsNotMeasuredYetOrHasEndedHasNoPercentage) {
  view.process = {.identifier = 42};
  EXPECT_THAT(line(), HasSubstr("\"process\":{\"pid\":42,\"cpuPercent\":null,\"hasEnded\":false}"));
  view.process->hasEnded = true;
  EXPECT_THAT(line(), HasSubstr("\"process\":{\"pid\":42,\"cpuPercent\":null,\"hasEnded\":true}"));
}

TEST_F(JsonLine, OfAnExceptionHasTheReasonEscaped) {
  view.number = 7;
  view.exception = "index \"3\"\n\x80";
  EXPECT_EQ(line(), "{\"tick\":7,\"exception\":\"index \\\"3\\\"\\n\uFFFD\"}\n");
}

TEST_F(JsonLine, OfAnExceptionHasTheProcessToo) {
  view.exception = "index";
  view.process = {.identifier = 42, .percentOfOneCore = 1.0F};
  EXPECT_EQ(line(),
            "{\"tick\":0,\"process\":{\"pid\":42,\"cpuPercent\":1,\"hasEnded\":false},"
            "\"exception\":\"index\"}\n");
}

}  // namespace
}  // namespace halvermonte::test
