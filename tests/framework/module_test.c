/* A host in C: it includes the framework's headers as modules, where the compiler builds them. */
#include <HalvermonteSensorsEngine/SMC.h>
#include <HalvermonteSensorsEngine/Version.h>

int main(void) {
  char code[5] = "";
  _ultostr(code, _strtoul("TC0P", 4, 16));
  const int same = code[0] == 'T' && code[1] == 'C' && code[2] == '0' && code[3] == 'P';
  return same && HalvermonteSensorsEngineVersionNumber > 0 ? 0 : 1;
}
