// The controller's user client: the structure call that reads its keys, in both layouts of the
// parameter record, answered by the current machine.
#include <IOKit/IOKitLib.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "platform/portable/HandleTable.hpp"

using halvermonte::kCodeBadArgument;
using halvermonte::kCodeInvalidDestination;
using halvermonte::Machine;
using halvermonte::SMCKeyBytes;
using halvermonte::SMCKeyInfo;
using halvermonte::portable::Handle;
using halvermonte::portable::HandleKind;
using halvermonte::portable::handles;

namespace {

/// The offsets of the fields in the two layouts of the SMC's parameter block.
struct RecordLayout {
  size_t size;
  size_t dataSize, dataSizeWidth;
  size_t dataType;
  size_t result;
  size_t command;
  size_t bytes;
};
constexpr RecordLayout kNarrow = {80, 28, 4, 32, 40, 42, 48};
constexpr RecordLayout kWide = {88, 32, 8, 40, 48, 50, 56};
constexpr uint8_t kReadBytes = 5;
constexpr uint8_t kReadKeyInfo = 9;
constexpr uint32_t kStructureCall = 2;

/// A record's bits in words, but for the fields that a caller sets: key, data size and command.
template <size_t kSize>
using RecordBits = std::array<uint64_t, kSize / sizeof(uint64_t)>;

template <const RecordLayout& kLayout>
constexpr RecordBits<kLayout.size> reservedBits() {
  std::array<uint8_t, kLayout.size> bytes{};
  for (size_t i = 0; i < kLayout.size; ++i) {
    const bool inDataSize = i >= kLayout.dataSize && i < kLayout.dataSize + kLayout.dataSizeWidth;
    bytes[i] = i < sizeof(uint32_t) || inDataSize || i == kLayout.command ? 0 : 0xFF;
  }
  return std::bit_cast<RecordBits<kLayout.size>>(bytes);
}

/// The controller's side of a structure call in one layout of the record.
template <const RecordLayout& kLayout>
class Call {
 public:
  Call(Handle& connection, const void* input, void* output)
      : connection_(connection),
        input_(static_cast<const uint8_t*>(input)),
        output_(static_cast<uint8_t*>(output)) {
    std::memcpy(&key_, input_, sizeof key_);
  }

  uint32_t answer() {
    if (!reservedAreZero()) return kCodeBadArgument;
    switch (input_[kLayout.command]) {
      case kReadKeyInfo:
        return answerKeyInfo();
      case kReadBytes:
        return answerKeyBytes();
      default:
        return kCodeBadArgument;
    }
  }

 private:
  bool reservedAreZero() const {
    static constexpr auto kReserved = reservedBits<kLayout>();
    RecordBits<kLayout.size> bits;
    std::memcpy(bits.data(), input_, kLayout.size);
    uint64_t set = 0;
    for (size_t i = 0; i < bits.size(); ++i) set |= bits[i] & kReserved[i];
    return set == 0;
  }

  uint32_t answerKeyInfo() {
    connection_.reportedKey = key_;
    connection_.reportedSize = 0;
    const SMCKeyInfo info = Machine::current().smcKeyInfo(key_);
    if (info.code != halvermonte::kCodeSuccess) return info.code;
    replyWithResult(info.result);
    if (info.result != 0) return info.code;
    connection_.reportedSize = info.dataSize;
    const uint64_t dataSize = info.dataSize;  // its low bytes come first
    std::memcpy(output_ + kLayout.dataSize, &dataSize, kLayout.dataSizeWidth);
    std::memcpy(output_ + kLayout.dataType, &info.dataType, sizeof info.dataType);
    return info.code;
  }

  uint32_t answerKeyBytes() {
    uint64_t dataSize = 0;
    std::memcpy(&dataSize, input_ + kLayout.dataSize, kLayout.dataSizeWidth);
    if (key_ != connection_.reportedKey || dataSize != connection_.reportedSize) {
      replyWithResult(halvermonte::kSMCKeySizeMismatch);
      return halvermonte::kCodeSuccess;
    }
    const SMCKeyBytes answer = Machine::current().smcKeyBytes(key_);
    if (answer.code != halvermonte::kCodeSuccess) return answer.code;
    replyWithResult(answer.result);
    if (answer.result != 0) return answer.code;
    std::memcpy(output_ + kLayout.bytes, answer.bytes.data(), answer.bytes.size());
    return answer.code;
  }

  void replyWithResult(uint8_t result) {
    std::memset(output_, 0, kLayout.size);
    output_[kLayout.result] = result;
  }

  Handle& connection_;
  const uint8_t* input_;
  uint8_t* output_;
  uint32_t key_ = 0;
};

uint32_t structureCall(mach_port_t connection, uint32_t selector, const void* input,
                       size_t inputSize, void* output, size_t outputSize) {
  Handle* const open = handles().find(connection, HandleKind::smcConnection);
  if (open == nullptr) return kCodeInvalidDestination;
  if (selector != kStructureCall || inputSize != outputSize) return kCodeBadArgument;
  if (inputSize == kNarrow.size) return Call<kNarrow>(*open, input, output).answer();
  const bool wide = inputSize == kWide.size && Machine::current().answersWideCalls();
  return wide ? Call<kWide>(*open, input, output).answer() : kCodeBadArgument;
}

}  // namespace

kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector,
                                        const void* input, size_t inputSize, void* output,
                                        size_t* outputSize) {
  const uint32_t code = structureCall(connection, selector, input, inputSize, output, *outputSize);
  return static_cast<kern_return_t>(code);
}
