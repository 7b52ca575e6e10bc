#pragma once

/// The classes that the plug-in registers.

#include "sdk/records.h"

extern REALclassDefinition NSImageClass;
extern REALclassDefinition NSImageRepClass;
extern REALclassDefinition NSPDFImageRepClass;
extern REALclassDefinition NSEPSImageRepClass;
extern REALclassDefinition NSPICTImageRepClass;
extern REALclassDefinition NSBitmapImageRepClass;
