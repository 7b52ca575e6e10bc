/// The class NSBitmapImageRepZNT: pixels in memory.

#include "plugin/classes/definitions.h"
#include "plugin/classes/forwarding.h"
#include "sdk/tables.h"

using namespace REALtables;

namespace {

// clang-format off
REALproperty properties[] = {
    property("bitsPerPixel", "Integer", getter([](NSBitmapImageRep* rep) -> REALword { return [rep bitsPerPixel]; })),
    property("bytesPerRow", "Integer", getter([](NSBitmapImageRep* rep) -> REALword { return [rep bytesPerRow]; })),
    property("bytesPerPlane", "Integer", getter([](NSBitmapImageRep* rep) -> REALword { return [rep bytesPerPlane]; })),
    property("samplesPerPixel", "Integer", getter([](NSBitmapImageRep* rep) -> REALword { return [rep samplesPerPixel]; })),
    property("isPlanar", "Boolean", getter([](NSBitmapImageRep* rep) -> bool { return [rep isPlanar]; })),
    property("numberOfPlanes", "Integer", getter([](NSBitmapImageRep* rep) -> REALword { return [rep numberOfPlanes]; })),
    property("bitmapFormat", "Integer", getter([](NSBitmapImageRep* rep) -> REALword { return [rep bitmapFormat]; })),
};

REALconstant constants[] = {
    constant("NSTIFFCompressionNone = 1"),
    constant("NSTIFFCompressionCCITTFAX3 = 3"),
    constant("NSTIFFCompressionCCITTFAX4 = 4"),
    constant("NSTIFFCompressionLZW = 5"),
    constant("NSTIFFCompressionJPEG = 6"),
    constant("NSTIFFCompressionNEXT = 32766"),
    constant("NSTIFFCompressionPackBits = 32773"),
    constant("NSTIFFCompressionOldJPEG = 32865"),

    constant("NSTIFFFileType = 0"),
    constant("NSBMPFileType = 1"),
    constant("NSGIFFileType = 2"),
    constant("NSJPEGFileType = 3"),
    constant("NSPNGFileType = 4"),
    constant("NSJPEG2000FileType = 5"),

    constant("NSImageRepLoadStatusUnknownType = -1"),
    constant("NSImageRepLoadStatusReadingHeader = -2"),
    constant("NSImageRepLoadStatusWillNeedAllData = -3"),
    constant("NSImageRepLoadStatusInvalidData = -4"),
    constant("NSImageRepLoadStatusUnexpectedEOF = -5"),
    constant("NSImageRepLoadStatusCompleted = -6"),

    // Values of bitmapFormat, which add up
    constant("NSAlphaFirstBitmapFormat = 1"),
    constant("NSAlphaNonpremultipliedBitmapFormat = 2"),
    constant("NSFloatingPointSamplesBitmapFormat = 4"),
};
// clang-format on

} // namespace

REALclassDefinition NSBitmapImageRepClass = class_definition({
    .name = "NSBitmapImageRepZNT",
    .superclass = "NSImageRepZNT",
    .properties = properties,
    .constants = constants,
});
