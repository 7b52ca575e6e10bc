/// The properties of bitmaps: those that the encoded data states, and those that callers keep here.

#import <AppKit/NSBitmapImageRep.h>

#include "cocoa/AppKit/bitmap_exif.h"
#include "cocoa/AppKit/bitmap_state.h"

using namespace cocoa::appkit;

NSString* const NSImageCompressionMethod = @"NSImageCompressionMethod";
NSString* const NSImageCompressionFactor = @"NSImageCompressionFactor";
NSString* const NSImageDitherTransparency = @"NSImageDitherTransparency";
NSString* const NSImageRGBColorTable = @"NSImageRGBColorTable";
NSString* const NSImageInterlaced = @"NSImageInterlaced";
NSString* const NSImageColorSyncProfileData = @"NSImageColorSyncProfileData";
NSString* const NSImageFrameCount = @"NSImageFrameCount";
NSString* const NSImageCurrentFrame = @"NSImageCurrentFrame";
NSString* const NSImageCurrentFrameDuration = @"NSImageCurrentFrameDuration";
NSString* const NSImageLoopCount = @"NSImageLoopCount";
NSString* const NSImageGamma = @"NSImageGamma";
NSString* const NSImageProgressive = @"NSImageProgressive";
NSString* const NSImageEXIFData = @"NSImageEXIFData";
NSString* const NSImageFallbackBackgroundColor = @"NSImageFallbackBackgroundColor";

namespace {

void keep(NSBitmapState& bitmap, NSString* key, id value) {
    if (!bitmap.properties)
        bitmap.properties = Owned<NSMutableDictionary*>::adopt([[NSMutableDictionary alloc] init]);
    if (value)
        [bitmap.properties setObject:value forKey:key];
    else
        [bitmap.properties removeObjectForKey:key];
}

/// The dictionary is made when it is first asked for.
id exifValue(NSBitmapState& bitmap) {
    if (bitmap.exif.empty()) return nil;
    id kept = [bitmap.properties objectForKey:NSImageEXIFData];
    if (kept) return kept;
    kept = exifDictionary(bitmap.exif);
    keep(bitmap, NSImageEXIFData, kept);
    return kept;
}

/// What a caller states takes the place of what the data stated.
bool setEXIF(NSBitmapState& bitmap, id value) {
    bitmap.exif.clear();
    keep(bitmap, NSImageEXIFData, value);
    return true;
}

id frameCount(NSBitmapState& bitmap) {
    return bitmap.frames ? [NSNumber numberWithUnsignedInteger:bitmap.frames.count()] : nil;
}

id currentFrame(NSBitmapState& bitmap) {
    return bitmap.frames ? [NSNumber numberWithUnsignedInteger:bitmap.frames.current()] : nil;
}

bool setCurrentFrame(NSBitmapState& bitmap, id value) {
    if (!bitmap.frames) return false;
    if (![value isKindOfClass:[NSNumber class]] || [value longLongValue] < 0) return true;
    const auto index = [value unsignedLongLongValue];
    if (index < bitmap.frames.count() &&
        bitmap.frames.show(static_cast<std::size_t>(index), bitmap.pixels.planes[0],
                           bitmap.layout.bytesPerRow))
        bitmap.pixelsChange();
    return true;
}

id currentFrameDuration(NSBitmapState& bitmap) {
    return bitmap.frames ? [NSNumber numberWithDouble:bitmap.frames.duration()] : nil;
}

id loopCount(NSBitmapState& bitmap) {
    if (!bitmap.frames || !bitmap.frames.repeats()) return nil;
    return [NSNumber numberWithUnsignedInt:*bitmap.frames.repeats()];
}

/// What a moving picture states stands.
bool leaveAlone(NSBitmapState& bitmap, id) { return static_cast<bool>(bitmap.frames); }

/// Properties that are more than an entry in a dictionary.
struct StatedProperty {
    NSString* key;
    id (*value)(NSBitmapState& bitmap);           ///< nil: as kept by a caller
    bool (*set)(NSBitmapState& bitmap, id value); ///< false: to be kept
};

const StatedProperty statedProperties[] = {
    {NSImageEXIFData, exifValue, setEXIF},
    {NSImageFrameCount, frameCount, leaveAlone},
    {NSImageCurrentFrame, currentFrame, setCurrentFrame},
    {NSImageCurrentFrameDuration, currentFrameDuration, leaveAlone},
    {NSImageLoopCount, loopCount, leaveAlone},
};

const StatedProperty* statedProperty(NSString* key) {
    for (const StatedProperty& property : statedProperties)
        if ([property.key isEqualToString:key]) return &property;
    return nullptr;
}

} // namespace

@implementation NSBitmapImageRep (NSBitmapProperties)

- (void)setProperty:(NSString*)property withValue:(id)value {
    if (!property || ![self state]) return;
    const StatedProperty* stated = statedProperty(property);
    if (stated && stated->set(*[self state], value)) return;
    keep(*[self state], property, value);
}

- (id)valueForProperty:(NSString*)property {
    if (!property || ![self state]) return nil;
    const StatedProperty* stated = statedProperty(property);
    id value = stated ? stated->value(*[self state]) : nil;
    return value ? value : [[self state]->properties objectForKey:property];
}

@end
