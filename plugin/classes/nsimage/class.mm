/// The class NSImageZNT: a picture in one or more representations.

#include "plugin/bridge/dictionaries.h"
#include "plugin/bridge/strings.h"
#include "plugin/classes/definitions.h"
#include "plugin/classes/forwarding.h"
#include "plugin/classes/nsimage/ImageAdditionsZNT.h"
#include "plugin/classes/nsimage/members.h"
#include "sdk/tables.h"

using namespace REALtables;
using namespace nsimage;

namespace {

/// A name that the running system lacks is empty.
template <NSString* const& name>
REALstringStruct* system_name() {
    return CFString2RBString((CFStringRef)name);
}

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
    property("EXIFData", "Dictionary",
             getter([](NSImage* image) { return NSDictionaryRB([image EXIFData]); })),
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
    method("Constructor(image as Picture, mask as picture = nil)", construct_with_picture),
    method("initWithContentsOfURL(file as folderitem) as boolean", initWithContentsOfFile),
    method("initWithContentsOfURL(url as string) as boolean", initWithContentsOfURL),
    method("initWithData(data as memoryblock) as boolean", initWithData),
    method("initWithDataIgnoringOrientation(data as memoryblock) as boolean", initWithDataIgnoringOrientation),
    method("initWithSize(width as double, height as double) as boolean", initWithSize),
    method("initWithPasteboard as boolean", initWithPasteboard),
    method("initWithIconRef(IconHandle as integer) as boolean", initWithIconRef),
    method("initWithPicture(img as picture, mask as picture = nil) as boolean", initWithPicture),

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

    // Host Pictures of it. The colour space is not used.
    method("CopyPictureRect(x as integer, y as integer, w as integer, h as integer, CGColorSpace as Variant = nil) as picture", CopyPictureRect),
    method("CopyPicture(CGColorSpace as Variant = nil) as picture", CopyPicture),
    method("CopyMask as picture", CopyMask),
    method("CopyPictureWithMask(CGColorSpace as Variant = nil) as picture", CopyPictureWithMask),

    // Drawing into a CGContextRef of somebody else's
    method("DrawIntoCGContextAtPoint(cgcontext as integer, x as double, y as double, sx as double, sy as double, SourceW as double, SourceH as double, operation as integer, fraction as double) as boolean", DrawIntoCGContextAtPoint),
    method("DrawIntoCGContextAtRect(cgcontext as integer, x as double, y as double, w as double, h as double, SourceX as double, SourceY as double, SourceW as double, SourceH as double, operation as integer, fraction as double) as boolean", DrawIntoCGContextAtRect),

    // Encoded data. JPEG and BMP are opaque, over white; GIF, PNG and TIFF keep transparency.
    method("GIFRepresentation as Memoryblock", GIFRepresentation),
    method("BMPRepresentation as Memoryblock", BMPRepresentation),
    method("PNGRepresentation as Memoryblock", PNGRepresentation),
    method("JPEGRepresentation as Memoryblock", JPEGRepresentation),
    method("JPEGRepresentationWithCompressionFactor(factor as double) as Memoryblock", JPEGRepresentationWithCompressionFactor),
    method("TIFFRepresentation as Memoryblock", TIFFRepresentation),
    method("TIFFRepresentationUsingCompression(comp as integer, factor as double) as Memoryblock", TIFFRepresentationUsingCompression),

    // The same, encoded in the background while the host goes on
    method("GIFRepresentationMT as Memoryblock", GIFRepresentationMT),
    method("BMPRepresentationMT as Memoryblock", BMPRepresentationMT),
    method("PNGRepresentationMT as Memoryblock", PNGRepresentationMT),
    method("JPEGRepresentationWithCompressionFactorMT(factor as double) as Memoryblock", JPEGRepresentationWithCompressionFactorMT),
    method("JPEGRepresentationMT as Memoryblock", JPEGRepresentationMT),
    method("TIFFRepresentationMT as Memoryblock", TIFFRepresentationMT),
    method("TIFFRepresentationUsingCompressionMT(comp as integer, factor as double) as Memoryblock", TIFFRepresentationUsingCompressionMT),
};

REALconstant constants[] = {
    constant("NSImageCacheDefault=0"),
    constant("NSImageCacheAlways=1"),
    constant("NSImageCacheBySize=2"),
    constant("NSImageCacheNever=3"),
    constant("NSImageLoadStatusCompleted=0"),
    constant("NSImageLoadStatusCancelled=1"),
    constant("NSImageLoadStatusInvalidData=2"),
    constant("NSImageLoadStatusUnexpectedEOF=3"),
    constant("NSImageLoadStatusReadError=4"),
};

REALmethod sharedMethods[] = {
    // Nil for anything that is no image
    shared_method("imageWithData(data as string) as NSImageZNT", imageWithDataOfString),
    shared_method("imageWithData(data as memoryblock) as NSImageZNT", imageWithDataOfBlock),
    shared_method("imageWithContentsOfFile(file as folderitem) as NSImageZNT", imageWithContentsOfFile),
    shared_method("imageWithContentsOfPath(path as string) as NSImageZNT", imageWithContentsOfPath),
    shared_method("imageWithContentsOfURL(URL as string) as NSImageZNT", imageWithContentsOfURL),

    // The same, decoded in the background while the host goes on
    shared_method("imageWithDataMT(data as string) as NSImageZNT", imageWithDataOfStringMT),
    shared_method("imageWithDataMT(data as memoryblock) as NSImageZNT", imageWithDataOfBlockMT),
    shared_method("imageWithContentsOfFileMT(file as folderitem) as NSImageZNT", imageWithContentsOfFileMT),
    shared_method("imageWithContentsOfPathMT(path as string) as NSImageZNT", imageWithContentsOfPathMT),
    shared_method("imageWithContentsOfURLMT(URL as string) as NSImageZNT", imageWithContentsOfURLMT),

    shared_method("imageWithCGImage(CGImage as variant, width as double = 0, height as double = 0) as NSImageZNT", imageWithCGImage),
    shared_method("imageNamed(name as string) as NSImageZNT", imageNamed),
    shared_method("canInitWithPasteboard as boolean", canInitWithPasteboard),

    // What can be read
    shared_method("imageUnfilteredFileTypes as string()", imageUnfilteredFileTypes),
    shared_method("imageUnfilteredPasteboardTypes as string()", imageUnfilteredPasteboardTypes),
    shared_method("imageFileTypes as string()", imageFileTypes),
    shared_method("imagePasteboardTypes as string()", imagePasteboardTypes),
    shared_method("imageTypes as string()", imageTypes),
    shared_method("imageUnfilteredTypes as string()", imageUnfilteredTypes),

    // The system's images, for imageNamed
    shared_method("NSImageNameQuickLookTemplate as string", system_name<NSImageNameQuickLookTemplate>),
    shared_method("NSImageNameBluetoothTemplate as string", system_name<NSImageNameBluetoothTemplate>),
    shared_method("NSImageNameIChatTheaterTemplate as string", system_name<NSImageNameIChatTheaterTemplate>),
    shared_method("NSImageNameSlideshowTemplate as string", system_name<NSImageNameSlideshowTemplate>),
    shared_method("NSImageNameActionTemplate as string", system_name<NSImageNameActionTemplate>),
    shared_method("NSImageNameSmartBadgeTemplate as string", system_name<NSImageNameSmartBadgeTemplate>),
    shared_method("NSImageNameIconViewTemplate as string", system_name<NSImageNameIconViewTemplate>),
    shared_method("NSImageNameListViewTemplate as string", system_name<NSImageNameListViewTemplate>),
    shared_method("NSImageNameColumnViewTemplate as string", system_name<NSImageNameColumnViewTemplate>),
    shared_method("NSImageNameFlowViewTemplate as string", system_name<NSImageNameFlowViewTemplate>),
    shared_method("NSImageNamePathTemplate as string", system_name<NSImageNamePathTemplate>),
    shared_method("NSImageNameInvalidDataFreestandingTemplate as string", system_name<NSImageNameInvalidDataFreestandingTemplate>),
    shared_method("NSImageNameLockLockedTemplate as string", system_name<NSImageNameLockLockedTemplate>),
    shared_method("NSImageNameLockUnlockedTemplate as string", system_name<NSImageNameLockUnlockedTemplate>),
    shared_method("NSImageNameGoRightTemplate as string", system_name<NSImageNameGoRightTemplate>),
    shared_method("NSImageNameGoLeftTemplate as string", system_name<NSImageNameGoLeftTemplate>),
    shared_method("NSImageNameRightFacingTriangleTemplate as string", system_name<NSImageNameRightFacingTriangleTemplate>),
    shared_method("NSImageNameLeftFacingTriangleTemplate as string", system_name<NSImageNameLeftFacingTriangleTemplate>),
    shared_method("NSImageNameAddTemplate as string", system_name<NSImageNameAddTemplate>),
    shared_method("NSImageNameRemoveTemplate as string", system_name<NSImageNameRemoveTemplate>),
    shared_method("NSImageNameRevealFreestandingTemplate as string", system_name<NSImageNameRevealFreestandingTemplate>),
    shared_method("NSImageNameFollowLinkFreestandingTemplate as string", system_name<NSImageNameFollowLinkFreestandingTemplate>),
    shared_method("NSImageNameEnterFullScreenTemplate as string", system_name<NSImageNameEnterFullScreenTemplate>),
    shared_method("NSImageNameExitFullScreenTemplate as string", system_name<NSImageNameExitFullScreenTemplate>),
    shared_method("NSImageNameStopProgressTemplate as string", system_name<NSImageNameStopProgressTemplate>),
    shared_method("NSImageNameStopProgressFreestandingTemplate as string", system_name<NSImageNameStopProgressFreestandingTemplate>),
    shared_method("NSImageNameRefreshTemplate as string", system_name<NSImageNameRefreshTemplate>),
    shared_method("NSImageNameRefreshFreestandingTemplate as string", system_name<NSImageNameRefreshFreestandingTemplate>),
    shared_method("NSImageNameBonjour as string", system_name<NSImageNameBonjour>),
    shared_method("NSImageNameComputer as string", system_name<NSImageNameComputer>),
    shared_method("NSImageNameFolderBurnable as string", system_name<NSImageNameFolderBurnable>),
    shared_method("NSImageNameFolderSmart as string", system_name<NSImageNameFolderSmart>),
    shared_method("NSImageNameFolder as string", system_name<NSImageNameFolder>),
    shared_method("NSImageNameNetwork as string", system_name<NSImageNameNetwork>),
    shared_method("NSImageNameDotMac as string", system_name<NSImageNameDotMac>),
    shared_method("NSImageNameMobileMe as string", system_name<NSImageNameMobileMe>),
    shared_method("NSImageNameMultipleDocuments as string", system_name<NSImageNameMultipleDocuments>),
    shared_method("NSImageNameUserAccounts as string", system_name<NSImageNameUserAccounts>),
    shared_method("NSImageNamePreferencesGeneral as string", system_name<NSImageNamePreferencesGeneral>),
    shared_method("NSImageNameAdvanced as string", system_name<NSImageNameAdvanced>),
    shared_method("NSImageNameInfo as string", system_name<NSImageNameInfo>),
    shared_method("NSImageNameFontPanel as string", system_name<NSImageNameFontPanel>),
    shared_method("NSImageNameColorPanel as string", system_name<NSImageNameColorPanel>),
    shared_method("NSImageNameUser as string", system_name<NSImageNameUser>),
    shared_method("NSImageNameUserGroup as string", system_name<NSImageNameUserGroup>),
    shared_method("NSImageNameEveryone as string", system_name<NSImageNameEveryone>),
    shared_method("NSImageNameUserGuest as string", system_name<NSImageNameUserGuest>),
    shared_method("NSImageNameMenuOnStateTemplate as string", system_name<NSImageNameMenuOnStateTemplate>),
    shared_method("NSImageNameMenuMixedStateTemplate as string", system_name<NSImageNameMenuMixedStateTemplate>),
    shared_method("NSImageNameApplicationIcon as string", system_name<NSImageNameApplicationIcon>),
    shared_method("NSImageNameTrashEmpty as string", system_name<NSImageNameTrashEmpty>),
    shared_method("NSImageNameTrashFull as string", system_name<NSImageNameTrashFull>),
    shared_method("NSImageNameHomeTemplate as string", system_name<NSImageNameHomeTemplate>),
    shared_method("NSImageNameBookmarksTemplate as string", system_name<NSImageNameBookmarksTemplate>),
    shared_method("NSImageNameCaution as string", system_name<NSImageNameCaution>),
    shared_method("NSImageNameStatusAvailable as string", system_name<NSImageNameStatusAvailable>),
    shared_method("NSImageNameStatusPartiallyAvailable as string", system_name<NSImageNameStatusPartiallyAvailable>),
    shared_method("NSImageNameStatusUnavailable as string", system_name<NSImageNameStatusUnavailable>),
    shared_method("NSImageNameStatusNone as string", system_name<NSImageNameStatusNone>),
    shared_method("NSImageNameShareTemplate as string", system_name<NSImageNameShareTemplate>),
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
    .constants = constants,
    .sharedMethods = sharedMethods,
});
