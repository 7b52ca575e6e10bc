#pragma once

#include "cocoa/CoreGraphics/color_space.h"

#include <CoreGraphics/CGColor.h>

#include <array>

namespace cocoa::cg {

class Color final : public Body {
public:
    /// Components of the space and the alpha behind them.
    Color(CGColorSpaceRef space, const CGFloat* components);

    const Owned<CGColorSpaceRef> space;
    std::array<CGFloat, 5> components{};

    std::size_t count() const { return bodyOf(space.get())->components() + 1; }
    CGFloat alpha() const { return components[count() - 1]; }
    bool equals(const Body& other) const override;
    std::size_t hash() const override;
};

inline Color* bodyOf(CGColorRef color) { return static_cast<Color*>(bodyOfObject(color)); }

} // namespace cocoa::cg
