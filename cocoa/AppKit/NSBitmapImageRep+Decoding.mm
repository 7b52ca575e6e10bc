/// Bitmaps from encoded data. Pixels are decoded at once: only that proves that all of them are
/// there, and memory is taken up as they come.

#import <AppKit/NSBitmapImageRep.h>

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/color_spaces.h"
#include "cocoa/AppKit/orientation.h"
#include "cocoa/codecs/codec.h"
#include "cocoa/codecs/exif.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace cocoa::appkit;
namespace codecs = cocoa::codecs;

namespace {

struct DecodedPage {
    BitmapLayout layout;
    BitmapPixels pixels;
    NSSize size = NSZeroSize;
    const codecs::PageInfo* info = nullptr;
    bool turned = false; ///< as the orientation demands
};

codecs::Bytes bytesOf(NSData* data) {
    return {static_cast<const std::uint8_t*>([data bytes]), [data length]};
}

/// Pixels in points. Formats that count pixels a metre in whole numbers are meant for the whole
/// number of dots an inch that lies within half such a pixel.
CGFloat points(std::uint32_t pixels, double dpi) {
    constexpr double halfPixelAMeter = 0.5 * 0.0254;
    constexpr double least = 1;
    constexpr double most = 1e6;
    if (!(dpi >= least && dpi <= most)) return pixels;
    const double whole = std::round(dpi);
    if (std::abs(dpi - whole) <= halfPixelAMeter) dpi = whole;
    return static_cast<CGFloat>(pixels * 72.0 / dpi);
}

BitmapPixels readPixels(codecs::Reader& reader, std::size_t index, const BitmapLayout& layout) {
    BitmapPixels pixels = BitmapPixels::allocate(layout);
    if (pixels && !reader.read(index, 1, pixels.planes[0], layout.bytesPerRow)) return {};
    return pixels;
}

std::optional<DecodedPage> decode(codecs::Reader& reader, std::size_t index, bool upright) {
    const codecs::PageInfo& info = reader.page(index);
    const auto stored = layoutOf(info.layout);
    if (!stored) return std::nullopt;
    DecodedPage page;
    page.info = &info;
    page.layout = *stored;
    page.pixels = readPixels(reader, index, *stored);
    if (!page.pixels) return std::nullopt;
    page.size = NSMakeSize(points(stored->width, info.dpiX), points(stored->height, info.dpiY));
    if (!upright || info.orientation < 2 || info.orientation > 8) return page;

    const auto turned = layoutOf(uprightLayout(info.layout, info.orientation));
    BitmapPixels pixels = turned ? BitmapPixels::allocate(*turned) : BitmapPixels{};
    if (!pixels) return std::nullopt;
    turnUpright(info.layout, page.pixels.planes[0], info.orientation, pixels.planes[0]);
    page.layout = *turned;
    page.pixels = std::move(pixels);
    page.turned = true;
    if (exchangesSides(info.orientation)) std::swap(page.size.width, page.size.height);
    return page;
}

} // namespace

@interface NSBitmapImageRep (DecodingPrivate)
- (id)initWithPage:(DecodedPage&)page;
@end

@implementation NSBitmapImageRep (NSBitmapDecoding)

+ (BOOL)canInitWithData:(NSData*)data {
    return codecs::open(bytesOf(data)).codec != nullptr;
}

+ (NSArray*)imageRepsWithData:(NSData*)data {
    return bitmapRepsOfData(self, data, false, false);
}

+ (id)imageRepWithData:(NSData*)data {
    return [[[self alloc] initWithData:data] autorelease];
}

- (id)initWithData:(NSData*)data {
    const auto opened = codecs::open(bytesOf(data));
    auto page = opened.reader ? decode(*opened.reader, 0, false) : std::nullopt;
    if (!page) {
        [self release];
        return nil;
    }
    self = [self initWithPage:*page];
    if (opened.reader->animation()) [self state]->frames = BitmapFrames(data);
    return self;
}

- (id)initWithPage:(DecodedPage&)page {
    self = [self initWithLayout:page.layout
                         pixels:page.pixels
                 colorSpaceName:defaultSpaceName(page.layout.model)];
    if (!self) return nil;
    [self setSize:page.size];
    NSBitmapState& bitmap = *[self state];
    const codecs::PageInfo& info = *page.info;
    bitmap.exif = page.turned ? codecs::exif_with_orientation(info.exif, 1) : info.exif;
    if (info.gamma > 0)
        [self setProperty:NSImageGamma withValue:[NSNumber numberWithDouble:info.gamma]];
    const auto& profile = info.iccProfile;
    if (profile.empty()) return self;
    NSData* profileData = [NSData dataWithBytes:profile.data() length:profile.size()];
    auto space =
        Owned<NSColorSpace*>::adopt([[NSColorSpace alloc] initWithICCProfileData:profileData]);
    if (!space.get() || modelOf([space.get() CGColorSpace]) != page.layout.model) return self;
    bitmap.colorSpace = space;
    [self setProperty:NSImageColorSyncProfileData withValue:profileData];
    return self;
}

@end

namespace cocoa::appkit {

NSArray* bitmapRepsOfData(Class repClass, NSData* data, bool upright, bool firstPageOnly) {
    const auto opened = codecs::open(bytesOf(data));
    if (!opened.reader) return nil;
    // Frames are one picture, pages as many as there are.
    const bool moving = opened.reader->animation() != nullptr;
    const std::size_t count = firstPageOnly || moving ? 1 : opened.reader->pageCount();
    NSMutableArray* reps = [NSMutableArray array];
    std::uint64_t pixels = 0;
    for (std::size_t index = 0; index < count; ++index) {
        const codecs::PixelLayout& layout = opened.reader->page(index).layout;
        pixels += std::uint64_t{layout.width} * layout.height;
        // Many small pages may add up to what one page may not have.
        if (pixels > codecs::maximumPixels) return nil;
        auto page = decode(*opened.reader, index, upright);
        if (!page) return nil;
        auto rep = Owned<NSBitmapImageRep*>::adopt([[repClass alloc] initWithPage:*page]);
        if (!rep.get()) return nil;
        if (moving) [rep.get() state]->frames = BitmapFrames(data);
        [reps addObject:rep];
    }
    return [reps count] ? reps : nil;
}

} // namespace cocoa::appkit
