#include <CoreFoundation/CoreFoundation.h>
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "platform/CFOwned.hpp"
#include "platform/portable/LiveCounters.hpp"

namespace halvermonte::test {
namespace {

using portable::liveObjects;

CFStringRef createText(const char* characters,
                       CFStringEncoding encoding = CFStringGetSystemEncoding()) {
  return CFStringCreateWithCString(kCFAllocatorDefault, characters, encoding);
}

CFNumberRef createInt64(int64_t value) {
  return CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &value);
}

CFNumberRef createDouble(double value) {
  return CFNumberCreate(kCFAllocatorDefault, kCFNumberDoubleType, &value);
}

std::string charactersOf(CFStringRef text) {
  std::vector<uint8_t> buffer(64);
  CFIndex used = 0;
  CFStringGetBytes(text, CFRange{0, CFStringGetLength(text)}, kCFStringEncodingUTF8, 0, 0,
                   buffer.data(), 64, &used);
  return {buffer.begin(), buffer.begin() + used};
}

TEST(CoreFoundationTest, WhatACreateCallGivesLivesUntilItIsReleased) {
  const size_t before = liveObjects();
  const CFStringRef text = createText("words");
  EXPECT_EQ(liveObjects(), before + 1);
  EXPECT_EQ(CFRetain(text), text);
  CFRelease(text);
  EXPECT_EQ(liveObjects(), before + 1);
  EXPECT_EQ(charactersOf(text), "words");
  CFRelease(text);
  EXPECT_EQ(liveObjects(), before);
}

TEST(CoreFoundationTest, AListRetainsItsElementsAndLendsThem) {
  const size_t before = liveObjects();
  const CFMutableArrayRef list =
      CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
  EXPECT_EQ(CFArrayGetCount(list), 0);
  const CFStringRef text = createText("element");
  CFArrayAppendValue(list, text);
  CFArrayAppendValue(list, text);
  CFRelease(text);
  EXPECT_EQ(liveObjects(), before + 2);
  ASSERT_EQ(CFArrayGetCount(list), 2);
  EXPECT_EQ(CFArrayGetValueAtIndex(list, 1), text);
  EXPECT_EQ(liveObjects(), before + 2);
  CFRelease(list);
  EXPECT_EQ(liveObjects(), before);
}

TEST(CoreFoundationTest, AMapRetainsItsEntriesAndFindsThemByCharacters) {
  const size_t before = liveObjects();
  const void* keys[] = {createText("one"), createText("two")};
  const void* values[] = {createInt64(1), createInt64(2)};
  const CFDictionaryRef map =
      CFDictionaryCreate(kCFAllocatorDefault, keys, values, 2, &kCFTypeDictionaryKeyCallBacks,
                         &kCFTypeDictionaryValueCallBacks);
  for (const void* object : {keys[0], keys[1], values[0], values[1]}) CFRelease(object);
  EXPECT_EQ(liveObjects(), before + 5);
  EXPECT_EQ(CFDictionaryGetCount(map), 2);
  EXPECT_EQ(CFDictionaryGetValue(map, CFSTR("two")), values[1]);
  EXPECT_EQ(CFDictionaryGetValue(map, CFSTR("three")), nullptr);
  CFRelease(map);
  EXPECT_EQ(liveObjects(), before);
}

TEST(CoreFoundationTest, AConstantTextIsOneObjectThatNeverEnds) {
  const CFStringRef text = CFSTR("constant");
  const size_t before = liveObjects();
  EXPECT_EQ(CFSTR("constant"), text);
  CFRelease(text);
  CFRelease(text);
  EXPECT_EQ(charactersOf(text), "constant");
  EXPECT_EQ(liveObjects(), before);
}

TEST(CoreFoundationTest, ATextIsWrittenWholeOrNotAtAll) {
  const CFOwned text(createText("Gr\u00F6\u00DFe", kCFStringEncodingUTF8));
  EXPECT_EQ(CFStringGetLength(text.get()), 7);
  EXPECT_GE(CFStringGetMaximumSizeForEncoding(7, kCFStringEncodingUTF8), 7);
  uint8_t buffer[8] = {};
  CFIndex used = 99;
  const CFRange whole = {0, 7};
  EXPECT_EQ(CFStringGetBytes(text.get(), whole, kCFStringEncodingUTF8, 0, 0, buffer, 6, &used), 0);
  EXPECT_EQ(used, 0);
  EXPECT_EQ(buffer[0], 0);
  EXPECT_EQ(CFStringGetBytes(text.get(), whole, kCFStringEncodingUTF8, 0, 0, buffer, 7, &used), 7);
  EXPECT_EQ(used, 7);
  EXPECT_STREQ(reinterpret_cast<const char*>(buffer), "Gr\u00F6\u00DFe");
}

TEST(CoreFoundationTest, ATextIsNoneInAnotherEncodingThanItsOwn) {
  constexpr CFStringEncoding kUTF16 = 0x0100;
  EXPECT_EQ(createText("Product", kUTF16), nullptr);
  EXPECT_EQ(createText("Gr\u00F6\u00DFe"), nullptr) << "beyond ASCII";
  EXPECT_EQ(createText("Gr\xF6\xDF", kCFStringEncodingUTF8), nullptr);
}

TEST(CoreFoundationTest, ListsAndMapsWithoutCallbacksRetainNothing) {
  const size_t before = liveObjects();
  const void* keys[] = {createText("key")};
  const void* values[] = {createText("value")};
  const CFMutableArrayRef list = CFArrayCreateMutable(kCFAllocatorDefault, 0, nullptr);
  CFArrayAppendValue(list, values[0]);
  const CFDictionaryRef map =
      CFDictionaryCreate(kCFAllocatorDefault, keys, values, 1, nullptr, nullptr);
  EXPECT_EQ(CFDictionaryGetValue(map, keys[0]), values[0]);
  EXPECT_EQ(CFDictionaryGetValue(map, CFSTR("key")), nullptr) << "another object";
  CFRelease(keys[0]);
  CFRelease(values[0]);
  EXPECT_EQ(liveObjects(), before + 2) << "the containers alone";
  CFRelease(list);
  CFRelease(map);
  EXPECT_EQ(liveObjects(), before);
}

struct NumberCase {
  CFNumberRef number;
  int32_t int32;
  int64_t int64;
  double real;
  bool isInt32, isInt64, isReal;
};

TEST(CoreFoundationTest, ANumberIsConvertedAndTellsWhatIsLost) {
  constexpr int64_t kMost = std::numeric_limits<int64_t>::max();
  const int32_t seven = 7;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const NumberCase cases[] = {
      {CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &seven), 7, 7, 7.0, true, true,
       true},
      {createInt64(-1), -1, -1, -1.0, true, true, true},
      {createInt64(0x1'0000'0002), 2, 0x1'0000'0002, 4294967298.0, false, true, true},
      {createInt64(kMost), -1, kMost, 9223372036854775808.0, false, true, false},
      {createInt64((int64_t{1} << 53) + 1), 1, (int64_t{1} << 53) + 1, 9007199254740992.0, false,
       true, false},
      {createDouble(2.5), 2, 2, 2.5, false, false, true},
      {createDouble(-2.5), -2, -2, -2.5, false, false, true},
      {createDouble(1e300), 2147483647, kMost, 1e300, false, false, true},
      {createDouble(nan), 0, 0, nan, false, false, false},
  };
  for (const NumberCase& expected : cases) {
    int32_t int32 = 99;
    int64_t int64 = 99;
    double real = 99;
    EXPECT_EQ(CFNumberGetValue(expected.number, kCFNumberSInt32Type, &int32), expected.isInt32);
    EXPECT_EQ(CFNumberGetValue(expected.number, kCFNumberSInt64Type, &int64), expected.isInt64);
    EXPECT_EQ(CFNumberGetValue(expected.number, kCFNumberDoubleType, &real), expected.isReal);
    EXPECT_EQ(int32, expected.int32);
    EXPECT_EQ(int64, expected.int64);
    EXPECT_TRUE(real == expected.real || std::isnan(expected.real)) << real;
    CFRelease(expected.number);
  }
}

TEST(CoreFoundationTest, AnUnknownNumberTypeGivesNothing) {
  const int16_t small = 3;
  EXPECT_EQ(CFNumberCreate(kCFAllocatorDefault, 2, &small), nullptr);
  const CFOwned number(createInt64(3));
  int16_t untouched = 5;
  EXPECT_EQ(CFNumberGetValue(number.get(), 2, &untouched), 0);
  EXPECT_EQ(untouched, 5);
}

TEST(CoreFoundationTest, AnOwnerReleasesWhatItOwns) {
  const size_t before = liveObjects();
  {
    const CFOwned text(createText("owned"));
    const CFOwned<CFStringRef> nothing(nullptr);
    EXPECT_TRUE(text);
    EXPECT_FALSE(nothing);
    EXPECT_EQ(liveObjects(), before + 1);
  }
  EXPECT_EQ(liveObjects(), before);
}

TEST(CoreFoundationTest, ThreadsShareAnObject) {
  const size_t before = liveObjects();
  const CFStringRef text = createText("shared");
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
      threads.emplace_back([text] {
        for (int i = 0; i < 1000; ++i) {
          CFRetain(text);
          const CFOwned own(createText("own"));
          CFRelease(text);
        }
      });
    }
  }
  EXPECT_EQ(liveObjects(), before + 1);
  CFRelease(text);
  EXPECT_EQ(liveObjects(), before);
}

TEST(CoreFoundationDeathTest, ReleasingOrRetainingNothingEndsTheProcessWithoutAWord) {
  EXPECT_EXIT(CFRelease(nullptr), ::testing::KilledBySignal(SIGABRT), "^$");
  EXPECT_EXIT(CFRetain(nullptr), ::testing::KilledBySignal(SIGABRT), "^$");
}

/// Ended by its last release, but not by the list that holds it without retaining it.
template <class Reference>
Reference released(Reference object) {
  CFRelease(object);
  return object;
}

TEST(CoreFoundationDeathTest, AUseOfAReleasedObjectEndsTheProcess) {
  CFIndex used = 0;
  int64_t number = 0;
  uint8_t buffer[8];
  const auto text = released(createText("gone"));
  const auto boxed = released(createInt64(1));
  const auto list = released(CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
  const auto map = released(CFDictionaryCreate(kCFAllocatorDefault, nullptr, nullptr, 0,
                                               &kCFTypeDictionaryKeyCallBacks,
                                               &kCFTypeDictionaryValueCallBacks));
  EXPECT_DEATH(CFRelease(text), "^CFRelease: expected a live object\n$");
  EXPECT_DEATH(CFRetain(text), "^CFRetain: expected a live object\n$");
  EXPECT_DEATH(CFStringGetLength(text), "^CFStringGetLength: expected a live text\n$");
  EXPECT_DEATH(CFStringGetBytes(text, CFRange{0, 4}, kCFStringEncodingUTF8, 0, 0, buffer, 8, &used),
               "^CFStringGetBytes: expected a live text\n$");
  EXPECT_DEATH(CFNumberGetValue(boxed, kCFNumberSInt64Type, &number),
               "^CFNumberGetValue: expected a live number\n$");
  EXPECT_DEATH(CFArrayGetCount(list), "^CFArrayGetCount: expected a live array\n$");
  EXPECT_DEATH(CFArrayAppendValue(list, CFSTR("late")), "^CFArrayAppendValue: expected a live ar");
  EXPECT_DEATH(CFArrayGetValueAtIndex(list, 0), "^CFArrayGetValueAtIndex: expected a live array");
  EXPECT_DEATH(CFDictionaryGetCount(map), "^CFDictionaryGetCount: expected a live dictionary\n$");
  EXPECT_DEATH(CFDictionaryGetValue(map, CFSTR("key")), "^CFDictionaryGetValue: expected a live d");
}

TEST(CoreFoundationDeathTest, AnElementThatItsListDidNotRetainEndsTheProcessWhenItIsUsed) {
  const CFOwned list(CFArrayCreateMutable(kCFAllocatorDefault, 0, nullptr));
  const CFNumberRef number = createInt64(1);
  CFArrayAppendValue(list.get(), number);
  CFRelease(number);
  const auto* const lent = static_cast<CFNumberRef>(CFArrayGetValueAtIndex(list.get(), 0));
  int64_t value = 0;
  EXPECT_DEATH(CFNumberGetValue(lent, kCFNumberSInt64Type, &value), "expected a live number");
}

TEST(CoreFoundationDeathTest, AnObjectOfAnotherTypeEndsTheProcess) {
  EXPECT_DEATH(CFArrayGetCount(reinterpret_cast<CFArrayRef>(CFSTR("a text"))),
               "^CFArrayGetCount: expected a live array\n$");
  EXPECT_DEATH(CFStringGetLength(nullptr), "^CFStringGetLength: expected a live text\n$");
}

TEST(CoreFoundationDeathTest, AnIndexBeyondTheListEndsTheProcess) {
  const CFOwned list(CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
  CFArrayAppendValue(list.get(), CFSTR("only"));
  for (const CFIndex index : {1L, -1L}) {
    EXPECT_DEATH(CFArrayGetValueAtIndex(list.get(), index), "expected an index within the array");
  }
}

TEST(CoreFoundationDeathTest, CallbacksOtherThanThePlatformsEndTheProcess) {
  const CFArrayCallBacks own = kCFTypeArrayCallBacks;
  EXPECT_DEATH(CFArrayCreateMutable(kCFAllocatorDefault, 0, &own),
               "^CFArrayCreateMutable: expected the platform's callbacks\n$");
}

TEST(CoreFoundationDeathTest, APartOfATextOrAnotherEncodingEndsTheProcess) {
  uint8_t buffer[8];
  CFIndex used = 0;
  const CFStringRef text = CFSTR("text");
  EXPECT_DEATH(CFStringGetBytes(text, CFRange{0, 3}, kCFStringEncodingUTF8, 0, 0, buffer, 8, &used),
               "expected the whole text, as UTF-8");
  EXPECT_DEATH(
      CFStringGetBytes(text, CFRange{0, 4}, kCFStringEncodingMacRoman, 0, 0, buffer, 8, &used),
      "expected the whole text, as UTF-8");
}

}  // namespace
}  // namespace halvermonte::test
