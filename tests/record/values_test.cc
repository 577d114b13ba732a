#include "halvermonte/Values.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <map>
#include <random>
#include <sstream>
#include <string>

namespace halvermonte::test {
namespace {

using namespace std::string_view_literals;

TEST(TextTest, AnAbsentTextReadsAsNoCharacters) {
  const Text absent;
  EXPECT_FALSE(absent);
  EXPECT_EQ(absent.kind(), Value::Kind::absent);
  EXPECT_EQ(absent.view(), "");
}

TEST(TextTest, AnEmptyTextIsPresent) {
  const Text empty("");
  EXPECT_TRUE(empty);
  EXPECT_EQ(empty.kind(), Value::Kind::text);
  EXPECT_EQ(empty.view(), "");
}

TEST(TextTest, ATextComparesAsAString) {
  const Text text("words");
  EXPECT_TRUE(text == "words" && "words" == text && text == Text("words"));
  EXPECT_TRUE(text == std::string("words") && text == "words"sv);
  EXPECT_TRUE(text != "word" && text != Text());
  EXPECT_TRUE(text < "words." && text > Text("word") && "z" > text);
  EXPECT_LT(Text("z"), Text("\xC3\xA4"));  // by bytes: "ä" is after "z"
  EXPECT_TRUE(Text() == "" && Text() == Text(""));
}

TEST(TextTest, ATextPrintsAsAString) {
  std::ostringstream out;
  out << Text("a\0b"sv) << Text() << std::setw(4) << Text("c");
  EXPECT_EQ(out.str(), "a\0b   c"sv);
}

TEST(TextTest, ATextBecomesAString) {
  const std::string converted = Text("a rather long line of words");
  EXPECT_EQ(converted, "a rather long line of words");
  EXPECT_EQ(Text("a\0b"sv).str(), "a\0b"sv);
  EXPECT_EQ(Text().str(), "");
}

TEST(TextTest, ACopyIsTheSameObjectAndAnEqualTextIsNot) {
  const Text text("words");
  const Text copy = text;
  EXPECT_TRUE(copy.isSame(text));
  EXPECT_FALSE(Text("words").isSame(text));
  EXPECT_TRUE(Text().isSame(Number()));
}

TEST(TextTest, CharactersMayHoldNulAndOutliveWhatTheyWereMadeFrom) {
  std::string characters("a\0b", 3);
  const Text text(characters);
  characters.assign("something else");
  EXPECT_EQ(text.view(), "a\0b"sv);
}

std::vector<std::string> piecesOf(const Text& text) {
  std::vector<std::string> pieces;
  for (const Text& piece : text.split('\n')) pieces.emplace_back(piece.view());
  return pieces;
}

using Pieces = std::vector<std::string>;

TEST(TextTest, SplittingGivesOnePieceMoreThanThereAreSeparators) {
  EXPECT_EQ(piecesOf(Text("Left\nRight\n")), (Pieces{"Left", "Right", ""}));
  EXPECT_EQ(piecesOf(Text("n/a")), Pieces{"n/a"});
  EXPECT_EQ(piecesOf(Text("")), Pieces{""});
  EXPECT_EQ(piecesOf(Text()), Pieces{""});
  EXPECT_EQ(piecesOf(Text("\n\n")), (Pieces{"", "", ""}));
  EXPECT_EQ(piecesOf(Text("\nlast")), (Pieces{"", "last"}));
}

TEST(TextTest, PiecesArePresentTextsThatOutliveTheWhole) {
  Text last;
  {
    const Text whole("a rather long first line\na rather long second line");
    last = whole.split('\n')[1];
  }
  EXPECT_EQ(last.kind(), Value::Kind::text);
  EXPECT_EQ(last.view(), "a rather long second line");
  EXPECT_EQ(last.split(' ')[2], "long");
  EXPECT_TRUE(Text("").split('\n')[0]);
}

TEST(TextTest, ANulFollowsTheCharactersOfTextsAndPieces) {
  const Text whole(std::string_view("one,two,").substr(0, 7));
  EXPECT_STREQ(whole.view().data(), "one,two");
  const std::vector<Text> pieces = whole.split(',');
  ASSERT_EQ(pieces.size(), 2U);
  EXPECT_STREQ(pieces[0].view().data(), "one");
  EXPECT_STREQ(pieces[1].view().data(), "two");
  EXPECT_EQ(whole.view(), "one,two") << "is not changed by the splitting";
}

/// Whether the bytes are one code point in its shortest form, and no surrogate: the definition,
/// decoded bit by bit.
bool isOneCodePoint(std::string_view bytes) {
  const auto at = [&](size_t i) { return static_cast<uint32_t>(static_cast<uint8_t>(bytes[i])); };
  constexpr uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const size_t length = bytes.size();
  if (length == 1) return at(0) < 0x80;
  const uint32_t mark = 0xFF00U >> length & 0xFFU;
  if (length < 2 || length > 4 || (at(0) & (mark >> 1 | 0x80U | mark)) != mark) return false;
  uint32_t codePoint = at(0) & ~mark & 0xFFU;
  for (size_t i = 1; i < length; ++i) {
    if (at(i) >> 6 != 2) return false;
    codePoint = codePoint << 6 | (at(i) & 0x3FU);
  }
  const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
  return codePoint >= kLeast[length] && codePoint <= 0x10FFFF && !surrogate;
}

/// Whether the bytes can be cut into code points, by trying every cut.
bool isUTF8(std::string_view bytes) {
  if (bytes.empty()) return true;
  for (size_t length = 1; length <= std::min<size_t>(4, bytes.size()); ++length) {
    if (isOneCodePoint(bytes.substr(0, length)) && isUTF8(bytes.substr(length))) return true;
  }
  return false;
}

/// Bytes at which the rules change, and some between.
constexpr unsigned char kBytes[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0,
                                    0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0,
                                    0xF1, 0xF3, 0xF4, 0xF5, 0xF7, 0xF8, 0xFC, 0xFE, 0xFF};

TEST(TextTest, OnlyWellFormedUTF8BecomesAText) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const std::string bytes = {static_cast<char>(first), static_cast<char>(second)};
      ASSERT_EQ(static_cast<bool>(Text::fromUTF8(bytes)), isUTF8(bytes)) << first << ' ' << second;
      ASSERT_EQ(static_cast<bool>(Text::fromUTF8(bytes.substr(0, 1))), first < 0x80) << first;
    }
  }
  for (const unsigned char a : kBytes) {
    for (const unsigned char b : kBytes) {
      for (const unsigned char c : kBytes) {
        for (const unsigned char d : kBytes) {
          const unsigned char raw[] = {a, b, c, d};
          const std::string_view four(reinterpret_cast<const char*>(raw), 4);
          ASSERT_EQ(static_cast<bool>(Text::fromUTF8(four)), isUTF8(four))
              << int{a} << ' ' << int{b} << ' ' << int{c} << ' ' << int{d};
          const std::string_view three = four.substr(0, 3);
          ASSERT_EQ(static_cast<bool>(Text::fromUTF8(three)), isUTF8(three));
        }
      }
    }
  }
}

TEST(TextTest, UTF8KeepsItsBytes) {
  EXPECT_EQ(Text::fromUTF8("Gr\xC3\xB6\xC3\x9F"
                           "e \xF0\x9F\x8C\xA1"),
            "Gr\xC3\xB6\xC3\x9F"
            "e \xF0\x9F\x8C\xA1");
  EXPECT_TRUE(Text::fromUTF8(""));
  EXPECT_EQ(Text::fromUTF8("a\0b"sv), "a\0b"sv);
}

TEST(ArrayTest, AnAbsentArrayHasNoElements) {
  const Array absent;
  EXPECT_FALSE(absent);
  EXPECT_EQ(absent.size(), 0u);
  EXPECT_TRUE(Array(std::vector<Value>()));
}

TEST(ArrayTest, ElementsKeepOrderKindAndIdentity) {
  const Text text("element");
  const Number number = Number::ofUInt64(7);
  const Array array({text, Value(), number, text});
  ASSERT_EQ(array.size(), 4u);
  EXPECT_TRUE(array[0].isSame(text));
  EXPECT_FALSE(array[1]);
  EXPECT_TRUE(array[2].isSame(number));
  EXPECT_TRUE(array[3].isSame(text));
  EXPECT_EQ(array.elements().size(), 4u);
}

TEST(ArrayTest, AnElementBeyondTheEndIsAbsent) {
  EXPECT_FALSE(Array({Text("element")})[1]);
  EXPECT_FALSE(Array()[0]);
}

TEST(DictionaryTest, AnAbsentDictionaryHasNoEntries) {
  const Dictionary absent;
  EXPECT_FALSE(absent);
  EXPECT_EQ(absent.size(), 0u);
  EXPECT_FALSE(absent.find("key"));
  EXPECT_TRUE(Dictionary(std::vector<Dictionary::Entry>()));
}

TEST(DictionaryTest, OfTwoEntriesWithOneKeyTheLaterIsKept) {
  const Text later("later");
  const Dictionary dictionary({{Text("b"), Text("b's")},
                               {Text("a"), Text("earlier")},
                               {Text("c"), Text("c's")},
                               {Text("a"), Text("middle")},
                               {Text("a"), later}});
  EXPECT_EQ(dictionary.size(), 3u);
  EXPECT_TRUE(dictionary.find("a").isSame(later));
  EXPECT_EQ(dictionary.find("b").asText(), "b's");
  EXPECT_EQ(dictionary.find("c").asText(), "c's");
}

TEST(DictionaryTest, KeysAreComparedByteForByte) {
  const Dictionary dictionary({{Text("\xC3\xA4"), Text("umlaut")},
                               {Text("Z"), Text("upper")},
                               {Text("a\0b"sv), Text("with NUL")},
                               {Text(""), Text("empty")},
                               {Text("a"), Text("lower")}});
  std::vector<std::string> keys;
  for (const Dictionary::Entry& entry : dictionary) keys.emplace_back(entry.key.view());
  EXPECT_EQ(keys, (std::vector<std::string>{"", "Z", "a", std::string("a\0b", 3), "\xC3\xA4"}));
  EXPECT_EQ(dictionary.find("a\0b"sv).asText(), "with NUL");
  EXPECT_EQ(dictionary.find("").asText(), "empty");
  EXPECT_FALSE(dictionary.find("A"));
}

TEST(DictionaryTest, RandomEntriesAreThoseOfAPlainMap) {
  std::mt19937 random(1);
  for (int round = 0; round < 500; ++round) {
    std::map<std::string, int32_t> expected;
    std::vector<Dictionary::Entry> entries;
    const int size = static_cast<int>(random() % 24);
    for (int i = 0; i < size; ++i) {
      const std::string key(random() % 3, static_cast<char>('a' + random() % 3));
      expected[key] = i;
      entries.push_back({Text(key), Number::ofInt32(i)});
    }
    const Dictionary dictionary(std::move(entries));
    std::map<std::string, int32_t> found;
    for (const Dictionary::Entry& entry : dictionary) {
      found[std::string(entry.key.view())] =
          dictionary.find(entry.key.view()).asNumber().int32Value();
    }
    ASSERT_EQ(found, expected);
    ASSERT_EQ(dictionary.size(), expected.size());
  }
}

TEST(DateTest, TheDifferenceOfTwoDatesIsInSecondsAndSigned) {
  const Date earlier(1'000'000.25);
  const Date later(1'000'002.75);
  EXPECT_EQ(later.secondsSince(earlier), 2.5);
  EXPECT_EQ(earlier.secondsSince(later), -2.5);
  EXPECT_EQ(earlier.secondsSince1970(), 1'000'000.25);
}

TEST(ImageTest, APictureKeepsItsIdentity) {
  const auto picture = std::make_shared<int>(1);
  EXPECT_EQ(Image(picture).picture(), picture);
  EXPECT_EQ(Image().picture(), nullptr);
}

TEST(ValueTest, AValueAsAnotherKindIsAbsent) {
  const std::pair<Value, Value::Kind> values[] = {
      {Text("t"), Value::Kind::text},
      {Number::ofInt32(1), Value::Kind::number},
      {Array({Text("t")}), Value::Kind::array},
      {Dictionary({{Text("k"), Text("v")}}), Value::Kind::dictionary},
      {Date(1), Value::Kind::date},
      {Image(std::make_shared<int>(1)), Value::Kind::image},
      {Value(), Value::Kind::absent},
  };
  for (const auto& [value, kind] : values) {
    EXPECT_EQ(value.kind(), kind);
    const std::pair<Value, Value::Kind> views[] = {
        {value.asText(), Value::Kind::text},   {value.asNumber(), Value::Kind::number},
        {value.asArray(), Value::Kind::array}, {value.asDictionary(), Value::Kind::dictionary},
        {value.asDate(), Value::Kind::date},   {value.asImage(), Value::Kind::image},
    };
    for (const auto& [view, viewKind] : views) {
      if (viewKind == kind) {
        EXPECT_TRUE(view.isSame(value));
      } else {
        EXPECT_FALSE(view);
      }
    }
  }
}

}  // namespace
}  // namespace halvermonte::test
