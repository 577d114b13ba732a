#include "platform/linux/nvidia/ManagementLibrary.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

namespace halvermonte::linuxos {
namespace {

// The names, types and numbers are those of NVIDIA's reference of the library.
constexpr int kSuccess = 0;
constexpr int kNoPermission = 4;
constexpr unsigned kNoAttach = 2;  // Initialising wakes no device.
constexpr int kDeviceSensor = 0;

struct FanSpeed {
  unsigned version;
  unsigned fan;
  unsigned turnsPerMinute;
};
constexpr unsigned kFanSpeedVersion = sizeof(FanSpeed) | (1U << 24U);

struct Reason {
  int code;
  std::string_view words;
};

constexpr auto kReasons = std::to_array<Reason>({
    {3, "the device has no such sensor"},
    {6, "NVIDIA's library does not know the device"},
    {9, "NVIDIA's driver is not loaded"},
    {15, "the device does not respond"},
    {18, "NVIDIA's library and driver are of different versions"},
});

std::string_view reasonOf(int code) {
  const auto row = std::find_if(kReasons.begin(), kReasons.end(),
                                [&](const Reason& each) { return each.code == code; });
  return row != kReasons.end() ? row->words : "NVIDIA's library reports an error";
}

Answer failure(int code, bool isLost) {
  if (code == kNoPermission) return {.error = EACCES, .isLost = isLost};
  return {.refusal = reasonOf(code), .isLost = isLost};
}

Answer answerOf(int code, unsigned number) {
  if (code != kSuccess) return failure(code, false);
  return {.text = std::to_string(number)};
}

/// Neither sensor can be read.
ManagementLibrary::Readings none(const Answer& answer) {
  return {{Quantity::temperature, answer}, {Quantity::fan, answer}};
}

template <class Function>
bool find(void* library, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(dlsym(library, name));
  return function != nullptr;
}

}  // namespace

struct ManagementLibrary::Functions {
  int (*initialise)(unsigned flags) = nullptr;
  int (*shutDown)() = nullptr;
  int (*findDevice)(const char* address, void** device) = nullptr;
  int (*readTemperature)(void* device, int sensor, unsigned* degrees) = nullptr;
  int (*readFan)(void* device, void* fanSpeed) = nullptr;  ///< null in older libraries

  /// Returns false if a function is missing that every reading needs. A library without the first
  /// one is too old: the function that it has instead may wake devices.
  bool findIn(void* library) {
    find(library, "nvmlDeviceGetFanSpeedRPM", readFan);
    return find(library, "nvmlInitWithFlags", initialise) &&
           find(library, "nvmlShutdown", shutDown) &&
           find(library, "nvmlDeviceGetHandleByPciBusId_v2", findDevice) &&
           find(library, "nvmlDeviceGetTemperature", readTemperature);
  }

  Readings readDevice(void* device) const {
    Readings readings;
    unsigned degrees = 0;
    const int code = readTemperature(device, kDeviceSensor, &degrees);
    readings[Quantity::temperature] = answerOf(code, 1000 * degrees);
    if (readFan == nullptr) return readings;
    FanSpeed speed{.version = kFanSpeedVersion, .fan = 0, .turnsPerMinute = 0};
    const int fanCode = readFan(device, &speed);
    readings[Quantity::fan] = answerOf(fanCode, speed.turnsPerMinute);
    return readings;
  }
};

/// The library is initialised while there is a session. It counts them itself.
class ManagementLibrary::Session {
 public:
  explicit Session(const Functions& functions)
      : functions_(functions), code_(functions.initialise(kNoAttach)) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session() {
    if (code_ == kSuccess) functions_.shutDown();
  }

  int code() const noexcept { return code_; }

 private:
  const Functions& functions_;
  const int code_;
};

ManagementLibrary::ManagementLibrary(std::string path) : path_(std::move(path)) {}

ManagementLibrary::~ManagementLibrary() {
  kept_.reset();
  if (handle_ != nullptr) dlclose(handle_);
}

bool ManagementLibrary::hasFanSpeeds() {
  const Functions* const functions = load();
  return functions != nullptr && functions->readFan != nullptr;
}

const ManagementLibrary::Functions* ManagementLibrary::load() {
  const std::lock_guard lock(mutex_);
  if (functions_ || path_.empty()) return functions_.get();
  void* const handle = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) return nullptr;
  auto functions = std::make_unique<Functions>();
  if (!functions->findIn(handle)) {
    dlclose(handle);
    return nullptr;
  }
  handle_ = handle;
  functions_ = std::move(functions);
  return functions_.get();
}

ManagementLibrary::Readings ManagementLibrary::read(const std::string& address) {
  const Functions* const functions = load();
  if (functions == nullptr) {
    return none({.refusal = path_.empty() ? "NVIDIA's library knows only this computer"
                                          : "NVIDIA's library is not there, or too old"});
  }
  const Session session(*functions);
  if (session.code() != kSuccess) return none(failure(session.code(), true));
  updateKeptSession();
  void* device = nullptr;
  const int code = functions->findDevice(address.c_str(), &device);
  return code == kSuccess ? functions->readDevice(device) : none(failure(code, true));
}

void ManagementLibrary::updateKeptSession() {
  const std::lock_guard lock(mutex_);
  if (!isKept_) {
    kept_.reset();
  } else if (!kept_) {
    kept_ = std::make_unique<Session>(*functions_);
  }
}

}  // namespace halvermonte::linuxos
