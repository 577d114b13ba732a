/* A host in C: the headers of the plain functions, and what they return on every computer. */
#include <halvermonte/DiskCounters.h>
#include <halvermonte/HIDSensors.h>
#include <halvermonte/SMC.h>
#include <halvermonte/Version.h>
#include <stdio.h>
#include <string.h>

static int check(int holds, const char* what) {
  if (!holds) fprintf(stderr, "does not hold: %s\n", what);
  return holds ? 0 : 1;
}

int main(void) {
  int failures = 0;
  char text[5];
  failures += check(_strtoul("TC0P", 4, 16) == 0x54433050u, "_strtoul packs four characters");
  failures +=
      check(_ultostr(text, 0x54433050u) == 4 && strcmp(text, "TC0P") == 0, "_ultostr unpacks them");

  const float temperature = 41.5f;
  unsigned char bytes[4];
  memcpy(bytes, &temperature, sizeof bytes);
  failures += check(_flttof(bytes) == temperature, "_flttof reads a float");

  SMCValue value;
  uint32_t conn = 0;
  failures += check(SMCReadKey("TC0P", &value, 0) != 0, "no key is read without a connection");
  failures += check(SMCOpen(&conn) == 0, "a connection opens");
  failures += check(SMCGetFanNumber("FNum", conn) <= 10, "fans are counted");
  failures += check(SMCClose(conn) == 0, "the connection closes");

  io_stats reads = {1, 2, 3, 4, 5}, writes = {1, 2, 3, 4, 5};
  getDISKcounters(0, &reads, &writes);
  failures += check(reads.bytes == 0 && writes.bytes == 0, "no iterator has no drives");

  failures += check(matching(kSensorsPage, kTemperatureUsage) != NULL, "a dictionary is made");
  failures += check(HalvermonteSensorsEngineVersionNumber > 0, "the version has a number");
  failures += check(HalvermonteSensorsEngineVersionString[0] == '@', "the version has a text");
  return failures;
}
