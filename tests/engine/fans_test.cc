// The fans of a pass: their names and whole revolutions per minute.
#include <gtest/gtest.h>

#include <limits>

#include "engine/NextStepEncoding.hpp"
#include "platform/Processor.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

struct Fan {
  KeyAnswer descriptor;
  KeyAnswer speed;
};

TestMachine& withFans(TestMachine& machine, const std::vector<Fan>& fans) {
  machine.keys["FNum"] = ui8(static_cast<uint8_t>(fans.size()));
  for (size_t i = 0; i < fans.size(); ++i) {
    const std::string fan = "F" + std::to_string(i);
    machine.keys[fan + "ID"] = fans[i].descriptor;
    machine.keys[fan + "Ac"] = fans[i].speed;
  }
  return machine;
}

/// What the pass over a machine of these fans shows.
Entries shown(const std::vector<Fan>& fans) {
  TestMachine machine;
  Sampler sampler(withFans(machine, fans));
  sampler.pass();
  return sampler.fans();
}

/// One fan's entry by that descriptor.
std::string nameBy(const KeyAnswer& descriptor) {
  return shown({{descriptor, fpe2(1000)}}).at(0).first;
}

void expectNoFans(Sampler& sampler) {
  EXPECT_EQ(sampler.record()->sensors_fans(), "n/a");
  EXPECT_EQ(sampler.record()->sensors_fansData(), "");
}

TEST(Fans, AreShownWithWholeRevolutions) {
  TestMachine machine;
  withFans(machine, {{fanDescriptor("Left"), flt(1200.7F)}, {fanDescriptor("Right"), flt(0)}});
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.record()->sensors_fans(), "Left\nRight\n");
  EXPECT_EQ(sampler.record()->sensors_fansData(), "1200\n0\n");
  EXPECT_EQ(entriesOf(sampler.record()->fans()), Entries({{"Left", "1200"}, {"Right", "0"}}));
}

TEST(Fans, HaveADefaultNameCountedFromOne) {
  EXPECT_EQ(shown({{rawKey("ui8 ", {1}), fpe2(900)},
                   {fanDescriptor("Rear"), fpe2(800)},
                   {rawKey("ui8 ", {1}), fpe2(700)}}),
            Entries({{"Fan 1", "900"}, {"Rear", "800"}, {"Fan 3", "700"}}));
}

TEST(Fans, MayBeTen) {
  std::vector<Fan> fans(10, {rawKey("ui8 ", {1}), fpe2(500)});
  const Entries ten = shown(fans);
  ASSERT_EQ(ten.size(), 10U);
  EXPECT_EQ(ten.front().first, "Fan 1");
  EXPECT_EQ(ten.back().first, "Fan 10");
}

TEST(FansDeathTest, EndTheProcessIfThereAreMoreThanTen) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  TestMachine machine;
  withFans(machine, std::vector<Fan>(11, {rawKey("ui8 ", {1}), fpe2(500)}));
  Sampler sampler(machine);
  EXPECT_EXIT(sampler.pass(), testing::KilledBySignal(SIGABRT), "^$");
}

struct Speed {
  const char* behaviour;
  KeyAnswer answer;
  const char* value;  ///< "": the fan is left out
};

class FanSpeed : public testing::TestWithParam<Speed> {};

TEST_P(FanSpeed, IsTruncatedAndLeavesTheFanOutBelowZero) {
  const Speed& speed = GetParam();
  TestMachine machine;
  withFans(machine, {{fanDescriptor("Rear"), speed.answer}});
  Sampler sampler(machine);
  sampler.pass();
  if (*speed.value == '\0') {
    expectNoFans(sampler);
  } else {
    EXPECT_EQ(sampler.fans(), Entries({{"Rear", speed.value}})) << speed.behaviour;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Answers, FanSpeed,
    testing::Values(Speed{"fixed point", fpe2(650.75), "650"}, Speed{"stopped", fpe2(0), "0"},
                    Speed{"a float", flt(1999.99F), "1999"},
                    Speed{"less than one, backwards", flt(-0.9F), "0"},
                    Speed{"backwards", flt(-1), ""},
                    Speed{"no number", flt(std::numeric_limits<float>::quiet_NaN()), "0"},
                    Speed{"beyond 32 bits", flt(1e20F), "2147483647"},
                    Speed{"far backwards", flt(-1e20F), ""}, Speed{"another type", ui8(90), "0"},
                    Speed{"no such key", fpe2(900).withInfoResult(kSMCKeyNotFound), "0"},
                    Speed{"no data", fpe2(900).withSize(0), "0"},
                    Speed{"the first step fails", fpe2(900).withInfoCode(kCodeError), "0"},
                    Speed{"the second step fails", fpe2(900).withReadCode(kCodeError), "0"}));

TEST(Fans, AreNoneIfTheControllerHasNoCount) {
  TestMachine machine;
  Sampler sampler(machine);
  sampler.pass();
  expectNoFans(sampler);
}

struct Count {
  const char* behaviour;
  KeyAnswer answer;
  size_t fans;
};

class FanCount : public testing::TestWithParam<Count> {};

TEST_P(FanCount, IsASignedNumber) {
  TestMachine machine;
  machine.keys["FNum"] = GetParam().answer;
  Sampler sampler(machine);
  sampler.pass();
  if (GetParam().fans == 0) {
    expectNoFans(sampler);
  } else {
    EXPECT_EQ(sampler.fans().size(), GetParam().fans) << GetParam().behaviour;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Answers, FanCount,
    testing::Values(Count{"none", ui8(0), 0}, Count{"one", ui8(1), 1},
                    Count{"the last byte counts", rawKey("ui16", {1, 2}), 2},
                    Count{"a size beyond any", ui8(2).withSize(0x80000000), 0},
                    Count{"the key is absent", ui8(2).withInfoResult(kSMCKeyNotFound), 0},
                    Count{"the first step fails", ui8(2).withInfoCode(kCodeError), 0},
                    Count{"the second step's result fails", ui8(2).withReadResult(1), 0}));

TEST(Fans, LeaveOneOutAndShowTheOthersUnderTheirOwnNumbers) {
  EXPECT_EQ(shown({{rawKey("ui8 ", {1}), flt(-5)},
                   {rawKey("ui8 ", {1}), fpe2(800)},
                   {rawKey("ui8 ", {1}), flt(-5)}}),
            Entries({{"Fan 2", "800"}}));
}

TEST(Fans, KeepTheDictionaryOfThePreviousPassIfNoneIsShown) {
  TestMachine machine;
  withFans(machine, {{fanDescriptor("Rear"), fpe2(900)}});
  Sampler sampler(machine);
  sampler.pass();
  const Dictionary before = sampler.record()->fans();
  machine.keys["F0Ac"] = flt(-1);
  sampler.pass();
  expectNoFans(sampler);
  EXPECT_TRUE(sampler.record()->fans().isSame(before));
  EXPECT_EQ(entriesOf(before), Entries({{"Rear", "900"}}));
}

TEST(Fans, OfOneNameShareAnEntryThatTheLaterOneFills) {
  TestMachine machine;
  withFans(machine, {{fanDescriptor("Rear"), fpe2(900)}, {fanDescriptor("Rear"), fpe2(700)}});
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.fans(), Entries({{"Rear", "900"}, {"Rear", "700"}}));
  EXPECT_EQ(entriesOf(sampler.record()->fans()), Entries({{"Rear", "700"}}));
}

// Unlike a temperature, which needs a name to be in its dictionary.
TEST(Fans, WithAnEmptyNameAreInTheDictionaryUnderIt) {
  TestMachine machine;
  withFans(machine, {{fanDescriptor("Rear").withReadResult(1), fpe2(900)}});
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.record()->sensors_fans(), "\n");
  EXPECT_EQ(sampler.record()->sensors_fansData(), "900\n");
  EXPECT_EQ(entriesOf(sampler.record()->fans()), Entries({{"", "900"}}));
}

TEST(FanNames, EndAtTheFirstBlankOrAfterTwelveCharacters) {
  EXPECT_EQ(nameBy(fanDescriptor("Left side")), "Left");
  EXPECT_EQ(nameBy(fanDescriptor("ABCDEFGHIJKL")), "ABCDEFGHIJKL");
  EXPECT_EQ(nameBy(fanDescriptor("")), "");
}

TEST(FanNames, EndAtTheFirstNUL) {
  EXPECT_EQ(nameBy(fanDescriptor(std::string_view("Re\0ar", 5))), "Re");
}

TEST(FanNames, KeepALineFeedWhichThenPartsTheLines) {
  TestMachine machine;
  withFans(machine, {{fanDescriptor("A\nB"), fpe2(900)}});
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.record()->sensors_fans(), "A\nB\n");
  EXPECT_EQ(sampler.record()->sensors_fansData(), "900\n");
  EXPECT_EQ(sampler.record()->fans().size(), 0U) << "lines that do not match make no dictionary";
}

TEST(FanNames, AreInTheNextStepEncoding) {
  EXPECT_EQ(nameBy(fanDescriptor("K\xF1hler")), "Kæhler");
  EXPECT_EQ(nameBy(fanDescriptor("L\xF0\xD9n")), "Löän");
  EXPECT_EQ(nameBy(fanDescriptor("~!\x7F")), "~!\x7F");
}

// From 0x80 on, sixteen in a line; the first is a blank that does not break, the last two are
// unassigned.
constexpr const char* kNextStepCharacters =
    "\u00A0ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏ"
    "ÐÑÒÓÔÕÖÙÚÛÜÝÞµ×÷"
    "©¡¢£⁄¥ƒ§¤’“«‹›\uFB01\uFB02"
    "®–†‡·¦¶•‚„”»…‰¬¿"
    "¹ˋ´ˆ˜¯˘˙¨²˚¸³˝˛ˇ"
    "—±¼½¾àáâãäåçèéêë"
    "ìÆíªîïðñŁØŒºòóôõ"
    "öæùúûıüýłøœßþÿ\uFFFD\uFFFD";

TEST(FanNames, HaveEveryCharacterOfTheNextStepEncoding) {
  std::string ascii;
  for (char character = 1; character != 0x7F; ++character) ascii += character;
  EXPECT_EQ(decodedNextStep(ascii), ascii);
  std::string upperHalf;
  for (int byte = 0x80; byte <= 0xFF; ++byte) upperHalf += static_cast<char>(byte);
  EXPECT_EQ(decodedNextStep(upperHalf), kNextStepCharacters);
}

// The arm64 build asks for names in a record of 88 bytes, and for nothing else.
TEST(FanNames, AreAskedForInTheRecordOfTheProcessor) {
  TestMachine machine;
  machine.wideCalls = false;
  withFans(machine, {{fanDescriptor("Rear"), fpe2(900)}});
  Sampler sampler(machine);
  sampler.pass();
  const char* name = kProcessor == Processor::arm64 ? "Fan 1" : "Rear";
  EXPECT_EQ(sampler.fans(), Entries({{name, "900"}}));
}

// Codes of the name query are judged by their low 14 bits alone.
TEST(FanNames, AreTakenIfOnlyTheHighBitsOfACodeAreSet) {
  EXPECT_EQ(nameBy(fanDescriptor("Rear").withReadCode(0x4000)), "")
      << "the reply of the second step was not written";
  EXPECT_EQ(nameBy(fanDescriptor("Rear").withReadCode(0x4001)), "Fan 1");
  EXPECT_EQ(nameBy(fanDescriptor("Rear").withInfoCode(0x4000)), "Fan 1")
      << "the size and type of the first step were not written";
}

TEST(FanNames, NeedADescriptorOf16Bytes) {
  EXPECT_EQ(nameBy(fanDescriptor("Rear").withSize(15)), "Fan 1");
  EXPECT_EQ(nameBy(fanDescriptor("Rear").withSize(17)), "Fan 1");
  EXPECT_EQ(nameBy(fanDescriptor("Rear").withInfoResult(1)), "Fan 1");
}

}  // namespace
}  // namespace halvermonte::test
