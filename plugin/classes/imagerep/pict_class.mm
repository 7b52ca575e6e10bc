/// The class NSPICTImageRepZNT: a QuickDraw picture.

#include "plugin/classes/definitions.h"
#include "sdk/tables.h"

REALclassDefinition NSPICTImageRepClass = REALtables::class_definition({
    .name = "NSPICTImageRepZNT",
    .superclass = "NSImageRepZNT",
});
