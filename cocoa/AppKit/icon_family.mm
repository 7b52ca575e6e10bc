#include "cocoa/AppKit/icon_family.h"

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/icon_members.h"
#include "cocoa/Carbon/icons.h"

#include <algorithm>
#include <map>

namespace cocoa::appkit {
namespace {

Owned<NSBitmapImageRep*> bitmapOfSamples(const IconPicture& picture) {
    auto bitmap = Owned<NSBitmapImageRep*>::adopt([[NSBitmapImageRep alloc]
        initWithBitmapDataPlanes:nullptr
                      pixelsWide:picture.side
                      pixelsHigh:picture.side
                   bitsPerSample:8
                 samplesPerPixel:picture.hasAlpha ? 4 : 3
                        hasAlpha:picture.hasAlpha
                        isPlanar:NO
                  colorSpaceName:NSCalibratedRGBColorSpace
                    bitmapFormat:picture.hasAlpha ? NSAlphaNonpremultipliedBitmapFormat : 0
                     bytesPerRow:0
                    bitsPerPixel:0]);
    if (!bitmap.get()) return {};
    const auto height = static_cast<std::size_t>(picture.side);
    const std::size_t rowSize = picture.samples.size() / height;
    for (std::size_t y = 0; y < height; ++y)
        std::copy_n(picture.samples.data() + y * rowSize, rowSize,
                    [bitmap.get() bitmapData] +
                        y * static_cast<std::size_t>([bitmap.get() bytesPerRow]));
    return bitmap;
}

Owned<NSBitmapImageRep*> bitmapOfFile(const IconPicture& picture) {
    NSData* data = [NSData dataWithBytesNoCopy:const_cast<std::uint8_t*>(picture.encoded.data())
                                        length:picture.encoded.size()
                                  freeWhenDone:NO];
    NSArray* pages = bitmapRepsOfData([NSBitmapImageRep class], data, false, true);
    if (![pages count]) return {};
    NSBitmapImageRep* bitmap = [pages objectAtIndex:0];
    if (picture.scale > 1)
        [bitmap setSize:NSMakeSize(static_cast<CGFloat>([bitmap pixelsWide]) / picture.scale,
                                   static_cast<CGFloat>([bitmap pixelsHigh]) / picture.scale)];
    return bitmap;
}

} // namespace

NSArray* iconRepresentations(IconRef icon) {
    const auto file = iconFileBytes(icon);
    if (!file) return nil;
    std::map<std::pair<NSInteger, int>, Owned<NSBitmapImageRep*>> bySize;
    for (const IconPicture& picture : iconPictures(*file)) {
        auto bitmap = picture.encoded.empty() ? bitmapOfSamples(picture) : bitmapOfFile(picture);
        if (bitmap.get())
            bySize.emplace(std::pair([bitmap.get() pixelsWide], picture.scale), bitmap);
    }
    NSMutableArray* reps = [NSMutableArray array];
    for (const auto& [size, bitmap] : bySize)
        [reps addObject:bitmap];
    return [reps count] ? reps : nil;
}

} // namespace cocoa::appkit
