/// The class NSEPSImageRepZNT: a PostScript drawing.

#include "plugin/classes/definitions.h"
#include "sdk/tables.h"

REALclassDefinition NSEPSImageRepClass = REALtables::class_definition({
    .name = "NSEPSImageRepZNT",
    .superclass = "NSImageRepZNT",
});
