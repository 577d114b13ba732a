/* A host in C: every C header, and the calls that answer alike on every computer. */
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
  failures += check(SMCReadKey("TC0P", &value, 0) != 0, "no key is read without a connection");
  failures += check(matching(kSensorsPage, kTemperatureUsage) != NULL, "matching answers");

  failures += check(HalvermonteSensorsEngineVersionNumber > 0, "the version has a number");
  failures += check(HalvermonteSensorsEngineVersionString[0] == '@', "the version has a text");
  return failures;
}
