#include "platform/apple/Bridging.hpp"
#include "tests/framework/ObjectiveC.hpp"

using halvermonte::Array;
using halvermonte::charactersOf;
using halvermonte::Date;
using halvermonte::Dictionary;
using halvermonte::Number;
using halvermonte::objectOf;
using halvermonte::stringOf;
using halvermonte::Text;
using halvermonte::Value;
using halvermonte::valueOf;

namespace {

class BridgingTest : public ObjectiveCTest {};

TEST_F(BridgingTest, TextsOfAnyCharactersComeBack) {
  using namespace std::string_literals;
  for (const std::string& characters :
       {""s, "plain"s, "é ß €"s, "日本語"s, "\U0001F321\uFE0F"s, "\U0010FFFF"s, "a\0b"s, "\n\t"s}) {
    EXPECT_EQ(charactersOf(stringOf(characters)), characters);
    EXPECT_EQ(valueOf(objectOf(Text(characters))).asText(), characters);
  }
  EXPECT_EQ([stringOf("\U0001F321") length], 2u);
}

TEST_F(BridgingTest, HalfASurrogatePairIsNotKept) {
  const unichar half = 0xD83C;
  NSString* const string = [NSString stringWithCharacters:&half length:1];
  EXPECT_TRUE(Text::fromUTF8(charactersOf(string)));
}

TEST_F(BridgingTest, AbsentAndNilAreOne) {
  EXPECT_TRUE(objectOf(Value()) == nil);
  EXPECT_EQ(valueOf(nil).kind(), Value::Kind::absent);
  EXPECT_EQ(charactersOf(nil), "");
}

TEST_F(BridgingTest, NumbersKeepTheirForm) {
  EXPECT_STREQ([objectOf(Number::ofInt32(-1)) objCType], @encode(int));
  EXPECT_STREQ([objectOf(Number::ofInt64(INT64_MIN)) objCType], @encode(long long));
  EXPECT_STREQ([objectOf(Number::ofUInt64(UINT64_MAX)) objCType], @encode(unsigned long long));
  EXPECT_STREQ([objectOf(Number::ofFloat32(1)) objCType], @encode(float));
  EXPECT_STREQ([objectOf(Number::ofFloat64(1)) objCType], @encode(double));
  EXPECT_EQ([objectOf(Number::ofUInt64(UINT64_MAX)) unsignedLongLongValue], UINT64_MAX);

  const auto number = [](NSNumber* object) { return valueOf(object).asNumber(); };
  EXPECT_EQ(number([NSNumber numberWithInt:-7]).int32Value(), -7);
  EXPECT_EQ(number([NSNumber numberWithInt:-7]).form(), Number::Form::int32);
  EXPECT_EQ(number([NSNumber numberWithUnsignedLongLong:UINT64_MAX]).uint64Value(), UINT64_MAX);
  EXPECT_EQ(number([NSNumber numberWithFloat:0.1F]).form(), Number::Form::float32);
  EXPECT_EQ(number([NSNumber numberWithDouble:0.1]).float64Value(), 0.1);
  EXPECT_EQ(number([NSNumber numberWithBool:YES]).int32Value(), 1);
}

TEST_F(BridgingTest, EachWholeNumberComesBackEqual) {
  NSNumber* const numbers[] = {
      [NSNumber numberWithChar:-128],
      [NSNumber numberWithUnsignedInt:UINT32_MAX],
      [NSNumber numberWithLongLong:INT32_MIN],
      [NSNumber numberWithLongLong:INT64_C(-3'000'000'000)],
      [NSNumber numberWithLongLong:INT64_MIN],
      [NSNumber numberWithLongLong:INT64_MAX],
      [NSNumber numberWithUnsignedLongLong:UINT64_C(1) << 63],
      [NSNumber numberWithUnsignedLongLong:UINT64_MAX],
  };
  for (NSNumber* const number : numbers) {
    const std::string description = charactersOf([number description]);
    EXPECT_TRUE([objectOf(valueOf(number)) isEqual:number]) << description;
    EXPECT_EQ(charactersOf([objectOf(valueOf(number)) description]), description);
  }
}

TEST_F(BridgingTest, ContainersComeBackWhole) {
  const Dictionary inner({{Text("k"), Text("v")}, {Text("é"), Number::ofInt32(5)}});
  const Array array({inner, Date(12.5), Text("last")});
  const id object = objectOf(array);
  EXPECT_TRUE([object isKindOfClass:[NSArray class]]);
  EXPECT_TRUE([[object objectAtIndex:0] isKindOfClass:[NSDictionary class]]);
  const Array back = valueOf(object).asArray();
  ASSERT_EQ(back.size(), 3u);
  const Dictionary dictionary = back[0].asDictionary();
  EXPECT_EQ(dictionary.size(), 2u);
  EXPECT_EQ(dictionary.find("é").asNumber().int32Value(), 5);
  EXPECT_EQ(back[1].asDate().secondsSince1970(), 12.5);
}

TEST_F(BridgingTest, AHostsOwnObjectComesBackItselfAndIsReleased) {
  {
    const Pool pool;
    id mine = [[[Counted alloc] init] autorelease];
    const Value value = valueOf([NSArray arrayWithObject:mine]);
    EXPECT_TRUE([objectOf(value) objectAtIndex:0] == mine);
  }
  EXPECT_EQ([Counted alive], 0);
}

TEST_F(BridgingTest, KeysOtherThanStringsAreLeftOut) {
  NSDictionary* const dictionary =
      [NSDictionary dictionaryWithObjectsAndKeys:@"a", [NSNumber numberWithInt:1], @"b", @"2", nil];
  EXPECT_EQ(valueOf(dictionary).asDictionary().size(), 1u);
}

}  // namespace
