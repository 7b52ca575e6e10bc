#import <AppKit/NSBitmapImageRep.h>

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/color_spaces.h"

#include <algorithm>

using namespace cocoa::appkit;

NSString* const NSTIFFException = @"NSTIFFException";
NSString* const NSBadBitmapParametersException = @"NSBadBitmapParametersException";

namespace {

/// The caller's planes; empty when one is missing.
BitmapPixels callersPixels(const BitmapLayout& layout, unsigned char** planes) {
    BitmapPixels pixels;
    std::copy_n(planes, layout.planeCount(), pixels.planes.begin());
    const auto end = pixels.planes.begin() + layout.planeCount();
    return std::find(pixels.planes.begin(), end, nullptr) == end ? std::move(pixels)
                                                                 : BitmapPixels{};
}

} // namespace

@implementation NSBitmapImageRep

/// There is no bitmap without pixels.
- (id)init {
    [self release];
    return nil;
}

- (id)initWithBitmapDataPlanes:(unsigned char**)planes
                    pixelsWide:(NSInteger)width
                    pixelsHigh:(NSInteger)height
                 bitsPerSample:(NSInteger)bps
               samplesPerPixel:(NSInteger)spp
                      hasAlpha:(BOOL)alpha
                      isPlanar:(BOOL)isPlanar
                colorSpaceName:(NSString*)colorSpaceName
                   bytesPerRow:(NSInteger)rowBytes
                  bitsPerPixel:(NSInteger)pixelBits {
    return [self initWithBitmapDataPlanes:planes
                               pixelsWide:width
                               pixelsHigh:height
                            bitsPerSample:bps
                          samplesPerPixel:spp
                                 hasAlpha:alpha
                                 isPlanar:isPlanar
                           colorSpaceName:colorSpaceName
                             bitmapFormat:0
                              bytesPerRow:rowBytes
                             bitsPerPixel:pixelBits];
}

- (id)initWithBitmapDataPlanes:(unsigned char**)planes
                    pixelsWide:(NSInteger)width
                    pixelsHigh:(NSInteger)height
                 bitsPerSample:(NSInteger)bps
               samplesPerPixel:(NSInteger)spp
                      hasAlpha:(BOOL)alpha
                      isPlanar:(BOOL)isPlanar
                colorSpaceName:(NSString*)colorSpaceName
                  bitmapFormat:(NSBitmapFormat)bitmapFormat
                   bytesPerRow:(NSInteger)rowBytes
                  bitsPerPixel:(NSInteger)pixelBits {
    constexpr NSBitmapFormat knownFormats = NSAlphaFirstBitmapFormat |
                                            NSAlphaNonpremultipliedBitmapFormat |
                                            NSFloatingPointSamplesBitmapFormat;
    const auto space = namedSpace(colorSpaceName);
    std::optional<BitmapLayout> layout;
    if (space && (bitmapFormat & ~knownFormats) == 0)
        layout = makeLayout({
            .width = width,
            .height = height,
            .model = space->model,
            .zeroIsWhite = space->zeroIsWhite,
            .bitsPerSample = bps,
            .samplesPerPixel = spp,
            .hasAlpha = static_cast<bool>(alpha),
            .alphaFirst = (bitmapFormat & NSAlphaFirstBitmapFormat) != 0,
            .straightAlpha = (bitmapFormat & NSAlphaNonpremultipliedBitmapFormat) != 0,
            .floatingPoint = (bitmapFormat & NSFloatingPointSamplesBitmapFormat) != 0,
            .planar = static_cast<bool>(isPlanar),
            .bytesPerRow = rowBytes,
            .bitsPerPixel = pixelBits,
        });
    BitmapPixels pixels;
    if (layout)
        pixels =
            planes && planes[0] ? callersPixels(*layout, planes) : BitmapPixels::allocate(*layout);
    if (!pixels) {
        [self release];
        return nil;
    }
    return [self initWithLayout:*layout pixels:pixels colorSpaceName:colorSpaceName];
}

- (void)dealloc {
    delete _bitmap;
    [super dealloc];
}

- (id)copyWithZone:(NSZone*)zone {
    NSBitmapImageRep* copy = [super copyWithZone:zone];
    copy->_bitmap = nullptr;
    if (!_bitmap) return copy;
    BitmapPixels pixels = BitmapPixels::copy(_bitmap->layout, _bitmap->pixels.constPlanes());
    if (!pixels) {
        [copy release];
        return nil;
    }
    auto* state = new NSBitmapState;
    state->layout = _bitmap->layout;
    state->pixels = std::move(pixels);
    state->colorSpace = _bitmap->colorSpace;
    state->frames = _bitmap->frames.copy();
    state->exif = _bitmap->exif;
    state->compression = _bitmap->compression;
    state->compressionFactor = _bitmap->compressionFactor;
    if (_bitmap->properties)
        state->properties = Owned<NSMutableDictionary*>::adopt([_bitmap->properties mutableCopy]);
    copy->_bitmap = state;
    return copy;
}

- (BOOL)isPlanar {
    return _bitmap->layout.planar;
}
- (NSInteger)samplesPerPixel {
    return _bitmap->layout.samplesPerPixel;
}
- (NSInteger)bitsPerPixel {
    return _bitmap->layout.bitsPerPixel;
}
- (NSInteger)bytesPerRow {
    return static_cast<NSInteger>(_bitmap->layout.bytesPerRow);
}
- (NSInteger)bytesPerPlane {
    return static_cast<NSInteger>(_bitmap->layout.bytesPerPlane());
}
- (NSInteger)numberOfPlanes {
    return _bitmap->layout.planeCount();
}

- (NSBitmapFormat)bitmapFormat {
    const BitmapLayout& layout = _bitmap->layout;
    NSBitmapFormat format = 0;
    if (layout.alphaFirst) format |= NSAlphaFirstBitmapFormat;
    if (layout.straightAlpha) format |= NSAlphaNonpremultipliedBitmapFormat;
    if (layout.floatingPoint) format |= NSFloatingPointSamplesBitmapFormat;
    return format;
}

- (NSColorSpace*)colorSpace {
    if (_bitmap->colorSpace) return _bitmap->colorSpace;
    return colorSpaceOfName([self colorSpaceName]);
}

- (unsigned char*)bitmapData {
    _bitmap->pixelsChange();
    return _bitmap->pixels.planes[0];
}

- (void)getBitmapDataPlanes:(unsigned char**)data {
    if (!data) return;
    _bitmap->pixelsChange();
    std::copy(_bitmap->pixels.planes.begin(), _bitmap->pixels.planes.end(), data);
}

@end

@implementation NSBitmapImageRep (Private)

- (id)initWithLayout:(const BitmapLayout&)layout
              pixels:(BitmapPixels&)pixels
      colorSpaceName:(NSString*)name {
    self = [super init];
    if (!self) return nil;
    _bitmap = new NSBitmapState;
    _bitmap->layout = layout;
    _bitmap->pixels = std::move(pixels);
    [self setColorSpaceName:name];
    [self setBitsPerSample:layout.bitsPerSample];
    [self setPixelsWide:layout.width];
    [self setPixelsHigh:layout.height];
    [self setAlpha:layout.hasAlpha];
    [self setOpaque:!layout.hasAlpha];
    [self setSize:NSMakeSize(layout.width, layout.height)];
    return self;
}

- (NSBitmapState*)state {
    return _bitmap;
}

@end
