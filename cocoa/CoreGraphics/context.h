#pragma once

#include "cocoa/CoreGraphics/color_space.h"
#include "cocoa/CoreGraphics/coverage.h"
#include "cocoa/CoreGraphics/matrix.h"
#include "cocoa/CoreGraphics/surface.h"

#include <CoreGraphics/CGBitmapContext.h>

#include <vector>

namespace cocoa::cg {

struct FillColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
};

struct GraphicsState {
    Matrix ctm;
    Region clip; ///< in pixels, y down
    FillColor fill;
    double alpha = 1;
    CGBlendMode mode = kCGBlendModeNormal;
    CGInterpolationQuality quality = kCGInterpolationDefault;
    bool antialias = true;
};

/// The fill colour with both alphas, as a working pixel.
std::uint32_t fillPixel(const GraphicsState& state);

/// Every context draws into a bitmap.
class Context final : public Body {
public:
    Surface surface;
    Owned<CGColorSpaceRef> space; ///< null when there is only alpha
    CGBitmapInfo bitmapInfo = 0;
    /// Called when the context goes.
    CGBitmapContextReleaseDataCallback releaseData = nullptr;
    void* releaseInfo = nullptr;
    GraphicsState state;
    std::vector<GraphicsState> saved;

    ~Context() override {
        if (releaseData != nullptr) releaseData(releaseInfo, surface.data);
    }

    const ColorSpace* colorSpace() const { return space ? bodyOf(space.get()) : nullptr; }
    /// From user space to pixels, y down.
    Matrix pixelMatrix() const {
        return concat(state.ctm, {1, 0, 0, -1, 0, static_cast<double>(surface.height)});
    }
    /// What of a rectangle of user space can be drawn on.
    Region regionOf(const CGRect& rect) const;
};

inline Context* bodyOf(CGContextRef context) {
    return static_cast<Context*>(bodyOfObject(context));
}

} // namespace cocoa::cg
