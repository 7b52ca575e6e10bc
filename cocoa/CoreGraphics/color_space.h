#pragma once

#include "cocoa/CoreGraphics/object.h"

#include <CoreGraphics/CGColorSpace.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace cocoa::cg {

/// Its profile is never changed, so that spaces and cached conversions share it.
using Profile = std::shared_ptr<const std::vector<std::uint8_t>>;

class ColorSpace final : public Body {
public:
    enum class Origin { Device, Named, Profile };

    ColorSpace(CGColorSpaceModel model, CFStringRef name, Origin origin)
        : model(model)
        , name(name)
        , origin(origin) {}
    ColorSpace(CGColorSpaceModel model, Profile profile)
        : model(model)
        , origin(Origin::Profile)
        , profile(std::move(profile)) {}

    const CGColorSpaceModel model;
    /// A constant, never released; null for device spaces and those of a profile.
    const CFStringRef name = nullptr;
    const Origin origin;
    /// Null but for spaces of a profile.
    const Profile profile;

    std::size_t components() const {
        return model == kCGColorSpaceModelMonochrome ? 1 : model == kCGColorSpaceModelRGB ? 3 : 4;
    }
    bool equals(const Body& other) const override;
    std::size_t hash() const override;
};

inline ColorSpace* bodyOf(CGColorSpaceRef space) {
    return static_cast<ColorSpace*>(bodyOfObject(space));
}

} // namespace cocoa::cg
