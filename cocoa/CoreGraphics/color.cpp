#include "cocoa/CoreGraphics/color.h"

#include <algorithm>
#include <functional>

namespace cocoa::cg {

Color::Color(CGColorSpaceRef space, const CGFloat* values)
    : space(Owned<CGColorSpaceRef>::retain(space)) {
    std::copy_n(values, count(), components.begin());
}

bool Color::equals(const Body& other) const {
    const auto& color = static_cast<const Color&>(other);
    return components == color.components &&
           bodyOf(space.get())->equals(*bodyOf(color.space.get()));
}

std::size_t Color::hash() const {
    std::size_t result = bodyOf(space.get())->hash();
    for (const CGFloat component : components) {
        result = result * 31 + std::hash<CGFloat>()(component);
    }
    return result;
}

namespace {

CGColorRef makeNamed(CFStringRef spaceName, const CGFloat* components) {
    const auto space = Owned<CGColorSpaceRef>::adopt(CGColorSpaceCreateWithName(spaceName));
    return CGColorCreate(space.get(), components);
}

} // namespace
} // namespace cocoa::cg

using namespace cocoa::cg;

CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components) {
    if (space == nullptr || components == nullptr) return nullptr;
    return (CGColorRef)makeObject(Kind::Color, std::make_unique<Color>(space, components));
}

CGColorRef CGColorCreateGenericGray(CGFloat gray, CGFloat alpha) {
    const CGFloat components[] = {gray, alpha};
    return makeNamed(kCGColorSpaceGenericGray, components);
}

CGColorRef CGColorCreateGenericRGB(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    const CGFloat components[] = {red, green, blue, alpha};
    return makeNamed(kCGColorSpaceGenericRGB, components);
}

CGColorRef CGColorCreateGenericCMYK(CGFloat cyan, CGFloat magenta, CGFloat yellow, CGFloat black,
                                    CGFloat alpha) {
    const CGFloat components[] = {cyan, magenta, yellow, black, alpha};
    return makeNamed(kCGColorSpaceGenericCMYK, components);
}

// A colour never changes, so that a copy may be the colour itself.
CGColorRef CGColorCreateCopy(CGColorRef color) { return CGColorRetain(color); }

CGColorRef CGColorCreateCopyWithAlpha(CGColorRef color, CGFloat alpha) {
    if (color == nullptr) return nullptr;
    const Color& original = *bodyOf(color);
    auto components = original.components;
    components[original.count() - 1] = alpha;
    return CGColorCreate(original.space.get(), components.data());
}

CGColorRef CGColorRetain(CGColorRef color) {
    retainObject(color);
    return color;
}

void CGColorRelease(CGColorRef color) { releaseObject(color); }

bool CGColorEqualToColor(CGColorRef first, CGColorRef second) {
    if (first == nullptr || second == nullptr) return first == second;
    return bodyOf(first)->equals(*bodyOf(second));
}

size_t CGColorGetNumberOfComponents(CGColorRef color) {
    return color != nullptr ? bodyOf(color)->count() : 0;
}

const CGFloat* CGColorGetComponents(CGColorRef color) {
    return color != nullptr ? bodyOf(color)->components.data() : nullptr;
}

CGFloat CGColorGetAlpha(CGColorRef color) { return color != nullptr ? bodyOf(color)->alpha() : 0; }

CGColorSpaceRef CGColorGetColorSpace(CGColorRef color) {
    return color != nullptr ? bodyOf(color)->space.get() : nullptr;
}
