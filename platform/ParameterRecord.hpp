// The layouts that cross to the kernel service, byte for byte.
#pragma once

#include <cstddef>
#include <cstdint>

#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/SMC.h"

namespace halvermonte {

static_assert(sizeof(SMCParameters) == 80);
static_assert(offsetof(SMCParameters, key) == 0);
static_assert(offsetof(SMCParameters, version) == 4);
static_assert(offsetof(SMCParameters, versionPadding) == 10);
static_assert(offsetof(SMCParameters, limits) == 12);
static_assert(offsetof(SMCParameters, dataSize) == 28);
static_assert(offsetof(SMCParameters, dataType) == 32);
static_assert(offsetof(SMCParameters, dataAttributes) == 36);
static_assert(offsetof(SMCParameters, attributesPadding) == 37);
static_assert(offsetof(SMCParameters, result) == 40);
static_assert(offsetof(SMCParameters, status) == 41);
static_assert(offsetof(SMCParameters, command) == 42);
static_assert(offsetof(SMCParameters, commandPadding) == 43);
static_assert(offsetof(SMCParameters, data32) == 44);
static_assert(offsetof(SMCParameters, bytes) == 48);

/// The third command of the structure call: the key at the index in data32, which the reply has in
/// `key`.
inline constexpr uint8_t kSMCReadKeyAtIndex = 8;
/// The key that counts the keys.
inline constexpr uint32_t kKeyCountKey = fourCharacterCode("#KEY");

/// The wider form, in which the arm64 build asks for a fan's name and for nothing else.
struct WideSMCParameters {
  uint32_t key;
  uint8_t version[6];
  uint8_t versionPadding[2];
  uint8_t limits[16];
  uint8_t limitsPadding[4];
  uint64_t dataSize;
  uint32_t dataType;
  uint8_t dataAttributes;
  uint8_t attributesPadding[3];
  uint8_t result;
  uint8_t status;
  uint8_t command;
  uint8_t commandPadding;
  uint32_t data32;
  uint8_t bytes[32];
};
static_assert(sizeof(WideSMCParameters) == 88);
static_assert(offsetof(WideSMCParameters, limits) == 12);
static_assert(offsetof(WideSMCParameters, dataSize) == 32);
static_assert(offsetof(WideSMCParameters, dataType) == 40);
static_assert(offsetof(WideSMCParameters, dataAttributes) == 44);
static_assert(offsetof(WideSMCParameters, result) == 48);
static_assert(offsetof(WideSMCParameters, status) == 49);
static_assert(offsetof(WideSMCParameters, command) == 50);
static_assert(offsetof(WideSMCParameters, data32) == 52);
static_assert(offsetof(WideSMCParameters, bytes) == 56);

static_assert(sizeof(SMCValue) == 52);

}  // namespace halvermonte
