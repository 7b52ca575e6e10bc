/// The class NSPDFImageRepZNT: the pages of a PDF document.

#include "plugin/classes/definitions.h"
#include "sdk/tables.h"

REALclassDefinition NSPDFImageRepClass = REALtables::class_definition({
    .name = "NSPDFImageRepZNT",
    .superclass = "NSImageRepZNT",
});
