#include "halvermonte/Version.h"

double HalvermonteSensorsEngineVersionNumber = 202112300.0;

const unsigned char HalvermonteSensorsEngineVersionString[] =
    "@(#)PROGRAM:HalvermonteSensorsEngine  PROJECT:HalvermonteSensorsEngine-202112300\n";
