#import <AppKit/NSGraphics.h>

#include "cocoa/AppKit/color_spaces.h"
#include "cocoa/AppKit/graphics.h"

#include <vector>

using namespace cocoa::appkit;

NSString* const NSDeviceResolution = @"NSDeviceResolution";
NSString* const NSDeviceColorSpaceName = @"NSDeviceColorSpaceName";
NSString* const NSDeviceBitsPerSample = @"NSDeviceBitsPerSample";

namespace {

void fill(const NSRect* rects, NSInteger count, NSCompositingOperation operation) {
    const CGBlendMode mode = blendMode(operation);
    CGContextRef port = currentPort();
    if (!port || !rects || count < 1) return;
    std::vector<CGRect> converted;
    converted.reserve(static_cast<std::size_t>(count));
    for (NSInteger index = 0; index < count; ++index)
        converted.push_back(toCG(rects[index]));
    SavedState saved(port);
    CGContextSetBlendMode(port, mode);
    CGContextFillRects(port, converted.data(), converted.size());
}

} // namespace

NSInteger NSNumberOfColorComponents(NSString* colorSpaceName) {
    const auto space = namedSpace(colorSpaceName);
    if (!space) return 0;
    switch (space->model) {
    case ColorModel::Gray:
        return 1;
    case ColorModel::RGB:
        return 3;
    case ColorModel::CMYK:
        return 4;
    }
    return 0;
}

void NSRectFill(NSRect rect) { fill(&rect, 1, NSCompositeCopy); }

void NSRectFillList(const NSRect* rects, NSInteger count) { fill(rects, count, NSCompositeCopy); }

void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation operation) {
    fill(&rect, 1, operation);
}

void NSRectFillListUsingOperation(const NSRect* rects, NSInteger count,
                                  NSCompositingOperation operation) {
    fill(rects, count, operation);
}

void NSEraseRect(NSRect rect) {
    CGContextRef port = currentPort();
    if (!port) return;
    SavedState saved(port);
    CGContextSetGrayFillColor(port, 1, 1);
    NSRectFill(rect);
}

void NSFrameRect(NSRect rect) { NSFrameRectWithWidth(rect, 1); }

void NSFrameRectWithWidth(NSRect rect, CGFloat width) {
    NSFrameRectWithWidthUsingOperation(rect, width, NSCompositeCopy);
}

void NSFrameRectWithWidthUsingOperation(NSRect rect, CGFloat width,
                                        NSCompositingOperation operation) {
    if (!(width > 0)) return;
    const CGFloat inner = NSHeight(rect) - 2 * width;
    if (!(inner > 0) || !(NSWidth(rect) > 2 * width)) {
        fill(&rect, 1, operation);
        return;
    }
    // Four strips that do not overlap, so that every operation meets each pixel once.
    const NSRect strips[] = {
        NSMakeRect(NSMinX(rect), NSMinY(rect), NSWidth(rect), width),
        NSMakeRect(NSMinX(rect), NSMaxY(rect) - width, NSWidth(rect), width),
        NSMakeRect(NSMinX(rect), NSMinY(rect) + width, width, inner),
        NSMakeRect(NSMaxX(rect) - width, NSMinY(rect) + width, width, inner),
    };
    fill(strips, 4, operation);
}

void NSRectClip(NSRect rect) { CGContextClipToRect(currentPort(), toCG(rect)); }

void NSRectClipList(const NSRect* rects, NSInteger count) {
    if (!rects || count < 1) return;
    std::vector<CGRect> converted;
    for (NSInteger index = 0; index < count; ++index)
        converted.push_back(toCG(rects[index]));
    CGContextClipToRects(currentPort(), converted.data(), converted.size());
}
