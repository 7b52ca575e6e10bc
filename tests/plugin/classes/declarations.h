#pragma once

/// What the plug-in declares, written down a second time: a program depends on every letter.

#include <string>
#include <vector>

struct DeclaredProperty {
    std::string name;
    std::string type;
    bool isWritable;
};

struct DeclaredClass {
    std::string name;
    std::string superclass;
    std::vector<DeclaredProperty> properties;
    std::vector<std::string> methods;
    std::vector<std::string> constants;
    std::vector<std::string> sharedMethods;
};

constexpr bool writable = true;
constexpr bool readOnly = false;

inline const std::vector<DeclaredClass> declaredClasses = {
    {"NSImageZNT",
     "",
     {
         {"Handle", "Integer", writable},
         {"cacheMode", "Integer", writable},
         {"isTemplate", "Boolean", writable},
         {"size", "NSSizeZNT", writable},
         {"height", "Double", readOnly},
         {"width", "Double", readOnly},
         {"isFlipped", "Boolean", writable},
         {"isValid", "Boolean", readOnly},
         {"Name", "String", readOnly},
         {"MinimumPixelWidth", "Integer", readOnly},
         {"MinimumPixelHeight", "Integer", readOnly},
         {"MaximumPixelWidth", "Integer", readOnly},
         {"MaximumPixelHeight", "Integer", readOnly},
         {"RepresentationsCount", "Integer", readOnly},
         {"cacheDepthMatchesImageDepth", "Boolean", writable},
         {"usesEPSOnResolutionMismatch", "Boolean", writable},
         {"prefersColorMatch", "Boolean", writable},
         {"accessibilityDescription", "String", writable},
         {"backgroundColor", "NSColorZNT", writable},
         {"isCachedSeparately", "Boolean", writable},
         {"isDataRetained", "Boolean", writable},
         {"matchesOnMultipleResolution", "Boolean", writable},
         {"scalesWhenResized", "Boolean", writable},
     },
     {
         "Constructor",
         "Constructor(data as memoryblock)",
         "Constructor(width as double, height as double)",
         "Constructor(file as folderitem)",
         "initWithContentsOfURL(file as folderitem) as boolean",
         "initWithContentsOfURL(url as string) as boolean",
         "initWithData(data as memoryblock) as boolean",
         "initWithDataIgnoringOrientation(data as memoryblock) as boolean",
         "initWithSize(width as double, height as double) as boolean",
         "initWithPasteboard as boolean",
         "initWithIconRef(IconHandle as integer) as boolean",
         "setName(value as String) as Boolean",
         "setSize(width as double, height as double)",
         "cancelIncrementalLoad",
         "recache",
         "addRepresentation(img as NSImageRepZNT)",
         "removeRepresentation(img as NSImageRepZNT)",
         "RepresentationHeight(index as integer) as integer",
         "RepresentationWidth(index as integer) as integer",
         "representations as NSImageRepZNT()",
         "imageByScalingToSize(width as double, height as double) as NSImageZNT",
         "imageByScalingToSize(width as double, height as double, fraction as double) as "
         "NSImageZNT",
         "imageByScalingToSize(width as double, height as double, fraction as double, flip as "
         "boolean, proportionally as boolean) as NSImageZNT",
         "imageByFadingToFraction(fraction as double) as NSImageZNT",
         "PNGRepresentation as Memoryblock",
         "JPEGRepresentation as Memoryblock",
         "JPEGRepresentationWithCompressionFactor(factor as double) as Memoryblock",
         "TIFFRepresentation as Memoryblock",
         "TIFFRepresentationUsingCompression(comp as integer, factor as double) as Memoryblock",
     },
     {},
     {
         "imageWithData(data as string) as NSImageZNT",
         "imageWithData(data as memoryblock) as NSImageZNT",
         "imageWithContentsOfFile(file as folderitem) as NSImageZNT",
         "imageWithContentsOfPath(path as string) as NSImageZNT",
         "imageWithContentsOfURL(URL as string) as NSImageZNT",
         "imageUnfilteredFileTypes as string()",
         "imageUnfilteredPasteboardTypes as string()",
         "imageFileTypes as string()",
         "imagePasteboardTypes as string()",
         "imageTypes as string()",
         "imageUnfilteredTypes as string()",
     }},
    {"NSImageRepZNT",
     "",
     {
         {"Handle", "Integer", writable},
         {"bitsPerSample", "Integer", writable},
         {"pixelsWide", "Integer", writable},
         {"pixelsHigh", "Integer", writable},
         {"colorSpaceName", "String", writable},
         {"hasAlpha", "Boolean", writable},
         {"isOpaque", "Boolean", writable},
         {"height", "Double", readOnly},
         {"width", "Double", readOnly},
         {"size", "NSSizeZNT", writable},
     },
     {"setSize(width as double, height as double)", "Constructor"},
     {"NSImageRepMatchesDevice = 0"},
     {"canInitWithData(data as memoryblock) as Boolean"}},
    {"NSPDFImageRepZNT", "NSImageRepZNT", {}, {}, {}, {}},
    {"NSEPSImageRepZNT", "NSImageRepZNT", {}, {}, {}, {}},
    {"NSPICTImageRepZNT", "NSImageRepZNT", {}, {}, {}, {}},
    {"NSBitmapImageRepZNT",
     "NSImageRepZNT",
     {
         {"bitsPerPixel", "Integer", readOnly},
         {"bytesPerRow", "Integer", readOnly},
         {"bytesPerPlane", "Integer", readOnly},
         {"samplesPerPixel", "Integer", readOnly},
         {"isPlanar", "Boolean", readOnly},
         {"numberOfPlanes", "Integer", readOnly},
         {"bitmapFormat", "Integer", readOnly},
     },
     {},
     {
         "NSTIFFCompressionNone = 1",
         "NSTIFFCompressionCCITTFAX3 = 3",
         "NSTIFFCompressionCCITTFAX4 = 4",
         "NSTIFFCompressionLZW = 5",
         "NSTIFFCompressionJPEG = 6",
         "NSTIFFCompressionNEXT = 32766",
         "NSTIFFCompressionPackBits = 32773",
         "NSTIFFCompressionOldJPEG = 32865",
         "NSTIFFFileType = 0",
         "NSBMPFileType = 1",
         "NSGIFFileType = 2",
         "NSJPEGFileType = 3",
         "NSPNGFileType = 4",
         "NSJPEG2000FileType = 5",
         "NSImageRepLoadStatusUnknownType = -1",
         "NSImageRepLoadStatusReadingHeader = -2",
         "NSImageRepLoadStatusWillNeedAllData = -3",
         "NSImageRepLoadStatusInvalidData = -4",
         "NSImageRepLoadStatusUnexpectedEOF = -5",
         "NSImageRepLoadStatusCompleted = -6",
         "NSAlphaFirstBitmapFormat = 1",
         "NSAlphaNonpremultipliedBitmapFormat = 2",
         "NSFloatingPointSamplesBitmapFormat = 4",
     },
     {}},
};
