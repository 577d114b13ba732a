// Replies of the controller: the input is a table of them, and each key finds its own by its code.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "fuzz/Passes.hpp"
#include "halvermonte/SMC.h"
#include "platform/FanCount.hpp"

using namespace halvermonte;

namespace {

/// One key's replies as they lie in the input, without gaps.
struct Replies {
  uint32_t size;
  char type[4];
  uint8_t infoCode;
  uint8_t infoResult;
  uint8_t readCode;
  uint8_t readResult;
  std::array<uint8_t, 32> bytes;
};
static_assert(sizeof(Replies) == 44);

class RepliesMachine : public Machine {
 public:
  RepliesMachine(const uint8_t* data, size_t size) : replies_(size / sizeof(Replies)) {
    if (!replies_.empty()) std::memcpy(replies_.data(), data, replies_.size() * sizeof(Replies));
  }

  SMCService smcService() override { return {.present = true}; }
  SMCKeyInfo smcKeyInfo(uint32_t key) override {
    if (replies_.empty()) return Machine::smcKeyInfo(key);
    const Replies& replies = of(key);
    uint32_t type = 0;
    for (const char character : replies.type) type = type << 8 | static_cast<uint8_t>(character);
    return {replies.infoCode, replies.infoResult, replies.size, type};
  }
  SMCKeyBytes smcKeyBytes(uint32_t key) override {
    if (replies_.empty()) return Machine::smcKeyBytes(key);
    const Replies& replies = of(key);
    return {replies.readCode, replies.readResult, replies.bytes};
  }

 private:
  /// Consecutive keys, such as those of consecutive fans, find different replies.
  const Replies& of(uint32_t key) const { return replies_[(key ^ key >> 8) % replies_.size()]; }

  std::vector<Replies> replies_;
};

/// Whether the controller reports more fans than can be named. A pass then ends the process on
/// purpose, and there is nothing to find.
bool hasTooManyFans() {
  uint32_t connection = 0;
  if (SMCOpen(&connection) != 0) return false;
  const auto fans = static_cast<int32_t>(SMCGetFanNumber("FNum", connection));
  SMCClose(connection);
  return fans > kMostFans;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  RepliesMachine machine(data, size);
  const ScopedMachine scope(machine);
  if (!hasTooManyFans()) makePasses([] {});
  return 0;
}
