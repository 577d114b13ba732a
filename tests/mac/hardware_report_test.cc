// What a Mac's machine leaves in the hardware report.
#include "platform/mac/HardwareReport.hpp"

#include <gtest/gtest.h>

namespace halvermonte::macos {
namespace {

TEST(MacHardwareReportTest, KeepsWhatAModelHasInCommon) {
  constexpr const char* kReport =
      "<dict>\n\t<key>chip_type</key>\n\t<string>Apple M1</string>\n"
      "\t<key>cpu_type</key><string>Core i7</string><key>number_processors</key>\n"
      "<string>proc 8:4:4</string></dict>";
  EXPECT_EQ(withoutIdentifiers(kReport), kReport);
}

TEST(MacHardwareReportTest, LeavesOutEveryOtherText) {
  EXPECT_EQ(withoutIdentifiers("<dict><key>serial_number</key>\n\t<string>C02X</string>"
                               "<key>chip_type</key><string>Apple M1</string>"
                               "<key>platform_UUID</key> <string>0-1-2</string></dict>"),
            "<dict><key>chip_type</key><string>Apple M1</string></dict>");
}

TEST(MacHardwareReportTest, KeepsKeysOfOtherThanTexts) {
  constexpr const char* kReport =
      "<key>_items</key><array><dict><key>_properties</key><integer>4</integer></dict></array>";
  EXPECT_EQ(withoutIdentifiers(kReport), kReport);
}

TEST(MacHardwareReportTest, LeavesOutATextThatDoesNotEnd) {
  EXPECT_EQ(withoutIdentifiers("<key>_name</key><key>serial_number</key><string>C02X"),
            "<key>_name</key>");
  EXPECT_EQ(withoutIdentifiers("ab<key>serial_number"), "ab<key>serial_number");
  EXPECT_EQ(withoutIdentifiers(""), "");
}

}  // namespace
}  // namespace halvermonte::macos
