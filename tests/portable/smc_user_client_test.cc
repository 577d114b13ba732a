// The controller's structure call, byte by byte as it crosses to the service.
#include <IOKit/IOKitLib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

#include "platform/portable/LiveCounters.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

constexpr auto kNotOpen = static_cast<kern_return_t>(0x10000003);
constexpr auto kBadArgument = static_cast<kern_return_t>(0xE00002C2);

using Record = std::array<uint8_t, 96>;

/// The offsets of the fields in a parameter block of the size.
struct Layout {
  size_t size, dataSize, dataType, result, command, bytes;
};
constexpr Layout kNarrow = {80, 28, 32, 40, 42, 48};
constexpr Layout kWide = {88, 32, 40, 48, 50, 56};
constexpr uint8_t kUntouched = 0xEE;

class SMCUserClientTest : public ::testing::TestWithParam<Layout> {
 protected:
  SMCUserClientTest() {
    KeyAnswer answer = rawKey("{fds", {});
    std::iota(answer.data.bytes.begin(), answer.data.bytes.end(), uint8_t{1});
    machine_.keys["F0ID"] = std::move(answer).withSize(0x11223344);
    io_iterator_t iterator = 0;
    IOServiceGetMatchingServices(0, IOServiceMatching("AppleSMC"), &iterator);
    const io_service_t service = IOIteratorNext(iterator);
    IOServiceOpen(service, mach_task_self(), 0, &connection_);
    IOObjectRelease(service);
    IOObjectRelease(iterator);
    reply_.fill(kUntouched);
  }
  ~SMCUserClientTest() override { IOServiceClose(connection_); }

  const Layout& layout() const { return GetParam(); }

  /// Asks as the engine does: the read command sends back the size that the info command gave.
  kern_return_t call(uint8_t command, const char* key = "F0ID", uint32_t selector = 2) {
    return call(request(command, key, command == 5 ? size_ : 0), layout().size, layout().size,
                selector);
  }

  Record request(uint8_t command, const char* key, uint32_t dataSize) const {
    Record request{};
    const uint32_t code = fourCharacterCode(key);
    std::memcpy(request.data(), &code, sizeof code);
    std::memcpy(request.data() + layout().dataSize, &dataSize, sizeof dataSize);
    request[layout().command] = command;
    return request;
  }

  kern_return_t call(const Record& request, size_t inputSize, size_t outputSize,
                     uint32_t selector) {
    const kern_return_t code = IOConnectCallStructMethod(connection_, selector, request.data(),
                                                         inputSize, reply_.data(), &outputSize);
    if (request[layout().command] == 9) size_ = code == 0 ? replied32(layout().dataSize) : 0;
    return code;
  }

  /// The info command, whose reply a test does not look at.
  void announce(const char* key = "F0ID") {
    call(9, key);
    reply_.fill(kUntouched);
  }

  uint32_t replied32(size_t place) const {
    uint32_t value = 0;
    std::memcpy(&value, reply_.data() + place, sizeof value);
    return value;
  }

  /// Every byte of the reply that none of the runs (place and length) covers is 0; what follows
  /// the record is untouched.
  void expectZeroBut(std::vector<std::pair<size_t, size_t>> runs) const {
    for (size_t i = 0; i < reply_.size(); ++i) {
      const bool covered = std::ranges::any_of(
          runs, [=](const auto& run) { return i >= run.first && i < run.first + run.second; });
      if (covered) continue;
      EXPECT_EQ(reply_[i], i < layout().size ? 0 : kUntouched) << "byte " << i;
    }
  }

  void expectUntouched() const {
    for (const uint8_t byte : reply_) EXPECT_EQ(byte, kUntouched);
  }

  TestMachine machine_;
  ScopedMachine scope_{machine_};
  io_connect_t connection_ = 0;
  Record reply_{};
  uint32_t size_ = 0;
};

TEST_P(SMCUserClientTest, TheInfoCommandRepliesWithSizeAndType) {
  EXPECT_EQ(call(9), KERN_SUCCESS);
  EXPECT_EQ(replied32(layout().dataSize), 0x11223344u);
  EXPECT_EQ(replied32(layout().dataType), fourCharacterCode("{fds"));
  expectZeroBut({{layout().dataSize, 4}, {layout().dataType, 4}});
}

TEST_P(SMCUserClientTest, TheReadCommandRepliesWithTheBytesAlone) {
  announce();
  EXPECT_EQ(call(5), KERN_SUCCESS);
  for (size_t i = 0; i < 32; ++i) EXPECT_EQ(reply_[layout().bytes + i], i + 1);
  expectZeroBut({{layout().bytes, 32}});
}

TEST_P(SMCUserClientTest, AResultByteComesInAnOtherwiseEmptyReply) {
  machine_.keys["F0ID"] =
      std::move(machine_.keys["F0ID"]).withInfoResult(0x84).withReadResult(0x85);
  EXPECT_EQ(call(9), KERN_SUCCESS);
  EXPECT_EQ(reply_[layout().result], 0x84);
  expectZeroBut({{layout().result, 1}});
  EXPECT_EQ(call(5), KERN_SUCCESS);
  EXPECT_EQ(reply_[layout().result], 0x85);
  expectZeroBut({{layout().result, 1}});
}

TEST_P(SMCUserClientTest, AKeyThatTheControllerLacksIsToldByTheResult) {
  for (const uint8_t command : {uint8_t{9}, uint8_t{5}}) {
    EXPECT_EQ(call(command, "none"), KERN_SUCCESS);
    EXPECT_EQ(reply_[layout().result], 0x84);
    expectZeroBut({{layout().result, 1}});
  }
}

TEST_P(SMCUserClientTest, ACodeWinsOverAResultAndLeavesTheReply) {
  machine_.keys["F0ID"] = std::move(machine_.keys["F0ID"])
                              .withInfoCode(0xE00002BC)
                              .withInfoResult(1)
                              .withReadCode(0xE0004000)
                              .withReadResult(1);
  EXPECT_EQ(call(9), static_cast<kern_return_t>(0xE00002BC));
  EXPECT_EQ(call(5), static_cast<kern_return_t>(0xE0004000));
  expectUntouched();
}

TEST_P(SMCUserClientTest, TheReadCommandSendsBackWhatTheInfoCommandReported) {
  machine_.keys["F1ID"] = ui8(1);
  const auto read = [this](const char* key, uint32_t dataSize) {
    machine_.asked.clear();
    EXPECT_EQ(call(request(5, key, dataSize), layout().size, layout().size, 2), KERN_SUCCESS);
    return reply_[layout().result];
  };
  announce("F1ID");
  EXPECT_EQ(read("F1ID", 1), 0);
  for (const auto& [key, dataSize] : {std::pair{"F1ID", 0u}, {"F1ID", 2u}, {"F0ID", 1u}}) {
    EXPECT_EQ(read(key, dataSize), 0x87) << key << ' ' << dataSize;
    expectZeroBut({{layout().result, 1}});
    EXPECT_TRUE(machine_.asked.empty()) << "the controller keeps its bytes";
  }
}

TEST_P(SMCUserClientTest, AReservedFieldThatIsNotZeroIsRefused) {
  announce();
  for (const uint8_t command : {uint8_t{9}, uint8_t{5}}) {
    for (size_t place = 4; place < layout().size; ++place) {
      const size_t sizeWidth = layout().size == kWide.size ? 8 : 4;
      if (place >= layout().dataSize && place < layout().dataSize + sizeWidth) continue;
      if (place == layout().command) continue;
      Record dirty = request(command, "F0ID", 0x11223344);
      dirty[place] = 1;
      EXPECT_EQ(call(dirty, layout().size, layout().size, 2), kBadArgument) << place;
    }
  }
  expectUntouched();
}

TEST_P(SMCUserClientTest, OtherCommandsAndSelectorsAreRefused) {
  for (int command = 0; command < 256; ++command) {
    if (command == 5 || command == 9) continue;
    EXPECT_EQ(call(static_cast<uint8_t>(command)), kBadArgument) << command;
  }
  for (const uint32_t selector : {0u, 1u, 3u, 0xFFFFFFFFu}) {
    EXPECT_EQ(call(9, "F0ID", selector), kBadArgument) << selector;
  }
  expectUntouched();
}

TEST_P(SMCUserClientTest, OtherSizesAreRefused) {
  Record request{};
  request[layout().command] = 9;
  for (const size_t input :
       {size_t{0}, size_t{79}, size_t{80}, size_t{81}, size_t{88}, size_t{96}}) {
    for (const size_t output : {size_t{0}, size_t{79}, size_t{80}, size_t{88}, size_t{96}}) {
      if (input == output && (input == 80 || input == 88)) continue;
      EXPECT_EQ(call(request, input, output, 2), kBadArgument) << input << ' ' << output;
    }
  }
  expectUntouched();
}

TEST_P(SMCUserClientTest, AClosedConnectionNeverAnswers) {
  const size_t handles = portable::liveHandles();
  EXPECT_EQ(IOServiceClose(connection_), KERN_SUCCESS);
  EXPECT_EQ(portable::liveHandles(), handles - 1);
  EXPECT_EQ(call(9), kNotOpen);
  EXPECT_EQ(call(9, "F0ID", 3), kNotOpen);
  expectUntouched();
}

TEST_P(SMCUserClientTest, OnlyTheWideLayoutMayBeRefused) {
  machine_.wideCalls = false;
  EXPECT_EQ(call(9), layout().size == kWide.size ? kBadArgument : KERN_SUCCESS);
}

INSTANTIATE_TEST_SUITE_P(InBothLayouts, SMCUserClientTest, ::testing::Values(kNarrow, kWide),
                         [](const auto& layout) {
                           return std::to_string(layout.param.size) + "Bytes";
                         });

}  // namespace
}  // namespace halvermonte::test
