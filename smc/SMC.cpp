// The connection to the controller, and the two-step key read.
#include "halvermonte/SMC.h"

#include <IOKit/IOKitLib.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

#include "platform/Foundation.hpp"
#include "platform/IOOwned.hpp"
#include "platform/MainPort.hpp"
#include "platform/ParameterRecord.hpp"

using halvermonte::IOOwned;

namespace {

void printFailure(const char* call, kern_return_t code) {
  std::string line = "Error: " + std::string(call) + "() = ";
  for (int shift = 28; shift >= 0; shift -= 4) {
    line += "0123456789abcdef"[static_cast<uint32_t>(code) >> shift & 15];
  }
  halvermonte::foundation::print(line);
}

/// The first matching service, or 0 after a line that says why there is none.
io_service_t firstSMCService() {
  io_iterator_t iterator = 0;
  const kern_return_t matched = IOServiceGetMatchingServices(
      halvermonte::mainPort(MACH_PORT_NULL), IOServiceMatching("AppleSMC"), &iterator);
  if (matched != KERN_SUCCESS) {
    printFailure("IOServiceGetMatchingServices", matched);
    return 0;
  }
  const IOOwned services(iterator);
  const io_service_t service = IOIteratorNext(services.get());
  if (service == 0) halvermonte::foundation::print("Error: no SMC found");
  return service;
}

}  // namespace

int SMCOpen(uint32_t* conn) {
  const IOOwned service(firstSMCService());
  if (!service) return 1;
  const kern_return_t opened = IOServiceOpen(service.get(), mach_task_self(), 0, conn);
  if (opened != KERN_SUCCESS) {
    printFailure("IOServiceOpen", opened);
    return 1;
  }
  return 0;
}

int SMCClose(uint32_t conn) { return IOServiceClose(conn); }

int SMCCall(int index, const SMCParameters* input, SMCParameters* output, uint32_t conn) {
  size_t outputSize = sizeof *output;
  return IOConnectCallStructMethod(conn, static_cast<uint32_t>(index), input, sizeof *input, output,
                                   &outputSize);
}

int SMCReadKey(const char* key, SMCValue* value, uint32_t conn) {
  SMCParameters input{};
  SMCParameters output{};
  std::memset(value, 0, sizeof *value);
  input.key = _strtoul(key, 4, 16);
  input.command = kSMCReadKeyInfo;
  if (const int code = SMCCall(kSMCStructureCall, &input, &output, conn); code != 0) return code;
  value->dataSize = output.dataSize;
  _ultostr(value->dataType, output.dataType);
  input.dataSize = value->dataSize;
  input.command = kSMCReadBytes;
  if (const int code = SMCCall(kSMCStructureCall, &input, &output, conn); code != 0) return code;
  std::memcpy(value->bytes, output.bytes, sizeof value->bytes);
  return 0;
}

uint32_t _strtoul(const char* characters, int size, int base) {
  uint32_t total = 0;
  for (int i = 0; i < size; ++i) {
    // Signed on every processor: a character of 0x80 or above carries ones into the higher bytes.
    const auto extended = static_cast<uint32_t>(int32_t{static_cast<signed char>(characters[i])});
    const uint32_t places =
        8u * (static_cast<uint32_t>(size) - 1u - static_cast<uint32_t>(i)) % 32u;
    const uint32_t shifted = extended << places;
    total += base == 16 ? shifted : shifted & 0xFFu;
  }
  return total;
}

int _ultostr(char* text, uint32_t value) {
  for (int i = 0; i < 4; ++i) text[i] = static_cast<char>(value >> (24 - 8 * i) & 0xFFu);
  text[4] = '\0';
  return 4;
}

float _flttof(const unsigned char* bytes) {
  uint32_t bits = 0;
  std::memcpy(&bits, bytes, sizeof bits);
  return std::bit_cast<float>(bits);
}
