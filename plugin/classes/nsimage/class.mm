/// The class NSImageZNT: a picture in one or more representations.

#include "plugin/bridge/strings.h"
#include "plugin/classes/definitions.h"
#include "plugin/classes/forwarding.h"
#include "plugin/classes/nsimage/ImageAdditionsZNT.h"
#include "plugin/classes/nsimage/members.h"
#include "sdk/tables.h"

using namespace REALtables;
using namespace nsimage;

namespace {

// clang-format off
REALproperty properties[] = {
    field("Handle", "Integer"),
    property("cacheMode", "Integer",
             getter([](NSImage* image) -> REALword { return [image cacheMode]; }),
             setter([](NSImage* image, REALword mode) { [image setCacheMode:static_cast<NSImageCacheMode>(mode)]; })),
    property("isTemplate", "Boolean",
             getter([](NSImage* image) -> bool { return [image isTemplate]; }),
             setter([](NSImage* image, bool flag) { [image setTemplate:flag]; })),

    // Points
    property("size", "NSSizeZNT", size, setSize),
    property("height", "Double", height),
    property("width", "Double", width),

    property("isFlipped", "Boolean",
             getter([](NSImage* image) -> bool { return [image isFlipped]; }),
             setter([](NSImage* image, bool flag) { [image setFlipped:flag]; })),
    property("isValid", "Boolean",
             getter([](NSImage* image) -> bool { return [image isValid]; })),
    property("Name", "String",
             getter([](NSImage* image) { return CFString2RBString((CFStringRef)[image name]); })),

    // Pixels, over all representations
    property("MinimumPixelWidth", "Integer",
             getter([](NSImage* image) -> REALword { return [image MinimumWidth]; })),
    property("MinimumPixelHeight", "Integer",
             getter([](NSImage* image) -> REALword { return [image MinimumHeight]; })),
    property("MaximumPixelWidth", "Integer",
             getter([](NSImage* image) -> REALword { return [image MaximumWidth]; })),
    property("MaximumPixelHeight", "Integer",
             getter([](NSImage* image) -> REALword { return [image MaximumHeight]; })),
    property("RepresentationsCount", "Integer",
             getter([](NSImage* image) -> REALword { return [image representationsCount]; })),

    // Hints for drawing and caching
    property("cacheDepthMatchesImageDepth", "Boolean",
             getter([](NSImage* image) -> bool { return [image cacheDepthMatchesImageDepth]; }),
             setter([](NSImage* image, bool flag) { [image setCacheDepthMatchesImageDepth:flag]; })),
    property("usesEPSOnResolutionMismatch", "Boolean",
             getter([](NSImage* image) -> bool { return [image usesEPSOnResolutionMismatch]; }),
             setter([](NSImage* image, bool flag) { [image setUsesEPSOnResolutionMismatch:flag]; })),
    property("prefersColorMatch", "Boolean",
             getter([](NSImage* image) -> bool { return [image prefersColorMatch]; }),
             setter([](NSImage* image, bool flag) { [image setPrefersColorMatch:flag]; })),
    property("accessibilityDescription", "String",
             getter([](NSImage* image) { return CFString2RBString((CFStringRef)[image accessibilityDescription]); }),
             setter([](NSImage* image, REALstringStruct* text) { [image setAccessibilityDescription:NewNSString(text)]; })),
    property("backgroundColor", "NSColorZNT", backgroundColor, setBackgroundColor),
    property("isCachedSeparately", "Boolean",
             getter([](NSImage* image) -> bool { return [image isCachedSeparately]; }),
             setter([](NSImage* image, bool flag) { [image setCachedSeparately:flag]; })),
    property("isDataRetained", "Boolean",
             getter([](NSImage* image) -> bool { return [image isDataRetained]; }),
             setter([](NSImage* image, bool flag) { [image setDataRetained:flag]; })),
    property("matchesOnMultipleResolution", "Boolean",
             getter([](NSImage* image) -> bool { return [image matchesOnMultipleResolution]; }),
             setter([](NSImage* image, bool flag) { [image setMatchesOnMultipleResolution:flag]; })),
    property("scalesWhenResized", "Boolean",
             getter([](NSImage* image) -> bool { return [image scalesWhenResized]; }),
             setter([](NSImage* image, bool flag) { [image setScalesWhenResized:flag]; })),
};

REALmethod methods[] = {
    // Making the image. The constructors with arguments replace an image that is there.
    method("Constructor", construct_empty),
    method("Constructor(data as memoryblock)", construct_with_data),
    method("Constructor(width as double, height as double)", construct_with_size),
    method("Constructor(file as folderitem)", construct_with_file),
    method("initWithContentsOfURL(file as folderitem) as boolean", initWithContentsOfFile),
    method("initWithContentsOfURL(url as string) as boolean", initWithContentsOfURL),
    method("initWithData(data as memoryblock) as boolean", initWithData),
    method("initWithDataIgnoringOrientation(data as memoryblock) as boolean", initWithDataIgnoringOrientation),
    method("initWithSize(width as double, height as double) as boolean", initWithSize),
    method("initWithPasteboard as boolean", initWithPasteboard),
    method("initWithIconRef(IconHandle as integer) as boolean", initWithIconRef),

    // Changing it
    method("setName(value as String) as Boolean", setName),
    method("setSize(width as double, height as double)", setSizeOfNumbers),
    method("cancelIncrementalLoad", forwarder([](NSImage* image) { [image cancelIncrementalLoad]; })),
    method("recache", forwarder([](NSImage* image) { [image recache]; })),

    // Representations
    method("addRepresentation(img as NSImageRepZNT)", addRepresentation),
    method("removeRepresentation(img as NSImageRepZNT)", removeRepresentation),
    method("RepresentationHeight(index as integer) as integer", RepresentationHeight),
    method("RepresentationWidth(index as integer) as integer", RepresentationWidth),
    method("representations as NSImageRepZNT()", representations),

    // Other images made of it
    method("imageByScalingToSize(width as double, height as double) as NSImageZNT", imageByScalingToSize),
    method("imageByScalingToSize(width as double, height as double, fraction as double) as NSImageZNT", imageByScalingToSizeWithFraction),
    method("imageByScalingToSize(width as double, height as double, fraction as double, flip as boolean, proportionally as boolean) as NSImageZNT", imageByScalingToSizeInFull),
    method("imageByFadingToFraction(fraction as double) as NSImageZNT", imageByFadingToFraction),

    // Encoded data
    method("PNGRepresentation as Memoryblock", PNGRepresentation),
    method("JPEGRepresentation as Memoryblock", JPEGRepresentation),
    method("JPEGRepresentationWithCompressionFactor(factor as double) as Memoryblock", JPEGRepresentationWithCompressionFactor),
    method("TIFFRepresentation as Memoryblock", TIFFRepresentation),
    method("TIFFRepresentationUsingCompression(comp as integer, factor as double) as Memoryblock", TIFFRepresentationUsingCompression),
};

REALmethod sharedMethods[] = {
    // Nil for anything that is no image
    shared_method("imageWithData(data as string) as NSImageZNT", imageWithDataOfString),
    shared_method("imageWithData(data as memoryblock) as NSImageZNT", imageWithDataOfBlock),
    shared_method("imageWithContentsOfFile(file as folderitem) as NSImageZNT", imageWithContentsOfFile),
    shared_method("imageWithContentsOfPath(path as string) as NSImageZNT", imageWithContentsOfPath),
    shared_method("imageWithContentsOfURL(URL as string) as NSImageZNT", imageWithContentsOfURL),

    // What can be read
    shared_method("imageUnfilteredFileTypes as string()", imageUnfilteredFileTypes),
    shared_method("imageUnfilteredPasteboardTypes as string()", imageUnfilteredPasteboardTypes),
    shared_method("imageFileTypes as string()", imageFileTypes),
    shared_method("imagePasteboardTypes as string()", imagePasteboardTypes),
    shared_method("imageTypes as string()", imageTypes),
    shared_method("imageUnfilteredTypes as string()", imageUnfilteredTypes),
};
// clang-format on

} // namespace

REALclassDefinition NSImageClass = class_definition({
    .name = "NSImageZNT",
    .instanceDataSize = sizeof(NSImage*),
    .constructor = NSImageConstructor,
    .destructor = NSImageDestructor,
    .properties = properties,
    .methods = methods,
    .sharedMethods = sharedMethods,
});
