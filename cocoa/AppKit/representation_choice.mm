#include "cocoa/AppKit/representation_choice.h"

#include "cocoa/AppKit/color_spaces.h"
#include "cocoa/AppKit/graphics.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace cocoa::appkit {
namespace {

using Candidates = std::vector<NSImageRep*>;

/// What is left of the float noise of sizes, in pixels.
constexpr CGFloat tolerance = CGFloat(1e-3);

bool hasPixels(NSImageRep* rep) {
    return
        [rep pixelsWide] != NSImageRepMatchesDevice && [rep pixelsHigh] != NSImageRepMatchesDevice;
}

/// Spaces without a name of fixed components are taken for coloured ones.
bool isColorSpace(NSString* name) {
    const auto space = namedSpace(name);
    return !space || space->model != ColorModel::Gray;
}

double area(NSImageRep* rep) {
    return static_cast<double>([rep pixelsWide]) * static_cast<double>([rep pixelsHigh]);
}

/// Those for which it holds; all when it holds for none.
template <class Predicate>
void prefer(Candidates& candidates, Predicate holds) {
    if (std::any_of(candidates.begin(), candidates.end(), holds))
        std::erase_if(candidates, [&](NSImageRep* rep) { return !holds(rep); });
}

/// Those whose measure is the least.
template <class Measure>
void keepLeast(Candidates& candidates, Measure measure) {
    const auto least =
        std::min_element(candidates.begin(), candidates.end(),
                         [&](NSImageRep* a, NSImageRep* b) { return measure(a) < measure(b); });
    if (least == candidates.end()) return;
    const auto wanted = measure(*least);
    std::erase_if(candidates, [&](NSImageRep* rep) { return measure(rep) != wanted; });
}

/// One side against that of the device.
class Side {
public:
    explicit Side(CGFloat device)
        : device_(std::max(device, CGFloat(1))) {}

    bool isMultiple(NSInteger own) const {
        const CGFloat times = std::round(static_cast<CGFloat>(own) / device_);
        return times >= 1 && std::abs(static_cast<CGFloat>(own) - times * device_) < 1;
    }
    bool isExact(NSInteger own) const { return std::abs(static_cast<CGFloat>(own) - device_) < 1; }
    bool isEnough(NSInteger own) const {
        return static_cast<CGFloat>(own) >= std::floor(device_ + tolerance);
    }

private:
    CGFloat device_;
};

void preferResolution(Candidates& candidates, const Device& device, const ChoiceRules& rules) {
    const Side width(device.pixels.width);
    const Side height(device.pixels.height);
    const auto matches = [&](NSImageRep* rep) {
        if (!hasPixels(rep)) return false;
        if (width.isExact([rep pixelsWide]) && height.isExact([rep pixelsHigh])) return true;
        return rules.matchesOnMultipleResolution && width.isMultiple([rep pixelsWide]) &&
               height.isMultiple([rep pixelsHigh]);
    };
    if (std::any_of(candidates.begin(), candidates.end(), matches)) {
        prefer(candidates, matches);
        keepLeast(candidates, area);
        return;
    }
    prefer(candidates,
           [&](NSImageRep* rep) { return hasPixels(rep) != rules.usesEPSOnResolutionMismatch; });
    const auto suffices = [&](NSImageRep* rep) {
        return width.isEnough([rep pixelsWide]) && height.isEnough([rep pixelsHigh]);
    };
    if (std::any_of(candidates.begin(), candidates.end(), suffices)) {
        prefer(candidates, suffices);
        keepLeast(candidates, area);
    } else {
        keepLeast(candidates, [](NSImageRep* rep) { return -area(rep); });
    }
}

} // namespace

Device deviceOf(NSGraphicsContext* context, CGSize size) {
    Device device{.pixels = deviceSize(context, size)};
    CGContextRef port = static_cast<CGContextRef>([context graphicsPort]);
    if (!port) return device;
    device.isColor =
        CGColorSpaceGetModel(CGBitmapContextGetColorSpace(port)) != kCGColorSpaceModelMonochrome;
    device.bitsPerSample = static_cast<NSInteger>(CGBitmapContextGetBitsPerComponent(port));
    return device;
}

Device deviceOf(NSDictionary* description, NSSize size) {
    constexpr CGFloat pointsAnInch = 72;
    Device device{.pixels = CGSizeMake(size.width, size.height)};
    id resolution = [description objectForKey:NSDeviceResolution];
    if ([resolution respondsToSelector:@selector(sizeValue)]) {
        const NSSize dotsAnInch = [resolution sizeValue];
        if (dotsAnInch.width > 0 && dotsAnInch.height > 0)
            device.pixels = CGSizeMake(size.width * dotsAnInch.width / pointsAnInch,
                                       size.height * dotsAnInch.height / pointsAnInch);
    }
    id space = [description objectForKey:NSDeviceColorSpaceName];
    if ([space isKindOfClass:[NSString class]]) device.isColor = isColorSpace(space);
    id bits = [description objectForKey:NSDeviceBitsPerSample];
    if ([bits respondsToSelector:@selector(integerValue)])
        device.bitsPerSample = [bits integerValue];
    return device;
}

NSImageRep* chooseRepresentation(NSArray* representations, const Device& device,
                                 const ChoiceRules& rules) {
    Candidates candidates;
    for (NSUInteger index = 0; index < [representations count]; ++index)
        candidates.push_back([representations objectAtIndex:index]);
    if (candidates.empty()) return nil;

    const auto matchesColor = [&](NSImageRep* rep) {
        return isColorSpace([rep colorSpaceName]) == device.isColor;
    };
    if (rules.prefersColorMatch) prefer(candidates, matchesColor);
    preferResolution(candidates, device, rules);
    prefer(candidates, matchesColor);
    prefer(candidates,
           [&](NSImageRep* rep) { return [rep bitsPerSample] == device.bitsPerSample; });
    keepLeast(candidates, [](NSImageRep* rep) { return -[rep bitsPerSample]; });
    return candidates.front();
}

} // namespace cocoa::appkit
