// The controller of a simulated machine.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "tests/simulated/MachineTexts.hpp"

namespace halvermonte {
namespace {

constexpr uint32_t kTC0P = 0x54433050;

using Bytes = std::vector<int>;

// The first bytes of a key's data in this tick.
Bytes firstBytes(SimulatedMachine& machine, size_t count, uint32_t key = kTC0P) {
  const auto bytes = machine.smcKeyBytes(key).bytes;
  return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
}

// The same for a machine with this answer for TC0P.
Bytes bytesOf(const std::string& answer, size_t count) {
  return firstBytes(*machineOf(tickOfKeys(R"("TC0P": )" + answer)), count);
}

Bytes bytesOfValue(const std::string& type, const std::string& value, size_t count) {
  return bytesOf(R"({"type": ")" + type + R"(", "value": )" + value + "}", count);
}

bool has(SimulatedMachine& machine, uint32_t key) {
  return machine.smcKeyInfo(key).result != kSMCKeyNotFound;
}

TEST(SimulatedController, IsMissingBeforeATickMentionsIt) {
  const auto machine = machineOf("{}");
  EXPECT_EQ(machine->smcService().code, kCodeSuccess);
  EXPECT_FALSE(machine->smcService().present);
}

TEST(SimulatedController, IsPresentOnceATickGivesKeysEvenAnEmptyObject) {
  const auto machine = machineOf(R"({}, {"smc": {"keys": {}}}, {})");
  machine->nextTick();
  EXPECT_TRUE(machine->smcService().present);
  EXPECT_EQ(machine->openSMC(), kCodeSuccess);
  machine->nextTick();
  EXPECT_TRUE(machine->smcService().present);
}

TEST(SimulatedController, IsMissingIfATickSaysSoEvenWithKeys) {
  const auto machine =
      machineOf(R"({"smc": {"service": "missing"}}, {"smc": {"keys": {}}}, {"smc": {}})");
  machine->nextTick();
  EXPECT_FALSE(machine->smcService().present);
  machine->nextTick();
  EXPECT_FALSE(machine->smcService().present);
}

TEST(SimulatedController, KeepsTheStateThatATickNamed) {
  const auto machine = machineOf(
      R"({"smc": {"keys": {}}}, {"smc": {"service": "missing"}}, {}, {"smc": {"service": "present"}})");
  machine->nextTick();
  machine->nextTick();
  EXPECT_FALSE(machine->smcService().present);
  machine->nextTick();
  EXPECT_TRUE(machine->smcService().present);
}

TEST(SimulatedController, ThatRefusesIsMatchedButCannotBeOpened) {
  const auto machine = machineOf(R"({"smc": {"service": "refused"}})");
  EXPECT_TRUE(machine->smcService().present);
  EXPECT_EQ(machine->openSMC(), 0xE00002BC);
}

TEST(SimulatedController, ThatIsUnmatchedFailsTheMatchingCall) {
  const auto machine = machineOf(R"({"smc": {"service": "unmatched", "code": 3758097097}})");
  EXPECT_EQ(machine->smcService().code, 0xE00002C9);
  EXPECT_FALSE(machine->smcService().present);
}

TEST(SimulatedController, KeepsTheMembersThatATickLeavesOut) {
  const auto machine = machineOf(
      R"({"smc": {"service": "refused", "code": 7, "absentCode": 9, "wideCalls": "refuse"}}, {"smc": {}})");
  machine->nextTick();
  EXPECT_EQ(machine->openSMC(), 7U);
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).code, 9U);
  EXPECT_FALSE(machine->answersWideCalls());
}

TEST(SimulatedController, AnswersWideCallsUnlessToldToRefuse) {
  const auto machine =
      machineOf(R"({}, {"smc": {"wideCalls": "refuse"}}, {"smc": {"wideCalls": "answer"}})");
  EXPECT_TRUE(machine->answersWideCalls());
  machine->nextTick();
  EXPECT_FALSE(machine->answersWideCalls());
  machine->nextTick();
  EXPECT_TRUE(machine->answersWideCalls());
}

TEST(SimulatedController, AnswersAMissingKeyWithNotFoundInBothSteps) {
  const auto machine = machineOf(R"({"smc": {"keys": {}}})");
  const SMCKeyInfo info = machine->smcKeyInfo(kTC0P);
  EXPECT_EQ(info.code, kCodeSuccess);
  EXPECT_EQ(info.result, 0x84);
  EXPECT_EQ(info.dataSize, 0U);
  EXPECT_EQ(info.dataType, 0U);
  const SMCKeyBytes bytes = machine->smcKeyBytes(kTC0P);
  EXPECT_EQ(bytes.code, kCodeSuccess);
  EXPECT_EQ(bytes.result, 0x84);
}

TEST(SimulatedController, AnswersAMissingKeyWithTheAbsentCode) {
  const auto machine = machineOf(R"({"smc": {"keys": {}, "absentCode": 4294967295}})");
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).code, 0xFFFFFFFF);
  EXPECT_EQ(machine->smcKeyBytes(kTC0P).code, 0xFFFFFFFF);
}

TEST(SimulatedKeys, AreMergedIntoThoseOfTheTickBefore) {
  const auto machine =
      machineOf(tickOfKeys(R"("TC0P": {"type": "ui8 ", "value": 1}, "TC0D": )"
                           R"({"type": "ui8 ", "value": 2})") +
                ", {}, " + tickOfKeys(R"("TC0P": null, "TC1P": {"type": "ui8 ", "value": 3})"));
  constexpr uint32_t kTC0D = 0x54433044;
  constexpr uint32_t kTC1P = 0x54433150;
  machine->nextTick();
  EXPECT_TRUE(has(*machine, kTC0P));
  EXPECT_FALSE(has(*machine, kTC1P));
  machine->nextTick();
  EXPECT_FALSE(has(*machine, kTC0P));
  EXPECT_EQ(firstBytes(*machine, 1, kTC0D), Bytes{2});
  EXPECT_EQ(firstBytes(*machine, 1, kTC1P), Bytes{3});
}

TEST(SimulatedKeys, AreReplacedWithAllTheirMembers) {
  const auto machine =
      machineOf(tickOfKeys(R"("TC0P": {"type": "ui8 ", "value": 1, "size": 9, "readResult": 5})") +
                ", " + tickOfKeys(R"("TC0P": {"type": "ui16", "value": 2})"));
  machine->nextTick();
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).dataSize, 2U);
  EXPECT_EQ(machine->smcKeyBytes(kTC0P).result, 0);
  EXPECT_EQ(firstBytes(*machine, 2), (Bytes{0, 2}));
}

TEST(SimulatedKeys, MayBeRemovedEvenIfTheyAreMissing) {
  EXPECT_FALSE(has(*machineOf(tickOfKeys(R"("TC0P": null)")), kTC0P));
}

TEST(SimulatedKeys, MayBeGivenAsRawBytes) {
  const auto machine = machineOf(tickOfKeys(
      R"("hex:FF80fe01": {"type": "ui8 ", "value": 7}, "hex:": {"type": "ui8 ", "value": 8})"));
  EXPECT_EQ(firstBytes(*machine, 1, 0xFF80FE01), Bytes{7});
  EXPECT_EQ(firstBytes(*machine, 1, 0x6865783A), Bytes{8});
}

TEST(SimulatedKeys, HaveTheirTypeAndTheNumberOfTheirBytes) {
  const auto machine = machineOf(tickOfKeys(R"("TC0P": {"type": "ch8*", "bytes": "0a0B0c"})"));
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).dataType, 0x6368382A);
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).dataSize, 3U);
  EXPECT_EQ(firstBytes(*machine, 5), (Bytes{10, 11, 12, 0, 0}));
}

TEST(SimulatedKeys, MayHaveASizeOtherThanTheNumberOfTheirBytes) {
  const auto machine =
      machineOf(tickOfKeys(R"("TC0P": {"type": "ui8 ", "bytes": "0102", "size": 4294967295})"));
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).dataSize, 0xFFFFFFFF);
  EXPECT_EQ(firstBytes(*machine, 3), (Bytes{1, 2, 0}));
}

TEST(SimulatedKeys, MayHaveNoBytesOrAll32) {
  EXPECT_EQ(
      machineOf(tickOfKeys(R"("TC0P": {"type": "ui8 ", "bytes": ""})"))->smcKeyInfo(kTC0P).dataSize,
      0U);
  std::string hex;
  for (int i = 0; i < 32; ++i) hex += "ab";
  EXPECT_EQ(bytesOf(R"({"type": "ch8*", "bytes": ")" + hex + R"("})", 32), Bytes(32, 0xAB));
}

TEST(SimulatedKeys, HaveTheResultOfEachCallAndZerosOtherwise) {
  const auto machine = machineOf(
      tickOfKeys(R"("TC0P": {"type": "ui8 ", "value": 9, "infoResult": 255, "readResult": 129})"));
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).code, kCodeSuccess);
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).result, 255);
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).dataSize, 0U);
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).dataType, 0U);
  EXPECT_EQ(machine->smcKeyBytes(kTC0P).result, 129);
  EXPECT_EQ(firstBytes(*machine, 1), Bytes{0});
}

TEST(SimulatedKeys, HaveTheCodeOfEachCall) {
  const auto machine = machineOf(tickOfKeys(
      R"("TC0P": {"type": "ui8 ", "value": 9, "infoCode": 16384, "readCode": 4294967295})"));
  EXPECT_EQ(machine->smcKeyInfo(kTC0P).code, 16384U);
  EXPECT_EQ(machine->smcKeyBytes(kTC0P).code, 0xFFFFFFFF);
}

TEST(SimulatedKeys, AreReadEvenIfTheInfoStepFails) {
  const auto machine = machineOf(
      tickOfKeys(R"("TC0P": {"type": "ui8 ", "value": 9, "infoCode": 1, "infoResult": 2})"));
  EXPECT_EQ(machine->smcKeyBytes(kTC0P).code, kCodeSuccess);
  EXPECT_EQ(machine->smcKeyBytes(kTC0P).result, 0);
  EXPECT_EQ(firstBytes(*machine, 1), Bytes{9});
}

TEST(SimulatedValue, OfTypeSp78IsIn256thsRoundedHalfAwayFromZero) {
  EXPECT_EQ(bytesOfValue("sp78", "42.5", 3), (Bytes{0x2A, 0x80, 0}));
  EXPECT_EQ(bytesOfValue("sp78", "-1", 2), (Bytes{0xFF, 0x00}));
  EXPECT_EQ(bytesOfValue("sp78", "0.001953125", 2), (Bytes{0x00, 0x01}));   // half of 1/256
  EXPECT_EQ(bytesOfValue("sp78", "-0.001953125", 2), (Bytes{0xFF, 0xFF}));  // not to even, 0
  EXPECT_EQ(bytesOfValue("sp78", "0.005859375", 2), (Bytes{0x00, 0x02}));   // 1.5 of 256
  EXPECT_EQ(bytesOfValue("sp78", "127.99609375", 2), (Bytes{0x7F, 0xFF}));
  EXPECT_EQ(bytesOfValue("sp78", "-128", 2), (Bytes{0x80, 0x00}));
}

TEST(SimulatedValue, OfTypeFpe2IsInQuartersRoundedHalfAwayFromZero) {
  EXPECT_EQ(bytesOfValue("fpe2", "650", 3), (Bytes{0x0A, 0x28, 0}));
  EXPECT_EQ(bytesOfValue("fpe2", "0.125", 2), (Bytes{0x00, 0x01}));
  EXPECT_EQ(bytesOfValue("fpe2", "0.12", 2), (Bytes{0x00, 0x00}));
  EXPECT_EQ(bytesOfValue("fpe2", "-0.1", 2), (Bytes{0x00, 0x00}));
  EXPECT_EQ(bytesOfValue("fpe2", "16383.75", 2), (Bytes{0xFF, 0xFF}));
}

TEST(SimulatedValue, OfAnUnsignedTypeHasItsMostSignificantByteFirst) {
  EXPECT_EQ(bytesOfValue("ui8 ", "255", 2), (Bytes{0xFF, 0}));
  EXPECT_EQ(bytesOfValue("ui16", "258", 3), (Bytes{1, 2, 0}));
  EXPECT_EQ(bytesOfValue("ui32", "4294967294", 5), (Bytes{0xFF, 0xFF, 0xFF, 0xFE, 0}));
  EXPECT_EQ(bytesOfValue("ui8 ", "2.5", 1), Bytes{3});
}

TEST(SimulatedValue, OfTypeFltIsANativeFloat) {
  const auto expected = std::bit_cast<std::array<uint8_t, 4>>(-42.1F);
  EXPECT_EQ(bytesOfValue("flt ", "-42.1", 4), Bytes(expected.begin(), expected.end()));
  const auto largest = std::bit_cast<std::array<uint8_t, 4>>(std::numeric_limits<float>::max());
  EXPECT_EQ(bytesOfValue("flt ", "3.4028234663852886e38", 4),
            Bytes(largest.begin(), largest.end()));
}

TEST(SimulatedValue, HasTheSizeOfItsType) {
  const std::pair<std::string, uint32_t> sizes[] = {{"flt ", 4}, {"sp78", 2}, {"fpe2", 2},
                                                    {"ui8 ", 1}, {"ui16", 2}, {"ui32", 4}};
  for (const auto& [type, size] : sizes) {
    const auto machine =
        machineOf(tickOfKeys(R"("TC0P": {"value": 1, "type": ")" + type + R"("})"));
    EXPECT_EQ(machine->smcKeyInfo(kTC0P).dataSize, size) << type;
  }
}

TEST(SimulatedName, IsPaddedWithSpacesAfterFourZeroBytes) {
  const auto machine = machineOf(tickOfKeys(R"("F0ID": {"type": "{fds", "name": "Left side"})"));
  constexpr uint32_t kF0ID = 0x46304944;
  EXPECT_EQ(machine->smcKeyInfo(kF0ID).dataSize, 16U);
  const auto bytes = machine->smcKeyBytes(kF0ID).bytes;
  EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 17),
            std::string("\0\0\0\0Left side   \0", 17));
}

TEST(SimulatedName, MayBeEmptyOrTwelveCharacters) {
  EXPECT_EQ(bytesOf(R"({"type": "{fds", "name": ""})", 16),
            (Bytes{0, 0, 0, 0, 32, 32, 32, 32, 32, 32, 32, 32, 32, 32, 32, 32}));
  EXPECT_EQ(bytesOf(R"({"type": "{fds", "name": "abcdefghijkl"})", 16).back(), 'l');
}

TEST(SimulatedWave, FollowsTheClock) {
  const auto machine = machineOf(
      R"({"time": 0, "smc": {"keys": {"TC0P":
          {"type": "sp78", "wave": {"mean": 50, "amplitude": 8, "period": 4}}}}}, {}, {}, {})");
  std::vector<int> degrees;
  for (int tick = 0; tick < 6; ++tick, machine->nextTick()) {
    degrees.push_back(firstBytes(*machine, 1)[0]);
  }
  EXPECT_EQ(degrees, (std::vector<int>{50, 58, 50, 42, 50, 58}));
}

TEST(SimulatedWave, BeginsAtItsPhase) {
  const auto machine = machineOf(tickOfKeys(
      R"("TC0P": {"type": "flt ", "wave": {"mean": 40, "amplitude": 6, "period": 7, "phase": 0.4}})"));
  machine->nextTick();
  const auto expected =
      static_cast<float>(40 + 6 * std::sin(2 * std::numbers::pi * (1.0 / 7 + 0.4)));
  const auto bytes = std::bit_cast<std::array<uint8_t, 4>>(expected);
  EXPECT_EQ(firstBytes(*machine, 4), Bytes(bytes.begin(), bytes.end()));
}

TEST(SimulatedWave, MayReachTheEndsOfItsType) {
  const auto machine = machineOf(tickOfKeys(
      R"("TC0P": {"type": "ui8 ", "wave": {"mean": 127.5, "amplitude": -127.5, "period": 4}})"));
  machine->nextTick();
  EXPECT_EQ(firstBytes(*machine, 1), Bytes{0});
  machine->nextTick();
  machine->nextTick();
  EXPECT_EQ(firstBytes(*machine, 1), Bytes{255});
}

TEST(SimulatedWave, StaysAtItsMeanIfItsAngleIsTooLarge) {
  const auto machine = machineOf(
      R"({"time": 1e300, "smc": {"keys": {"TC0P":
          {"type": "ui8 ", "wave": {"mean": 5, "amplitude": 1, "period": 1e-300}}}}})");
  EXPECT_EQ(firstBytes(*machine, 1), Bytes{5});
}

}  // namespace
}  // namespace halvermonte
