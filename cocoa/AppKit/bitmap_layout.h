#pragma once

/// How the samples of a bitmap lie in memory, in the terms of NSBitmapImageRep.

#include "cocoa/codecs/codec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace cocoa::appkit {

using codecs::ColorModel;

inline constexpr int maximumPlanes = 5;
using Planes = std::array<std::uint8_t*, maximumPlanes>;
using ConstPlanes = std::array<const std::uint8_t*, maximumPlanes>;

struct BitmapLayout {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    ColorModel model = ColorModel::RGB;
    bool zeroIsWhite = false; ///< a grey sample says how black, not how white
    int bitsPerSample = 8;    ///< 1, 2, 4, 8, 12, 16; 32 for floats
    int samplesPerPixel = 3;
    bool hasAlpha = false;
    bool alphaFirst = false;
    bool straightAlpha = false; ///< colours are not multiplied by alpha
    bool floatingPoint = false;
    bool planar = false;
    int bitsPerPixel = 24; ///< in one plane
    std::size_t bytesPerRow = 0;

    int planeCount() const { return planar ? samplesPerPixel : 1; }
    int colorSamples() const { return samplesPerPixel - (hasAlpha ? 1 : 0); }
    int alphaIndex() const { return alphaFirst ? 0 : samplesPerPixel - 1; }
    int firstColorIndex() const { return hasAlpha && alphaFirst ? 1 : 0; }
    std::size_t bytesPerPlane() const { return bytesPerRow * height; }
    std::size_t totalBytes() const {
        return bytesPerPlane() * static_cast<std::size_t>(planeCount());
    }
    /// The greatest value of an integer sample.
    std::uint32_t maximumSample() const { return (std::uint32_t{1} << bitsPerSample) - 1; }

    codecs::Alpha alpha() const {
        if (!hasAlpha) return codecs::Alpha::None;
        return straightAlpha ? codecs::Alpha::Straight : codecs::Alpha::Premultiplied;
    }
    /// The same picture as codecs lay it out, at the next depth that they know.
    codecs::PixelLayout pixelLayout() const;
    /// Whether rows are already as `pixelLayout` says, or longer.
    bool hasPixelLayout() const;
};

/// What a caller asks for. `bytesPerRow` and `bitsPerPixel` of 0 mean as many as needed.
struct LayoutRequest {
    std::int64_t width = 0;
    std::int64_t height = 0;
    ColorModel model = ColorModel::RGB;
    bool zeroIsWhite = false;
    std::int64_t bitsPerSample = 8;
    std::int64_t samplesPerPixel = 3;
    bool hasAlpha = false;
    bool alphaFirst = false;
    bool straightAlpha = false;
    bool floatingPoint = false;
    bool planar = false;
    std::int64_t bytesPerRow = 0;
    std::int64_t bitsPerPixel = 0;
};

/// The layout; nothing when the numbers contradict each other or the memory could not be addressed.
std::optional<BitmapLayout> makeLayout(const LayoutRequest& request);

/// A codec's layout with rows one after the other; nothing when it is too large for memory.
std::optional<BitmapLayout> layoutOf(const codecs::PixelLayout& pixels);

/// The pixels: memory of its own, or a caller's in place.
struct BitmapPixels {
    struct Free {
        void operator()(std::uint8_t* bytes) const { std::free(bytes); }
    };
    std::unique_ptr<std::uint8_t, Free> memory; ///< empty when the planes are the caller's
    Planes planes{};

    explicit operator bool() const { return planes[0] != nullptr; }
    ConstPlanes constPlanes() const {
        return {planes[0], planes[1], planes[2], planes[3], planes[4]};
    }
    /// Zeroed memory for all planes, one after the other; empty when there is not enough.
    static BitmapPixels allocate(const BitmapLayout& layout);
    /// A copy in memory of its own; empty when there is not enough.
    static BitmapPixels copy(const BitmapLayout& layout, const ConstPlanes& planes);
};

} // namespace cocoa::appkit
