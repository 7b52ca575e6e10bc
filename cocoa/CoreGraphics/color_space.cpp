#include "cocoa/CoreGraphics/color_space.h"

#include "cocoa/CoreGraphics/data_provider.h"

#include <lcms2.h>

#include <functional>
#include <span>
#include <string_view>

namespace cocoa::cg {
namespace {

CGColorSpaceRef makeSpace(CGColorSpaceModel model, CFStringRef name, ColorSpace::Origin origin) {
    return (CGColorSpaceRef)makeObject(Kind::ColorSpace,
                                       std::make_unique<ColorSpace>(model, name, origin));
}

/// Unknown for data that is no profile or is one of another kind of colours.
CGColorSpaceModel modelOfProfile(std::span<const std::uint8_t> bytes) {
    if (bytes.size() > UINT32_MAX) return kCGColorSpaceModelUnknown;
    cmsHPROFILE profile =
        cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size()));
    if (profile == nullptr) return kCGColorSpaceModelUnknown;
    CGColorSpaceModel model = kCGColorSpaceModelUnknown;
    switch (cmsGetColorSpace(profile)) {
    case cmsSigGrayData:
        model = kCGColorSpaceModelMonochrome;
        break;
    case cmsSigRgbData:
        model = kCGColorSpaceModelRGB;
        break;
    case cmsSigCmykData:
        model = kCGColorSpaceModelCMYK;
        break;
    default:
        break;
    }
    cmsCloseProfile(profile);
    return model;
}

CGColorSpaceRef makeSpaceOfProfile(std::span<const std::uint8_t> bytes) {
    const CGColorSpaceModel model = modelOfProfile(bytes);
    if (model == kCGColorSpaceModelUnknown) return nullptr;
    auto profile = std::make_shared<const std::vector<std::uint8_t>>(bytes.begin(), bytes.end());
    return (CGColorSpaceRef)makeObject(Kind::ColorSpace,
                                       std::make_unique<ColorSpace>(model, std::move(profile)));
}

} // namespace

bool ColorSpace::equals(const Body& other) const {
    const auto& space = static_cast<const ColorSpace&>(other);
    if (model != space.model || origin != space.origin || name != space.name) return false;
    return profile == space.profile || (profile && space.profile && *profile == *space.profile);
}

std::size_t ColorSpace::hash() const {
    if (profile) {
        const std::string_view text(reinterpret_cast<const char*>(profile->data()),
                                    profile->size());
        return std::hash<std::string_view>()(text);
    }
    return std::hash<const void*>()(name) * 8 + static_cast<std::size_t>(model);
}

} // namespace cocoa::cg

using namespace cocoa::cg;

CGColorSpaceRef CGColorSpaceCreateDeviceGray(void) {
    return makeSpace(kCGColorSpaceModelMonochrome, nullptr, ColorSpace::Origin::Device);
}

CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void) {
    return makeSpace(kCGColorSpaceModelRGB, nullptr, ColorSpace::Origin::Device);
}

CGColorSpaceRef CGColorSpaceCreateDeviceCMYK(void) {
    return makeSpace(kCGColorSpaceModelCMYK, nullptr, ColorSpace::Origin::Device);
}

CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name) {
    const struct {
        CFStringRef name;
        CGColorSpaceModel model;
    } named[] = {
        {kCGColorSpaceGenericGray, kCGColorSpaceModelMonochrome},
        {kCGColorSpaceGenericGrayGamma2_2, kCGColorSpaceModelMonochrome},
        {kCGColorSpaceGenericRGB, kCGColorSpaceModelRGB},
        {kCGColorSpaceGenericCMYK, kCGColorSpaceModelCMYK},
        {kCGColorSpaceSRGB, kCGColorSpaceModelRGB},
    };
    if (name == nullptr) return nullptr;
    for (const auto& known : named) {
        if (CFEqual(name, known.name)) {
            return makeSpace(known.model, known.name, ColorSpace::Origin::Named);
        }
    }
    return nullptr;
}

CGColorSpaceRef CGColorSpaceCreateICCBased(size_t componentCount, const CGFloat*,
                                           CGDataProviderRef profile, CGColorSpaceRef alternate) {
    if (profile != nullptr) {
        auto space = Owned<CGColorSpaceRef>::adopt(makeSpaceOfProfile(bodyOf(profile)->bytes()));
        if (space && bodyOf(space.get())->components() == componentCount) return space.release();
    }
    if (CGColorSpaceGetNumberOfComponents(alternate) != componentCount) return nullptr;
    return CGColorSpaceRetain(alternate);
}

CGColorSpaceRef CGColorSpaceCreateWithICCProfile(CFDataRef profile) {
    if (profile == nullptr) return nullptr;
    return makeSpaceOfProfile(
        {CFDataGetBytePtr(profile), static_cast<std::size_t>(CFDataGetLength(profile))});
}

CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space) {
    retainObject(space);
    return space;
}

void CGColorSpaceRelease(CGColorSpaceRef space) { releaseObject(space); }

size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space) {
    return space != nullptr ? bodyOf(space)->components() : 0;
}

CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space) {
    return space != nullptr ? bodyOf(space)->model : kCGColorSpaceModelUnknown;
}

CFStringRef CGColorSpaceCopyName(CGColorSpaceRef space) {
    if (space == nullptr) return nullptr;
    return (CFStringRef)retainObject(bodyOf(space)->name);
}

CFDataRef CGColorSpaceCopyICCProfile(CGColorSpaceRef space) {
    if (space == nullptr || !bodyOf(space)->profile) return nullptr;
    const auto& bytes = *bodyOf(space)->profile;
    return CFDataCreate(kCFAllocatorDefault, bytes.data(), static_cast<CFIndex>(bytes.size()));
}
