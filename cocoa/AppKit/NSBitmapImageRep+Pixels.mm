/// Single pixels of a bitmap.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSColor.h>

#include "cocoa/AppKit/bitmap_samples.h"
#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/color_spaces.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

using namespace cocoa::appkit;

namespace {

using Samples = std::array<std::uint32_t, maximumPlanes>;

bool contains(const BitmapLayout& layout, NSInteger x, NSInteger y) {
    return x >= 0 && y >= 0 && x < static_cast<NSInteger>(layout.width) &&
           y < static_cast<NSInteger>(layout.height);
}

Samples samplesAt(const NSBitmapState& bitmap, NSInteger x, NSInteger y) {
    Samples samples{};
    for (int index = 0; index < bitmap.layout.samplesPerPixel; ++index) {
        const auto place = placeOf(bitmap.layout, static_cast<std::uint32_t>(x),
                                   static_cast<std::uint32_t>(y), index);
        samples[static_cast<std::size_t>(index)] = readSample(
            bitmap.pixels.planes[place.plane] + place.row, place.bit, bitmap.layout.bitsPerSample);
    }
    return samples;
}

void putSamples(NSBitmapState& bitmap, NSInteger x, NSInteger y, const Samples& samples) {
    for (int index = 0; index < bitmap.layout.samplesPerPixel; ++index) {
        const auto place = placeOf(bitmap.layout, static_cast<std::uint32_t>(x),
                                   static_cast<std::uint32_t>(y), index);
        writeSample(bitmap.pixels.planes[place.plane] + place.row, place.bit,
                    bitmap.layout.bitsPerSample, samples[static_cast<std::size_t>(index)]);
    }
    bitmap.pixelsChange();
}

double fromSample(const BitmapLayout& layout, std::uint32_t sample) {
    if (layout.floatingPoint) return static_cast<double>(std::bit_cast<float>(sample));
    return sample / static_cast<double>(layout.maximumSample());
}

std::uint32_t toSample(const BitmapLayout& layout, double value) {
    if (layout.floatingPoint) return std::bit_cast<std::uint32_t>(static_cast<float>(value));
    return static_cast<std::uint32_t>(std::lround(value * layout.maximumSample()));
}

} // namespace

@implementation NSBitmapImageRep (NSBitmapPixels)

- (void)getPixel:(NSUInteger[])p atX:(NSInteger)x y:(NSInteger)y {
    const NSBitmapState& bitmap = *[self state];
    if (!p || !contains(bitmap.layout, x, y)) return;
    const Samples samples = samplesAt(bitmap, x, y);
    std::copy_n(samples.begin(), bitmap.layout.samplesPerPixel, p);
}

- (void)setPixel:(NSUInteger[])p atX:(NSInteger)x y:(NSInteger)y {
    NSBitmapState& bitmap = *[self state];
    if (!p || !contains(bitmap.layout, x, y)) return;
    Samples samples{};
    for (int index = 0; index < bitmap.layout.samplesPerPixel; ++index)
        samples[static_cast<std::size_t>(index)] = static_cast<std::uint32_t>(p[index]);
    putSamples(bitmap, x, y, samples);
}

- (NSColor*)colorAtX:(NSInteger)x y:(NSInteger)y {
    const NSBitmapState& bitmap = *[self state];
    const BitmapLayout& layout = bitmap.layout;
    if (!contains(layout, x, y)) return nil;
    const Samples samples = samplesAt(bitmap, x, y);
    const double alpha =
        layout.hasAlpha ? fromSample(layout, samples[static_cast<std::size_t>(layout.alphaIndex())])
                        : 1;
    std::array<CGFloat, 4> c{};
    for (int index = 0; index < layout.colorSamples(); ++index) {
        double value =
            fromSample(layout, samples[static_cast<std::size_t>(layout.firstColorIndex() + index)]);
        if (layout.hasAlpha && !layout.straightAlpha) value = alpha > 0 ? value / alpha : 0;
        c[static_cast<std::size_t>(index)] =
            static_cast<CGFloat>(layout.zeroIsWhite ? 1 - value : value);
    }
    const auto a = static_cast<CGFloat>(alpha);
    const auto space = namedSpace([self colorSpaceName]);
    const bool calibrated = space && space->calibrated;
    switch (layout.model) {
    case ColorModel::Gray:
        return calibrated ? [NSColor colorWithCalibratedWhite:c[0] alpha:a]
                          : [NSColor colorWithDeviceWhite:c[0] alpha:a];
    case ColorModel::RGB:
        return calibrated ? [NSColor colorWithCalibratedRed:c[0] green:c[1] blue:c[2] alpha:a]
                          : [NSColor colorWithDeviceRed:c[0] green:c[1] blue:c[2] alpha:a];
    case ColorModel::CMYK:
        return [NSColor colorWithDeviceCyan:c[0] magenta:c[1] yellow:c[2] black:c[3] alpha:a];
    }
    return nil;
}

- (void)setColor:(NSColor*)color atX:(NSInteger)x y:(NSInteger)y {
    NSBitmapState& bitmap = *[self state];
    const BitmapLayout& layout = bitmap.layout;
    if (!contains(layout, x, y)) return;
    NSColor* own = [color colorUsingColorSpaceName:defaultSpaceName(layout.model)];
    if (!own) return;
    CGFloat components[maximumPlanes];
    [own getComponents:components];
    const double alpha = static_cast<double>([own alphaComponent]);
    Samples samples{};
    for (int index = 0; index < layout.colorSamples(); ++index) {
        double value = static_cast<double>(components[index]);
        if (layout.zeroIsWhite) value = 1 - value;
        if (layout.hasAlpha && !layout.straightAlpha) value *= alpha;
        samples[static_cast<std::size_t>(layout.firstColorIndex() + index)] =
            toSample(layout, value);
    }
    if (layout.hasAlpha)
        samples[static_cast<std::size_t>(layout.alphaIndex())] = toSample(layout, alpha);
    putSamples(bitmap, x, y, samples);
}

@end
