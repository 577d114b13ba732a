// What every platform's Foundation services do alike. This file is built once for each.
#include "platform/Foundation.hpp"

#include <gtest/gtest.h>

#include <ctime>
#include <new>

namespace halvermonte {
namespace {

TEST(AnyFoundationTest, TheHostHasAName) { EXPECT_NE(foundation::localizedHostName(), ""); }

TEST(AnyFoundationTest, TheCurrentDateIsTheSystems) {
  const auto now = static_cast<double>(std::time(nullptr));
  EXPECT_NEAR(foundation::currentDate().secondsSince1970(), now, 2);
}

TEST(AnyFoundationTest, ZeroBytesAreZeroKB) {
  using foundation::ByteCountStyle;
  EXPECT_EQ(foundation::byteCountText(0, ByteCountStyle::file), "Zero KB");
  EXPECT_EQ(foundation::byteCountText(0, ByteCountStyle::decimal), "Zero KB");
}

TEST(AnyFoundationTest, AKeyThatTheHostDoesNotTranslateIsItsText) {
  EXPECT_EQ(foundation::bundleText("0 KB/s"), "0 KB/s");
  EXPECT_EQ(foundation::bundleText("%@/s"), "%@/s");
}

TEST(AnyFoundationTest, TheArgumentTakesItsPlaceInTheFormat) {
  EXPECT_EQ(foundation::formatted("%@/s", "5 MB"), "5 MB/s");
  EXPECT_EQ(foundation::formatted("par seconde : %@", "5 Mo é"), "par seconde : 5 Mo é");
  EXPECT_EQ(foundation::formatted("fixed", "5 MB"), "fixed");
}

TEST(AnyFoundationTest, ACommandsOutputComesWholeAndByteForByte) {
  using namespace std::string_literals;
  EXPECT_EQ(foundation::outputOfCommand("printf 'a\\0\\377\\n'"), "a\0\xFF\n"s);
  EXPECT_EQ(foundation::outputOfCommand("true"), "");
  EXPECT_EQ(foundation::outputOfCommand("echo out; echo err >&2; exit 3"), "out\n");
  EXPECT_EQ(foundation::outputOfCommand("head -c 1000000 /dev/zero")->size(), 1'000'000u);
}

constexpr std::string_view kList = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><array><dict>
<key>text</key><string>é &amp; more</string>
<key>integer</key><integer>5</integer>
<key>real</key><real>1.5</real>
<key>true</key><true/>
<key>data</key><data>AAAA</data>
<key>list</key><array><string>a</string><string></string></array>
</dict></array></plist>)";

TEST(AnyFoundationTest, APropertyListHasItsTextsNumbersListsAndMaps) {
  const Array root = foundation::propertyList(kList).asArray();
  ASSERT_EQ(root.size(), 1u);
  const Dictionary entries = root[0].asDictionary();
  EXPECT_EQ(entries.size(), 6u);
  EXPECT_EQ(entries.find("text").asText(), "é & more");
  EXPECT_EQ(entries.find("integer").asNumber().int32Value(), 5);
  EXPECT_EQ(entries.find("real").asNumber().float64Value(), 1.5);
  EXPECT_EQ(entries.find("true").asNumber().int32Value(), 1);
  EXPECT_TRUE(entries.find("data"));  // there, whatever it is
  ASSERT_EQ(entries.find("list").asArray().size(), 2u);
  EXPECT_EQ(entries.find("list").asArray()[1].asText(), "");
}

TEST(AnyFoundationTest, BytesThatAreNoPropertyListAreNoList) {
  EXPECT_EQ(foundation::propertyList("").asArray().size(), 0u);
  EXPECT_EQ(foundation::propertyList("<html>").asArray().size(), 0u);
  EXPECT_EQ(foundation::propertyList(kList.substr(0, 100)).asArray().size(), 0u);
}

TEST(AnyFoundationTest, APrintedLineGoesToStandardOutput) {
  testing::internal::CaptureStdout();
  foundation::print("a missing service %@ %s é");
  std::fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "a missing service %@ %s é\n");
}

TEST(AnyFoundationTest, ALogLineGoesToStandardError) {
  testing::internal::CaptureStderr();
  foundation::log("a drive went away %@ %s é");
  const std::string logged = testing::internal::GetCapturedStderr();
  EXPECT_NE(logged.find("a drive went away %@ %s é\n"), std::string::npos) << logged;
}

TEST(AnyFoundationTest, TheGuardAnswersAPlatformExceptionsReason) {
  EXPECT_EQ(foundation::reasonRaisedBy([] { throw PlatformException("gone"); }), "gone");
  EXPECT_EQ(foundation::reasonRaisedBy([] { throw RangeException("beyond"); }), "beyond");
  EXPECT_EQ(foundation::reasonRaisedBy([] {}), std::nullopt);
}

TEST(AnyFoundationTest, TheGuardLetsEveryOtherExceptionPass) {
  EXPECT_THROW(foundation::reasonRaisedBy([] { throw std::bad_alloc(); }), std::bad_alloc);
  EXPECT_THROW(foundation::reasonRaisedBy([] { throw 5; }), int);
}

}  // namespace
}  // namespace halvermonte
