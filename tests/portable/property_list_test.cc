#include <gtest/gtest.h>
#include <plist/plist.h>

#include <string>

#include "platform/Foundation.hpp"
#include "tests/support/RecordTexts.hpp"

namespace halvermonte::test {
namespace {

using namespace std::string_literals;

std::string read(const std::string& bytes) { return described(foundation::propertyList(bytes)); }

std::string inPlist(const std::string& root) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\">\n" +
         root + "\n</plist>\n";
}

std::string inBinary(const std::string& xml) {
  plist_t root = nullptr;
  plist_from_xml(xml.data(), static_cast<uint32_t>(xml.size()), &root);
  char* bytes = nullptr;
  uint32_t size = 0;
  plist_to_bin(root, &bytes, &size);
  std::string binary(bytes, size);
  plist_to_bin_free(bytes);
  plist_free(root);
  return binary;
}

const std::string kReport = inPlist(
    "<array><dict><key>_items</key><array><dict><key>chip_type</key><string>Apple M1</string>"
    "<key>cores</key><integer>8</integer></dict></array><key>_ok</key><true/></dict></array>");
constexpr const char* kReportRead =
    "[{\"_items\": [{\"chip_type\": \"Apple M1\" \"cores\": uint64 8 } ] \"_ok\": int32 1 } ]";

TEST(PropertyListTest, AReportIsReadInXMLAndInBinaryForm) {
  EXPECT_EQ(read(kReport), kReportRead);
  EXPECT_EQ(read(inBinary(kReport)), kReportRead);
}

struct Read {
  const char* xml;
  const char* described;
};

TEST(PropertyListTest, EveryKindOfValueIsRead) {
  const Read rows[] = {
      {"<string>Apple M1</string>", "\"Apple M1\""},
      {"<string/>", "\"\""},
      {"<string></string>", "\"\""},
      {"<string>a&lt;b&amp;&#67;&#x1F321;</string>", "\"a<b&C\xF0\x9F\x8C\xA1\""},
      {"<string><![CDATA[a</string>]]>b</string>", "\"a</string>b\""},
      {"<string>a<!-- </string> -->b</string>", "\"ab\""},
      {"<integer>18446744073709551615</integer>", "uint64 18446744073709551615"},
      {"<real>1.5</real>", "float64 0x1.8p+0"},
      {"<true/>", "int32 1"},
      {"<false/>", "int32 0"},
      {"<array/>", "[]"},
      {"<array></array>", "[]"},
      {"<dict/>", "{}"},
      {"<dict><key>b</key><string>1</string><key>a</key><array/></dict>",
       "{\"a\": [] \"b\": \"1\" }"},
      {"<array><data>QUJD</data><date>2020-01-01T00:00:00Z</date></array>", "[image image ]"},
  };
  for (const Read& row : rows) {
    EXPECT_EQ(read(inPlist(row.xml)), row.described) << row.xml;
    EXPECT_EQ(read(inBinary(inPlist(row.xml))), row.described) << row.xml;
  }
}

TEST(PropertyListTest, XMLMayComeWithAByteOrderMarkOrWithoutAnythingAround) {
  EXPECT_EQ(read("\xEF\xBB\xBF" + kReport), kReportRead);
  EXPECT_EQ(read("\n  <array><string>a</string></array>"), "[\"a\" ]");
}

TEST(PropertyListTest, WhatIsNoPropertyListIsNothing) {
  for (const std::string& text : {""s,
                                  " "s,
                                  "\n"s,
                                  "Apple M1"s,
                                  "<"s,
                                  "<>"s,
                                  "</plist>"s,
                                  "<plist"s,
                                  "{ a = b; }"s,
                                  "{\"a\": 1}"s,
                                  "bplist00"s,
                                  "bplist00"s + std::string(31, '\0'),
                                  "bplist"s + std::string(64, '\xFF'),
                                  "<?xml version=\"1.0\"?>"s,
                                  "<!-- no end"s,
                                  "<plist version=\"1.0\"></plist>"s,
                                  "<plist><string>a</array></plist>"s,
                                  "<plist><dict><string>a</string></dict></plist>"s,
                                  "<plist><unheard/></plist>"s,
                                  "<plist><string>&unheard;</string></plist>"s,
                                  "<plist><array>words</array></plist>"s,
                                  std::string(100, '\0')}) {
    EXPECT_EQ(read(text), "absent") << text;
  }
}

TEST(PropertyListTest, AReportThatEndsEarlyIsNothingWhereverItEnds) {
  const size_t end = kReport.find("</plist>") + sizeof "</plist>" - 1;
  for (size_t length = 0; length < end; ++length) {
    EXPECT_EQ(read(kReport.substr(0, length)), "absent") << length;
  }
  EXPECT_EQ(read(kReport.substr(0, end)), kReportRead);
}

TEST(PropertyListTest, ABinaryReportThatEndsEarlyIsNothingWhereverItEnds) {
  const std::string binary = inBinary(kReport);
  for (size_t length = 0; length < binary.size(); ++length) {
    EXPECT_EQ(read(binary.substr(0, length)), "absent") << length;
  }
}

TEST(PropertyListTest, ABinaryReportWithAnyByteChangedIsReadWithoutHarm) {
  const std::string binary = inBinary(kReport);
  for (size_t place = 0; place < binary.size(); ++place) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string changed = binary;
      changed[place] = static_cast<char>(byte);
      foundation::propertyList(changed);
    }
  }
}

TEST(PropertyListTest, TextThatIsNotUTF8IsNothing) {
  EXPECT_EQ(read(inPlist("<string>Apple \xFF</string>")), "absent");
  EXPECT_EQ(read(inPlist("<array><string>\xC3</string><string>b</string></array>")), "absent");
  EXPECT_EQ(read(inPlist("<string>&#xD800;</string>")), "absent");
  EXPECT_EQ(read(inPlist("<array><dict><key>&#xD800;</key><true/></dict></array>")), "absent");
  EXPECT_EQ(read(inPlist("<array><dict><key>a</key><string>&#xD800;</string></dict></array>")),
            "absent");
  std::string binary = inBinary(inPlist("<array><string>Apple</string></array>"));
  binary[binary.find("Apple")] = '\xFF';
  EXPECT_EQ(read(binary), "absent");
}

std::string repeated(const std::string& part, int times) {
  std::string whole;
  for (int i = 0; i < times; ++i) whole += part;
  return whole;
}

std::string nested(int levels) {
  return inPlist(repeated("<array>", levels) + repeated("</array>", levels));
}

std::string bigEndian(uint64_t value, int size) {
  std::string bytes;
  for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
    bytes += static_cast<char>(value >> shift);
  return bytes;
}

/// Binary lists, each holding the next one so many times.
std::string nestedBinary(uint64_t levels, int times) {
  std::string objects = "bplist00";
  std::string offsets;
  for (uint64_t level = 1; level <= levels; ++level) {
    offsets += bigEndian(objects.size(), 4);
    objects += static_cast<char>(0xA0 | (level < levels ? times : 0));
    if (level < levels) objects += repeated(bigEndian(level, 4), times);
  }
  return objects + offsets + std::string(6, '\0') + '\4' + '\4' + bigEndian(levels, 8) +
         bigEndian(0, 8) + bigEndian(objects.size(), 8);
}

TEST(PropertyListTest, ListsAreReadTo255LevelsInAPropertyListAndDeeperOnesAreNothing) {
  EXPECT_NE(read(nested(255)), "absent");
  for (const int levels : {256, 100'000, 1'000'000}) EXPECT_EQ(read(nested(levels)), "absent");
  EXPECT_NE(read(nestedBinary(257, 1)), "absent");
  for (const uint64_t levels : {258u, 100'000u}) {
    EXPECT_EQ(read(nestedBinary(levels, 1)), "absent");
  }
}

TEST(PropertyListTest, ManyElementsSideBySideAreNoDepth) {
  const std::string xml =
      inPlist("<array>" + repeated("<string>a</string><dict/>", 5000) + "</array>");
  EXPECT_EQ(foundation::propertyList(xml).asArray().size(), 10'000u);
  EXPECT_EQ(foundation::propertyList(inBinary(xml)).asArray().size(), 10'000u);
}

TEST(PropertyListTest, ABinaryKeyInWhichANULStandsMakesTheListNothing) {
  const std::string utf16 = "\x62\0a\0b"s;
  std::string binary = inBinary(inPlist("<dict><key>abcd</key><true/></dict>"));
  const size_t key = binary.find(
      "\x54"
      "abcd");
  ASSERT_NE(key, std::string::npos);
  binary.replace(key, utf16.size(), utf16);
  EXPECT_EQ(read(binary), "{\"ab\": int32 1 }");
  binary[key + 2] = '\0';
  EXPECT_EQ(read(binary), "absent");
}

TEST(PropertyListTest, AListThatRefersToItselfOrDoublesAtEachLevelIsNothing) {
  EXPECT_NE(read(nestedBinary(10, 2)), "absent");
  EXPECT_EQ(read(nestedBinary(40, 2)), "absent");
  std::string toItself = nestedBinary(2, 1);
  toItself[8 + 4] = 0;  // the first list's reference
  EXPECT_EQ(read(toItself), "absent");
}

}  // namespace
}  // namespace halvermonte::test
