/// Bitmaps as encoded data.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSColor.h>

#include "cocoa/AppKit/bitmap_exif.h"
#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/color_spaces.h"
#include "cocoa/AppKit/row_converter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

using namespace cocoa::appkit;
namespace codecs = cocoa::codecs;

namespace {

codecs::Bytes bytesOf(NSData* data) {
    return {static_cast<const std::uint8_t*>([data bytes]), [data length]};
}

/// What is asked of one encoding: the caller's properties, then those kept with the bitmap.
class Options {
public:
    Options(NSBitmapImageRep* bitmap, NSDictionary* properties)
        : bitmap_(bitmap)
        , properties_(properties) {}

    /// For this encoding only.
    id given(NSString* key) const { return [properties_ objectForKey:key]; }
    id value(NSString* key) const {
        id own = given(key);
        return own ? own : [bitmap_ valueForProperty:key];
    }
    bool flag(NSString* key) const {
        id number = value(key);
        return [number isKindOfClass:[NSNumber class]] && [number boolValue];
    }
    /// Between 0 and 1.
    float factor(float otherwise) const {
        id number = value(NSImageCompressionFactor);
        if (![number isKindOfClass:[NSNumber class]]) return otherwise;
        const float factor = [number floatValue];
        return factor >= 0 ? std::min(factor, 1.0F) : 0.0F;
    }
    /// 0 for none.
    double positive(NSString* key) const {
        id number = value(key);
        const double positive = [number isKindOfClass:[NSNumber class]] ? [number doubleValue] : 0;
        return positive > 0 && std::isfinite(positive) ? positive : 0;
    }
    /// Nothing for none. Valid as long as the properties are.
    codecs::Bytes bytes(NSString* key) const {
        id data = value(key);
        return [data isKindOfClass:[NSData class]] ? bytesOf(data) : codecs::Bytes{};
    }

private:
    NSBitmapImageRep* bitmap_;
    NSDictionary* properties_;
};

/// A page for a codec, with what it points to.
struct Page {
    codecs::Picture picture;
    ConvertedPixels converted;
    std::unique_ptr<ConvertedRows> rows;
    Owned<NSBitmapImageRep*> redrawn;
    Owned<NSData*> profile;
    std::vector<std::uint8_t> exif;
};

/// The same picture as 8-bit RGB with alpha where the original has one.
Owned<NSBitmapImageRep*> redrawnInRGB(NSBitmapImageRep* bitmap) {
    const BitmapLayout& layout = [bitmap state]->layout;
    auto rgb = Owned<NSBitmapImageRep*>::adopt([[NSBitmapImageRep alloc]
        initWithBitmapDataPlanes:nullptr
                      pixelsWide:layout.width
                      pixelsHigh:layout.height
                   bitsPerSample:8
                 samplesPerPixel:layout.hasAlpha ? 4 : 3
                        hasAlpha:layout.hasAlpha
                        isPlanar:NO
                  colorSpaceName:NSCalibratedRGBColorSpace
                     bytesPerRow:0
                    bitsPerPixel:32]);
    const auto port = OwnedRef<CGContextRef>::adopt([rgb.get() newDrawingPort]);
    const auto image = OwnedRef<CGImageRef>::adopt([bitmap newTransientImageOfPixels:CGSizeZero]);
    if (!port || !image) return {};
    CGContextSetBlendMode(port.get(), kCGBlendModeCopy);
    CGContextDrawImage(port.get(), CGRectMake(0, 0, layout.width, layout.height), image.get());
    [rgb.get() setSize:[bitmap size]];
    return rgb;
}

/// The layout in which a format takes a bitmap.
codecs::PixelLayout layoutFor(const BitmapLayout& source, const codecs::Codec& codec) {
    codecs::PixelLayout layout = source.pixelLayout();
    const bool plainGray = layout.model == ColorModel::Gray && layout.alpha == codecs::Alpha::None;
    if (&codec == &codecs::tiff) return layout;
    const bool keepsAlpha = &codec == &codecs::png || &codec == &codecs::gif;
    if (!keepsAlpha)
        layout.alpha = codecs::Alpha::None;
    else if (layout.alpha != codecs::Alpha::None)
        layout.alpha = codecs::Alpha::Straight;
    if (&codec != &codecs::png)
        layout.bitsPerSample = 8;
    else if (!plainGray)
        layout.bitsPerSample = std::max<std::uint8_t>(layout.bitsPerSample, 8);
    return layout;
}

RowConverter::Background backgroundFor(ColorModel model, const Options& options) {
    id color = options.value(NSImageFallbackBackgroundColor);
    if (![color isKindOfClass:[NSColor class]]) color = [NSColor whiteColor];
    color = [color colorUsingColorSpaceName:defaultSpaceName(model)];
    CGFloat components[5] = {};
    [color getComponents:components];
    RowConverter::Background background{};
    std::copy_n(components, background.size(), background.begin());
    return background;
}

double dpi(std::uint32_t pixels, CGFloat points) {
    return points > 0 ? pixels * 72.0 / static_cast<double>(points) : 0;
}

Owned<NSData*> profileFor(NSBitmapImageRep* bitmap, const Options& options) {
    id data = options.value(NSImageColorSyncProfileData);
    if (![data isKindOfClass:[NSData class]]) data = [[bitmap state]->colorSpace ICCProfileData];
    if (!data) return {};
    auto space = Owned<NSColorSpace*>::adopt([[NSColorSpace alloc] initWithICCProfileData:data]);
    if (!space.get()) return {};
    return modelOf([space.get() CGColorSpace]) == [bitmap state]->layout.model
               ? Owned<NSData*>(data)
               : Owned<NSData*>();
}

/// The block that the pixels came with, unless a caller says otherwise.
std::vector<std::uint8_t> exifFor(NSBitmapImageRep* bitmap, const Options& options) {
    id given = options.given(NSImageEXIFData);
    const auto& own = [bitmap state]->exif;
    if (!given && !own.empty()) return own;
    if (!given) given = [bitmap valueForProperty:NSImageEXIFData];
    return [given isKindOfClass:[NSDictionary class]] ? exifBlock(given)
                                                      : std::vector<std::uint8_t>{};
}

/// Nothing when there is not enough memory.
std::optional<Page> pageFor(NSBitmapImageRep* bitmap, const codecs::Codec& codec,
                            const Options& options) {
    Page page;
    const bool takesInk = &codec == &codecs::jpeg || &codec == &codecs::tiff;
    if (!takesInk && [bitmap state]->layout.model == ColorModel::CMYK) {
        page.redrawn = redrawnInRGB(bitmap);
        bitmap = page.redrawn;
        if (!bitmap) return std::nullopt;
    }
    const NSBitmapState& state = *[bitmap state];
    const BitmapLayout& source = state.layout;
    page.picture.layout = layoutFor(source, codec);
    const bool sameSamples = page.picture.layout.alpha == source.alpha() &&
                             page.picture.layout.bitsPerSample == source.bitsPerSample;
    if (source.hasPixelLayout() && sameSamples) {
        page.picture.pixels = state.pixels.planes[0];
        page.picture.rowBytes = source.bytesPerRow;
    } else if (codec.takesRows) {
        page.rows = ConvertedRows::make(source, state.pixels.constPlanes(), page.picture.layout,
                                        backgroundFor(source.model, options));
        if (!page.rows) return std::nullopt;
        page.picture.rows = page.rows.get();
    } else {
        page.converted = convertPixels(source, state.pixels.constPlanes(), page.picture.layout,
                                       backgroundFor(source.model, options));
        if (!page.converted) return std::nullopt;
        page.picture.pixels = page.converted.bytes.get();
        page.picture.rowBytes = page.converted.rowBytes;
    }
    const NSSize size = [bitmap size];
    page.picture.dpiX = dpi(source.width, size.width);
    page.picture.dpiY = dpi(source.height, size.height);
    page.profile = profileFor(bitmap, options);
    page.picture.iccProfile = bytesOf(page.profile);
    page.picture.gamma = options.positive(NSImageGamma);
    page.exif = exifFor(bitmap, options);
    page.picture.exif = page.exif;
    return page;
}

/// Hands the bytes over without a copy.
NSData* dataOf(codecs::Encoded encoded) {
    if (!encoded) return nil;
    const std::size_t size = encoded.size;
    return [[[NSData alloc] initWithBytesNoCopy:encoded.bytes.release()
                                         length:size
                                   freeWhenDone:YES] autorelease];
}

NSData* encode(NSArray* bitmaps, const codecs::Codec& codec, NSDictionary* properties,
               const codecs::EncodeOptions& options) {
    std::vector<Page> pages;
    std::vector<codecs::Picture> pictures;
    for (NSUInteger index = 0; index < [bitmaps count]; ++index) {
        NSBitmapImageRep* bitmap = [bitmaps objectAtIndex:index];
        auto page = pageFor(bitmap, codec, Options(bitmap, properties));
        if (!page) return nil;
        pictures.push_back(page->picture);
        pages.push_back(std::move(*page));
    }
    if (pictures.empty()) return nil;
    return dataOf(codec.encode(pictures, options));
}

/// The bitmaps among representations.
NSArray* bitmapsIn(NSArray* reps) {
    NSMutableArray* bitmaps = [NSMutableArray array];
    for (NSUInteger index = 0; index < [reps count]; ++index) {
        id rep = [reps objectAtIndex:index];
        if ([rep isKindOfClass:[NSBitmapImageRep class]] && [rep state]) [bitmaps addObject:rep];
    }
    return bitmaps;
}

constexpr NSTIFFCompression compressions[] = {
    NSTIFFCompressionNone,     NSTIFFCompressionCCITTFAX3, NSTIFFCompressionCCITTFAX4,
    NSTIFFCompressionLZW,      NSTIFFCompressionJPEG,      NSTIFFCompressionNEXT,
    NSTIFFCompressionPackBits, NSTIFFCompressionOldJPEG,
};

codecs::TIFFCompression codecCompression(NSTIFFCompression compression) {
    return compression == NSTIFFCompressionJPEG ? codecs::TIFFCompression::JPEG
                                                : static_cast<codecs::TIFFCompression>(compression);
}

/// Of a factor that grows with the compression, from 0 to 255.
float qualityOf(float compressionFactor) {
    return compressionFactor > 0 ? std::max(1 - compressionFactor / 255, 0.0F) : 1;
}

NSData* encodeTIFF(NSArray* bitmaps, NSDictionary* properties, NSTIFFCompression compression,
                   float quality) {
    for (NSUInteger index = 0; index < [bitmaps count]; ++index)
        if (![[bitmaps objectAtIndex:index] canBeCompressedUsing:compression])
            compression = NSTIFFCompressionNone;
    return encode(bitmaps, codecs::tiff, properties,
                  {.quality = quality, .compression = codecCompression(compression)});
}

NSTIFFCompression compressionOf(NSBitmapImageRep* bitmap, NSDictionary* properties) {
    id number = [properties objectForKey:NSImageCompressionMethod];
    if ([number isKindOfClass:[NSNumber class]]) return [number unsignedIntegerValue];
    NSTIFFCompression compression = NSTIFFCompressionNone;
    [bitmap getCompression:&compression factor:nullptr];
    return compression;
}

} // namespace

@implementation NSBitmapImageRep (NSBitmapEncoding)

- (NSData*)TIFFRepresentation {
    return [NSBitmapImageRep TIFFRepresentationOfImageRepsInArray:[NSArray arrayWithObject:self]];
}

- (NSData*)TIFFRepresentationUsingCompression:(NSTIFFCompression)compression factor:(float)factor {
    return [NSBitmapImageRep TIFFRepresentationOfImageRepsInArray:[NSArray arrayWithObject:self]
                                                 usingCompression:compression
                                                           factor:factor];
}

+ (NSData*)TIFFRepresentationOfImageRepsInArray:(NSArray*)array {
    NSArray* bitmaps = bitmapsIn(array);
    if (![bitmaps count]) return nil;
    NSBitmapImageRep* first = [bitmaps objectAtIndex:0];
    return encodeTIFF(bitmaps, nil, compressionOf(first, nil),
                      qualityOf([first state]->compressionFactor));
}

+ (NSData*)TIFFRepresentationOfImageRepsInArray:(NSArray*)array
                               usingCompression:(NSTIFFCompression)compression
                                         factor:(float)factor {
    return encodeTIFF(bitmapsIn(array), nil, compression, qualityOf(factor));
}

+ (NSData*)representationOfImageRepsInArray:(NSArray*)imageReps
                                  usingType:(NSBitmapImageFileType)storageType
                                 properties:(NSDictionary*)properties {
    NSArray* bitmaps = bitmapsIn(imageReps);
    if (![bitmaps count]) return nil;
    NSBitmapImageRep* first = [bitmaps objectAtIndex:0];
    NSArray* single = [NSArray arrayWithObject:first];
    const Options options(first, properties);
    switch (storageType) {
    case NSTIFFFileType:
        return encodeTIFF(bitmaps, properties, compressionOf(first, properties),
                          options.factor(qualityOf([first state]->compressionFactor)));
    case NSJPEGFileType: {
        const codecs::EncodeOptions standard;
        return encode(single, codecs::jpeg, properties,
                      {.quality = options.factor(standard.quality),
                       .progressive = options.flag(NSImageProgressive)});
    }
    case NSPNGFileType:
        return encode(single, codecs::png, properties,
                      {.interlaced = options.flag(NSImageInterlaced)});
    case NSGIFFileType:
        return encode(single, codecs::gif, properties,
                      {.interlaced = options.flag(NSImageInterlaced),
                       .ditherTransparency = options.flag(NSImageDitherTransparency),
                       .colorTable = options.bytes(NSImageRGBColorTable)});
    case NSBMPFileType:
        return encode(single, codecs::bmp, properties, {});
    default:
        return nil;
    }
}

- (NSData*)representationUsingType:(NSBitmapImageFileType)storageType
                        properties:(NSDictionary*)properties {
    return [NSBitmapImageRep representationOfImageRepsInArray:[NSArray arrayWithObject:self]
                                                    usingType:storageType
                                                   properties:properties];
}

+ (void)getTIFFCompressionTypes:(const NSTIFFCompression**)list count:(NSInteger*)numTypes {
    if (list) *list = compressions;
    if (numTypes) *numTypes = static_cast<NSInteger>(std::size(compressions));
}

+ (NSString*)localizedNameForTIFFCompressionType:(NSTIFFCompression)compression {
    switch (compression) {
    case NSTIFFCompressionNone:
        return @"None";
    case NSTIFFCompressionCCITTFAX3:
        return @"CCITT Class 3";
    case NSTIFFCompressionCCITTFAX4:
        return @"CCITT Class 4";
    case NSTIFFCompressionLZW:
        return @"LZW";
    case NSTIFFCompressionJPEG:
        return @"JPEG";
    case NSTIFFCompressionNEXT:
        return @"NeXT";
    case NSTIFFCompressionPackBits:
        return @"PackBits";
    case NSTIFFCompressionOldJPEG:
        return @"Old JPEG";
    default:
        return nil;
    }
}

- (BOOL)canBeCompressedUsing:(NSTIFFCompression)compression {
    if (![self state]) return NO;
    const BitmapLayout& layout = [self state]->layout;
    switch (compression) {
    case NSTIFFCompressionNone:
    case NSTIFFCompressionLZW:
    case NSTIFFCompressionPackBits:
        return YES;
    case NSTIFFCompressionCCITTFAX3:
    case NSTIFFCompressionCCITTFAX4:
        return layout.bitsPerSample == 1 && layout.samplesPerPixel == 1;
    case NSTIFFCompressionJPEG:
        return layout.bitsPerSample == 8 && !layout.hasAlpha;
    default:
        return NO;
    }
}

- (void)getCompression:(NSTIFFCompression*)compression factor:(float*)factor {
    if (compression) *compression = [self state]->compression;
    if (factor) *factor = [self state]->compressionFactor;
}

- (void)setCompression:(NSTIFFCompression)compression factor:(float)factor {
    [self state]->compression = compression;
    [self state]->compressionFactor = factor;
}

@end
