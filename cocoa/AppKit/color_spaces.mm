#include "cocoa/AppKit/color_spaces.h"

NSString* const NSCalibratedWhiteColorSpace = @"NSCalibratedWhiteColorSpace";
NSString* const NSCalibratedBlackColorSpace = @"NSCalibratedBlackColorSpace";
NSString* const NSCalibratedRGBColorSpace = @"NSCalibratedRGBColorSpace";
NSString* const NSDeviceWhiteColorSpace = @"NSDeviceWhiteColorSpace";
NSString* const NSDeviceBlackColorSpace = @"NSDeviceBlackColorSpace";
NSString* const NSDeviceRGBColorSpace = @"NSDeviceRGBColorSpace";
NSString* const NSDeviceCMYKColorSpace = @"NSDeviceCMYKColorSpace";
NSString* const NSCustomColorSpace = @"NSCustomColorSpace";

namespace cocoa::appkit {

std::optional<NamedSpace> namedSpace(NSString* name) {
    if ([name isEqual:NSCalibratedWhiteColorSpace])
        return NamedSpace{ColorModel::Gray, false, true};
    if ([name isEqual:NSDeviceWhiteColorSpace]) return NamedSpace{ColorModel::Gray, false, false};
    if ([name isEqual:NSCalibratedBlackColorSpace]) return NamedSpace{ColorModel::Gray, true, true};
    if ([name isEqual:NSDeviceBlackColorSpace]) return NamedSpace{ColorModel::Gray, true, false};
    if ([name isEqual:NSCalibratedRGBColorSpace]) return NamedSpace{ColorModel::RGB, false, true};
    if ([name isEqual:NSDeviceRGBColorSpace]) return NamedSpace{ColorModel::RGB, false, false};
    if ([name isEqual:NSDeviceCMYKColorSpace]) return NamedSpace{ColorModel::CMYK, false, false};
    return std::nullopt;
}

NSString* defaultSpaceName(ColorModel model) {
    switch (model) {
    case ColorModel::Gray:
        return NSCalibratedWhiteColorSpace;
    case ColorModel::RGB:
        return NSCalibratedRGBColorSpace;
    case ColorModel::CMYK:
        return NSDeviceCMYKColorSpace;
    }
    return nil;
}

NSColorSpace* colorSpaceOfName(NSString* name) {
    const auto space = namedSpace(name);
    if (!space) return nil;
    switch (space->model) {
    case ColorModel::Gray:
        return space->calibrated ? [NSColorSpace genericGrayColorSpace]
                                 : [NSColorSpace deviceGrayColorSpace];
    case ColorModel::RGB:
        return space->calibrated ? [NSColorSpace genericRGBColorSpace]
                                 : [NSColorSpace deviceRGBColorSpace];
    case ColorModel::CMYK:
        return [NSColorSpace deviceCMYKColorSpace];
    }
    return nil;
}

OwnedRef<CGColorSpaceRef> deviceSpace(ColorModel model) {
    using Space = OwnedRef<CGColorSpaceRef>;
    switch (model) {
    case ColorModel::Gray:
        return Space::adopt(CGColorSpaceCreateDeviceGray());
    case ColorModel::RGB:
        return Space::adopt(CGColorSpaceCreateDeviceRGB());
    case ColorModel::CMYK:
        return Space::adopt(CGColorSpaceCreateDeviceCMYK());
    }
    return {};
}

std::optional<ColorModel> modelOf(CGColorSpaceRef space) {
    switch (CGColorSpaceGetModel(space)) {
    case kCGColorSpaceModelMonochrome:
        return ColorModel::Gray;
    case kCGColorSpaceModelRGB:
        return ColorModel::RGB;
    case kCGColorSpaceModelCMYK:
        return ColorModel::CMYK;
    default:
        return std::nullopt;
    }
}

} // namespace cocoa::appkit
