// Temperatures and fans: the controller's bytes as numbers and names.
#include <IOKit/IOKitLib.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/SMC.h"
#include "platform/FanCount.hpp"
#include "platform/ParameterRecord.hpp"
#include "platform/Processor.hpp"

using halvermonte::fourCharacterCode;
using halvermonte::kProcessor;
using halvermonte::Processor;

namespace {

bool hasType(const SMCValue& value, const char (&type)[5]) {
  return std::memcmp(value.dataType, type, sizeof type) == 0;
}

/// Reads a key. Returns true if it was read and has data.
bool readPresent(const char* key, SMCValue& value, uint32_t conn) {
  return SMCReadKey(key, &value, conn) == 0 && value.dataSize != 0;
}

/// "F0Ac" to "F9Ac", "F0ID" to "F9ID". A key has no room for a second digit.
std::array<char, 5> fanKey(int fan, std::string_view suffix) {
  if (fan < 0 || fan >= halvermonte::kMostFans) std::abort();
  return {'F', static_cast<char>('0' + fan), suffix[0], suffix[1], '\0'};
}

/// Both bytes are signed: a low byte of 0x80 or more takes off 256. The two lowest bits are
/// dropped, so the resolution is 1/64 of a degree.
double decodedSP78(const uint8_t* bytes) {
  const int32_t fixed = static_cast<int8_t>(bytes[0]) * 256 + static_cast<int8_t>(bytes[1]);
  return static_cast<double>(fixed >> 2) * 0.015625;
}

float decodedFPE2(const uint8_t* bytes) {
  const int fixed = bytes[0] << 8 | bytes[1];
  return static_cast<float>(fixed * 0.25);
}

}  // namespace

double SMCGetTemperature(const char* key, uint32_t conn) {
  SMCValue value;
  if (!readPresent(key, value, conn)) return -1.0;
  if (hasType(value, "sp78")) return decodedSP78(value.bytes);
  if (hasType(value, "flt ")) return static_cast<double>(_flttof(value.bytes));
  return -1.0;
}

float SMCGetFanSpeed(int fan, uint32_t conn) {
  SMCValue value;
  if (!readPresent(fanKey(fan, "Ac").data(), value, conn)) return 0.0F;
  if (hasType(value, "fpe2")) return decodedFPE2(value.bytes);
  if (hasType(value, "flt ")) return _flttof(value.bytes);
  return 0.0F;
}

uint32_t SMCGetFanNumber(const char* key, uint32_t conn) {
  SMCValue value;
  SMCReadKey(key, &value, conn);  // a value that was not read is all zero
  return halvermonte::fanCount(value.dataSize, value.bytes);
}

namespace {

/// The fan-name query judges only these bits of a code.
constexpr bool failed(kern_return_t code) { return (code & 0x3FFF) != 0; }

template <class Parameters>
kern_return_t call(const Parameters& input, Parameters& output, uint32_t conn) {
  size_t outputSize = sizeof output;
  return IOConnectCallStructMethod(conn, kSMCStructureCall, &input, sizeof input, &output,
                                   &outputSize);
}

/// Reads the fan's descriptor. Returns false if there is none. If the second step fails by its
/// result alone, the bytes stay zero, which is an empty name.
template <class Parameters>
bool readFanDescriptor(int fan, uint8_t (&bytes)[32], uint32_t conn) {
  Parameters input{};
  Parameters output{};
  input.key = _strtoul(fanKey(fan, "ID").data(), 4, 16);
  input.command = kSMCReadKeyInfo;
  if (failed(call(input, output, conn)) || output.result != 0) return false;
  const auto dataSize = output.dataSize;
  const uint32_t dataType = output.dataType;
  input.dataSize = dataSize;
  input.command = kSMCReadBytes;
  if (failed(call(input, output, conn))) return false;
  if (output.result == 0) std::memcpy(bytes, output.bytes, sizeof bytes);
  return dataSize == 16 && dataType == fourCharacterCode("{fds");
}

using FanNameParameters = std::conditional_t<kProcessor == Processor::arm64,
                                             halvermonte::WideSMCParameters, SMCParameters>;

}  // namespace

int SMCGetFanName(int fan, char* name, uint32_t conn) {
  uint8_t descriptor[32] = {};
  if (!readFanDescriptor<FanNameParameters>(fan, descriptor, conn)) return 0;
  for (int i = 0; i < 12; ++i) {
    const auto character = static_cast<char>(descriptor[4 + i]);
    if (character == ' ') break;
    name[i] = character;
  }
  return 1;
}
