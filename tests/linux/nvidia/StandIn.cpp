#include "tests/linux/nvidia/StandIn.hpp"

#include <string_view>

namespace {

using halvermonte::test::StandIn;
using halvermonte::test::StandInDevice;

enum Code { kUninitialised = 1, kInvalidArgument = 2, kNotFound = 6, kVersionMismatch = 25 };

StandIn state;

bool isInitialised() { return state.initialised > state.shutDowns; }

struct FanSpeed {
  unsigned version, fan, speed;
};

}  // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED StandIn* halvermonteStandIn() { return &state; }

#ifndef STAND_IN_IS_TOO_OLD
EXPORTED int nvmlInitWithFlags(unsigned flags) {
  state.flags = flags;
  if (state.initialiseCode == 0) ++state.initialised;
  return state.initialiseCode;
}
#endif

EXPORTED int nvmlInit_v2() {
  ++state.initialised;
  return 0;
}

EXPORTED int nvmlShutdown() {
  if (!isInitialised()) return kUninitialised;
  ++state.shutDowns;
  return 0;
}

EXPORTED int nvmlDeviceGetHandleByPciBusId_v2(const char* address, void** handle) {
  if (!isInitialised()) return kUninitialised;
  for (StandInDevice& device : state.devices) {
    if (std::string_view(device.address) != address) continue;
    ++device.attached;
    *handle = &device;
    return 0;
  }
  return kNotFound;
}

EXPORTED int nvmlDeviceGetTemperature(void* handle, int sensor, unsigned* degrees) {
  if (!isInitialised()) return kUninitialised;
  if (sensor != 0) return kInvalidArgument;
  const auto& device = *static_cast<const StandInDevice*>(handle);
  if (state.onTemperature != nullptr) state.onTemperature(state.context);
  *degrees = device.degrees;
  return device.temperatureCode;
}

#ifndef STAND_IN_HAS_NO_FAN_SPEEDS
EXPORTED int nvmlDeviceGetFanSpeedRPM(void* handle, void* fanSpeed) {
  if (!isInitialised()) return kUninitialised;
  auto* const speed = static_cast<FanSpeed*>(fanSpeed);
  if (speed->version != 0x100000c) return kVersionMismatch;
  if (speed->fan != 0) return kInvalidArgument;
  const auto& device = *static_cast<const StandInDevice*>(handle);
  speed->speed = device.turnsPerMinute;
  return device.fanCode;
}
#endif
