/* The client of the System Management Controller, reached through the kernel service "AppleSMC".
 *
 * Plain functions for C and C++.
 * - A key is a text of four characters; no more than its first four are read.
 * - A connection is a 32-bit IOKit handle. One connection is used from one thread at a time.
 * - Codes are the kernel's: 0 is success.
 * - Nothing is kept between calls, and every platform object is released before a call returns.
 * - On Linux the keys are those of the kernel's sensors, and a connection always opens. */
#ifndef HALVERMONTE_SMC_SMC_H
#define HALVERMONTE_SMC_SMC_H

#include <stdint.h>

#include "halvermonte/Export.h"

HALVERMONTE_C_BEGIN

/* What SMCReadKey fills. `bytes` are as the controller sent them: integers and fixed-point numbers
 * big-endian, "flt " in the computer's own order. */
typedef struct SMCValue {
  char key[5]; /* left empty */
  uint32_t dataSize;
  char dataType[5]; /* four characters and a NUL */
  uint8_t bytes[32];
} SMCValue;

/* The parameter record of the service's structure call; both directions have the same layout. */
typedef struct SMCParameters {
  uint32_t key; /* four-character code, first character in the most significant byte */
  uint8_t version[6];
  uint8_t versionPadding[2];
  uint8_t limits[16];
  uint32_t dataSize;
  uint32_t dataType; /* four-character code */
  uint8_t dataAttributes;
  uint8_t attributesPadding[3];
  uint8_t result; /* 0 is success */
  uint8_t status;
  uint8_t command; /* one of SMCCommand */
  uint8_t commandPadding;
  uint32_t data32;
  uint8_t bytes[32];
} SMCParameters;

/* The method index of the structure call. */
enum { kSMCStructureCall = 2 };

enum SMCCommand { kSMCReadBytes = 5, kSMCReadKeyInfo = 9 };

/* Opens a connection into *conn. Returns 0; or 1 after one line on standard output that
 * says what failed, with *conn as it was. */
HALVERMONTE_EXPORT int SMCOpen(uint32_t* conn);

/* Closes the connection and returns the kernel's code. */
HALVERMONTE_EXPORT int SMCClose(uint32_t conn);

/* One structure call with the method index. Returns the kernel's code; if it is not 0, the
 * output is left as it was. */
HALVERMONTE_EXPORT int SMCCall(int index, const SMCParameters* input, SMCParameters* output,
                               uint32_t conn);

/* Reads a key's size, type and bytes. Returns 0, or the kernel's code of the step that failed. If
 * the first step failed, the value is all zero; if the second did, its size and type are filled.
 * The controller's own result byte is not examined: the key was read if the code is 0 and the size
 * is not. */
HALVERMONTE_EXPORT int SMCReadKey(const char* key, SMCValue* value, uint32_t conn);

/* Packs `size` characters into a number, the first one highest. Characters are signed, so one of
 * 0x80 or above carries ones into the higher bytes. With any base but 16, only the last character's
 * low 8 bits remain: the number of fans is read that way. */
HALVERMONTE_EXPORT uint32_t _strtoul(const char* characters, int size, int base);

/* Writes the code's four characters and a NUL; `text` holds 5 bytes. Returns 4. */
HALVERMONTE_EXPORT int _ultostr(char* text, uint32_t value);

/* Returns the 4 bytes as a float in the computer's own order. */
HALVERMONTE_EXPORT float _flttof(const unsigned char* bytes);

/* Returns degrees Celsius, or -1.0 if there is no reading. */
HALVERMONTE_EXPORT double SMCGetTemperature(const char* key, uint32_t conn);

/* Returns the revolutions per minute of the fan (0 to 9), or 0.0 if there is no reading. Any other
 * index ends the process. */
HALVERMONTE_EXPORT float SMCGetFanSpeed(int fan, uint32_t conn);

/* Returns the number of fans, which is under the key "FNum", or 0 if there is no reading. */
HALVERMONTE_EXPORT uint32_t SMCGetFanNumber(const char* key, uint32_t conn);

/* Reads the name of the fan (0 to 9). Returns 1 if it was read; 0 if not. A descriptor whose bytes
 * alone were refused counts as read, with an empty name. Writes at most 12 bytes and no NUL: the
 * caller passes 13 zero bytes. Any other index ends the process. */
HALVERMONTE_EXPORT int SMCGetFanName(int fan, char* name, uint32_t conn);

HALVERMONTE_C_END

#endif
