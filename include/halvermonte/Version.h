/* The engine's version, as data. */
#ifndef HALVERMONTE_ENGINE_VERSION_H
#define HALVERMONTE_ENGINE_VERSION_H

#include "halvermonte/Export.h"

HALVERMONTE_C_BEGIN

/* 202112300.0 */
HALVERMONTE_EXPORT extern double HalvermonteSensorsEngineVersionNumber;
/* "@(#)PROGRAM:HalvermonteSensorsEngine  PROJECT:HalvermonteSensorsEngine-202112300" and a line
 * feed. */
HALVERMONTE_EXPORT extern const unsigned char HalvermonteSensorsEngineVersionString[];

HALVERMONTE_C_END

#endif
