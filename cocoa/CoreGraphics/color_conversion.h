#pragma once

/// Conversions of colours between spaces.
///
/// A device space stands for whatever it is converted to, so that its colours pass unchanged within
/// a model; generic and sRGB colours are sRGB. Between models without a profile: gray is
/// 0.30 R + 0.59 G + 0.11 B, and a red of CMYK is (1 - cyan)(1 - black).

#include "cocoa/CoreGraphics/color_space.h"

#include <memory>

namespace cocoa::cg {

/// Turns rows of colours of one space into RGB of another, through a profile.
class ProfileConversion {
public:
    virtual ~ProfileConversion() = default;
    /// `source` holds `count` colours of the source space's components, 8 or 16 bits (in the
    /// machine's byte order) as asked for; `rgb` takes as many R, G, B triples of the same width.
    virtual void convert(const void* source, void* rgb, std::size_t count) const = 0;
};

/// The conversion to the RGB that pixels of `target` are composited in, for samples of 8 or 16
/// bits; null when no profile takes part in it. For a target that is not RGB that is sRGB.
/// Conversions are kept for the next caller, who may be on another thread.
std::shared_ptr<const ProfileConversion> profileConversion(const ColorSpace* source,
                                                           const ColorSpace* target, int bits,
                                                           CGColorRenderingIntent intent);

struct RGB {
    double red = 0;
    double green = 0;
    double blue = 0;
};

/// One colour, for filling. Components are cut to 0 to 1.
RGB convertColor(const ColorSpace& source, const CGFloat* components, const ColorSpace* target);

} // namespace cocoa::cg
