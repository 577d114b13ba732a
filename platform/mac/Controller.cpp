#include "platform/mac/Controller.hpp"

#include <IOKit/IOKitLib.h>

#include <algorithm>
#include <array>
#include <optional>

#include "halvermonte/SMC.h"
#include "platform/IOOwned.hpp"
#include "platform/MainPort.hpp"
#include "platform/ParameterRecord.hpp"

namespace halvermonte::macos {
namespace {

constexpr uint32_t kMostKeys = 65536;

uint32_t codeOf(kern_return_t code) { return static_cast<uint32_t>(code); }

/// The matching services, which `*services` numbers on success. Returns the kernel's code.
uint32_t match(io_iterator_t* services) {
  return codeOf(IOServiceGetMatchingServices(mainPort(MACH_PORT_NULL),
                                             IOServiceMatching("AppleSMC"), services));
}

template <class Record>
Record request(uint32_t key, uint8_t command) {
  Record input{};
  input.key = key;
  input.command = command;
  return input;
}

}  // namespace

/// A connection to the kernel service, closed with the object.
class Controller::Connection {
 public:
  explicit Connection(io_connect_t number) : number_(number) {}
  ~Connection() { IOServiceClose(number_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  template <class Record>
  uint32_t call(const Record& input, Record& output) const {
    size_t outputSize = sizeof output;
    return codeOf(IOConnectCallStructMethod(number_, kSMCStructureCall, &input, sizeof input,
                                            &output, &outputSize));
  }

  SMCKeyInfo info(uint32_t key) {
    SMCParameters output{};
    reported_ = {key, 0};
    const uint32_t code = call(request<SMCParameters>(key, kSMCReadKeyInfo), output);
    if (code != kCodeSuccess || output.result != 0) return {.code = code, .result = output.result};
    reported_->size = output.dataSize;
    return {.dataSize = output.dataSize, .dataType = output.dataType};
  }

  SMCKeyBytes bytes(uint32_t key) {
    if (!reported_ || reported_->key != key) info(key);
    auto input = request<SMCParameters>(key, kSMCReadBytes);
    SMCParameters output{};
    input.dataSize = reported_->size;
    SMCKeyBytes answer{.code = call(input, output), .result = output.result};
    if (answer.code != kCodeSuccess || answer.result != 0) return answer;
    std::copy(std::begin(output.bytes), std::end(output.bytes), answer.bytes.begin());
    return answer;
  }

  bool answersWideCalls() {
    if (!answersWide_) {
      WideSMCParameters output{};
      reported_.reset();
      const auto input = request<WideSMCParameters>(kKeyCountKey, kSMCReadKeyInfo);
      answersWide_ = call(input, output) != kCodeBadArgument;
    }
    return *answersWide_;
  }

 private:
  /// What the controller said last of a key. It gives a key's data only for the size that it said.
  struct Reported {
    uint32_t key;
    uint32_t size;
  };

  io_connect_t number_;
  std::optional<Reported> reported_;
  std::optional<bool> answersWide_;
};

/// Has the controller open for one question.
class Controller::Use {
 public:
  explicit Use(Controller& controller) : controller_(controller), code_(controller.open()) {}
  ~Use() {
    if (code_ == kCodeSuccess) controller_.close();
  }
  Use(const Use&) = delete;
  Use& operator=(const Use&) = delete;

  uint32_t code() const { return code_; }
  explicit operator bool() const { return code_ == kCodeSuccess; }

 private:
  Controller& controller_;
  uint32_t code_;
};

Controller::Controller() = default;
Controller::~Controller() = default;

SMCService Controller::service() {
  io_iterator_t found = 0;
  const uint32_t code = match(&found);
  if (code != kCodeSuccess) return {.code = code};
  const IOOwned services(found);
  const IOOwned service(IOIteratorNext(services.get()));
  return {.present = static_cast<bool>(service)};
}

uint32_t Controller::open() {
  if (connection_ == nullptr) {
    io_iterator_t found = 0;
    uint32_t code = match(&found);
    if (code != kCodeSuccess) return code;
    const IOOwned services(found);
    const IOOwned service(IOIteratorNext(services.get()));
    if (!service) return kCodeError;
    io_connect_t number = 0;
    code = codeOf(IOServiceOpen(service.get(), mach_task_self(), 0, &number));
    if (code != kCodeSuccess) return code;
    connection_ = std::make_unique<Connection>(number);
  }
  ++users_;
  return kCodeSuccess;
}

void Controller::close() {
  if (users_ == 0) return;
  --users_;
  if (users_ == 0) connection_.reset();
}

bool Controller::answersWideCalls() {
  const Use use(*this);
  return !use || connection_->answersWideCalls();
}

SMCKeyInfo Controller::info(uint32_t key) {
  const Use use(*this);
  return use ? connection_->info(key) : SMCKeyInfo{.code = use.code()};
}

SMCKeyBytes Controller::bytes(uint32_t key) {
  const Use use(*this);
  return use ? connection_->bytes(key) : SMCKeyBytes{.code = use.code()};
}

/// 0 if the controller does not say. Its byte order is not the same on every Mac; as there are far
/// fewer keys than numbers, the smaller reading is the count.
uint32_t Controller::keyCount() {
  if (connection_->info(kKeyCountKey).dataSize != sizeof(uint32_t)) return 0;
  const SMCKeyBytes data = connection_->bytes(kKeyCountKey);
  uint32_t highFirst = 0;
  uint32_t lowFirst = 0;
  for (size_t i = 0; i < sizeof(uint32_t); ++i) {
    highFirst = highFirst << 8 | data.bytes[i];
    lowFirst |= uint32_t{data.bytes[i]} << 8 * i;
  }
  return std::min({highFirst, lowFirst, kMostKeys});
}

std::vector<uint32_t> Controller::keys() {
  const Use use(*this);
  if (!use) return {};
  std::vector<uint32_t> keys;
  const uint32_t count = keyCount();
  auto input = request<SMCParameters>(0, kSMCReadKeyAtIndex);
  for (input.data32 = 0; input.data32 < count; ++input.data32) {
    SMCParameters output{};
    if (connection_->call(input, output) == kCodeSuccess && output.result == 0) {
      keys.push_back(output.key);
    }
  }
  return keys;
}

}  // namespace halvermonte::macos
