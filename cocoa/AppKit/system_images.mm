#include "cocoa/AppKit/system_images.h"

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/graphics.h"
#include "cocoa/AppKit/icon_theme.h"
#include "cocoa/AppKit/svg_drawing.h"
#include "cocoa/AppKit/system_image_names.h"
#include "cocoa/Carbon/file_bytes.h"
#include "cocoa/codecs/codec.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>

namespace cocoa::appkit {
namespace {

constexpr std::size_t largestFile = 4 << 20;
constexpr std::uint32_t largestSide = 1024; // of a picture in a file
constexpr int drawnSides[] = {16, 24, 32, 48, 64, 128, 256};
constexpr CGFloat templateSide = 16; // in points
constexpr CGFloat iconSide = 32;

/// By the width in pixels, one of each.
using Bitmaps = std::map<NSInteger, Owned<NSBitmapImageRep*>>;

Owned<NSBitmapImageRep*> makeBitmap(int side, const std::vector<std::uint8_t>& rows) {
    auto bitmap = makeCanvas(side, side);
    if (!bitmap.get() || rows.empty()) return {};
    const std::size_t rowSize = static_cast<std::size_t>(side) * 4;
    for (std::size_t y = 0; y < static_cast<std::size_t>(side); ++y)
        std::copy_n(rows.data() + y * rowSize, rowSize,
                    [bitmap.get() bitmapData] +
                        y * static_cast<std::size_t>([bitmap.get() bytesPerRow]));
    return bitmap;
}

void addDrawing(const IconFile& file, const std::vector<std::uint8_t>& bytes, Bitmaps& bitmaps) {
    // Icons declare no entities; of those that do, a few lines can make up any size.
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (text.find("<!ENTITY") != text.npos) return;
    const auto drawing = SvgDrawing::open(bytes);
    if (!drawing) return;
    std::set<int> sides{std::clamp(file.size, 1, static_cast<int>(largestSide))};
    for (const int side : drawnSides)
        if (side >= file.least && side <= file.most) sides.insert(side);
    for (const int side : sides) {
        if (bitmaps.contains(side)) continue;
        auto bitmap = makeBitmap(side, drawing->render(side));
        // What cannot be drawn once will not be at another size, and may have taken long to fail.
        if (!bitmap.get()) return;
        bitmaps.emplace(side, std::move(bitmap));
    }
}

void addPicture(const std::vector<std::uint8_t>& bytes, Bitmaps& bitmaps) {
    const auto opened = codecs::open(bytes);
    if (!opened.reader) return;
    const auto& layout = opened.reader->page(0).layout;
    if (layout.width > largestSide || layout.height > largestSide) return;
    NSData* data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
    NSBitmapImageRep* bitmap =
        [bitmapRepsOfData([NSBitmapImageRep class], data, true, true) lastObject];
    if (!bitmap || bitmaps.contains([bitmap pixelsWide])) return;
    [bitmap setSize:NSMakeSize([bitmap pixelsWide], [bitmap pixelsHigh])];
    bitmaps.emplace([bitmap pixelsWide], bitmap);
}

/// Of the pictures, those that the theme's makers put in pixels go before drawn ones.
Bitmaps readIcon(const std::vector<IconFile>& files) {
    Bitmaps bitmaps;
    for (const bool isDrawing : {false, true})
        for (const IconFile& file : files) {
            if (file.isDrawing != isDrawing) continue;
            const auto bytes = readFile(file.path, largestFile);
            if (!bytes) continue;
            if (isDrawing)
                addDrawing(file, *bytes, bitmaps);
            else
                addPicture(*bytes, bitmaps);
        }
    return bitmaps;
}

/// The same with every pixel black, in as much alpha as it had.
Owned<NSBitmapImageRep*> blackened(NSBitmapImageRep* bitmap) {
    auto result = makeCanvas(static_cast<CGFloat>([bitmap pixelsWide]),
                             static_cast<CGFloat>([bitmap pixelsHigh]));
    const auto port = OwnedRef<CGContextRef>::adopt([result.get() newDrawingPort]);
    const auto image = OwnedRef<CGImageRef>::adopt([bitmap newTransientImageOfPixels:CGSizeZero]);
    if (!port || !image) return {};
    const CGRect all = CGRectMake(0, 0, static_cast<CGFloat>([bitmap pixelsWide]),
                                  static_cast<CGFloat>([bitmap pixelsHigh]));
    CGContextDrawImage(port.get(), all, image.get());
    CGContextSetBlendMode(port.get(), kCGBlendModeSourceIn);
    CGContextSetRGBFillColor(port.get(), 0, 0, 0, 1);
    CGContextFillRect(port.get(), all);
    return result;
}

} // namespace

Owned<NSImage*> makeSystemImage(NSString* name) {
    const bool isTemplate = [name hasSuffix:@"Template"];
    for (const std::string& icon : iconNamesFor(name)) {
        const Bitmaps bitmaps = readIcon(findIcon(icon));
        if (bitmaps.empty()) continue;
        auto image = Owned<NSImage*>::adopt([[NSImage alloc] init]);
        for (const auto& [side, bitmap] : bitmaps)
            [image.get() addRepresentation:isTemplate ? blackened(bitmap).get() : bitmap.get()];
        const CGFloat side = isTemplate ? templateSide : iconSide;
        [image.get() setSize:NSMakeSize(side, side)];
        [image.get() setTemplate:isTemplate];
        return image;
    }
    return {};
}

} // namespace cocoa::appkit
