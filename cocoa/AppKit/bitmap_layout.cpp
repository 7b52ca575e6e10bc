#include "cocoa/AppKit/bitmap_layout.h"

#include <cstring>
#include <limits>

namespace cocoa::appkit {
namespace {

// Enough for every bitmap of the most pixels in 32-bit floats; no size below overflows 64 bits.
constexpr std::uint64_t maximumBytes = std::uint64_t{1} << 36;
constexpr std::int64_t maximumBitsPerPixel = 256;

int colorSamplesOf(ColorModel model) {
    switch (model) {
    case ColorModel::Gray:
        return 1;
    case ColorModel::RGB:
        return 3;
    case ColorModel::CMYK:
        return 4;
    }
    return 0;
}

bool isDepth(std::int64_t bits, bool floatingPoint) {
    if (floatingPoint) return bits == 32;
    return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 12 || bits == 16;
}

} // namespace

codecs::PixelLayout BitmapLayout::pixelLayout() const {
    codecs::PixelLayout pixels;
    pixels.width = width;
    pixels.height = height;
    pixels.model = model;
    pixels.alpha = alpha();
    pixels.bitsPerSample = static_cast<std::uint8_t>(bitsPerSample > 8 ? 16 : bitsPerSample);
    return pixels;
}

bool BitmapLayout::hasPixelLayout() const {
    return !planar && !floatingPoint && !zeroIsWhite && bitsPerSample != 12 &&
           !(hasAlpha && alphaFirst) && bitsPerPixel == bitsPerSample * samplesPerPixel;
}

std::optional<BitmapLayout> makeLayout(const LayoutRequest& request) {
    constexpr std::int64_t maximumSide = std::numeric_limits<std::int32_t>::max();
    if (request.width < 1 || request.width > maximumSide) return std::nullopt;
    if (request.height < 1 || request.height > maximumSide) return std::nullopt;
    if (!isDepth(request.bitsPerSample, request.floatingPoint)) return std::nullopt;
    if (request.samplesPerPixel != colorSamplesOf(request.model) + (request.hasAlpha ? 1 : 0))
        return std::nullopt;

    const auto neededBits =
        request.planar ? request.bitsPerSample : request.bitsPerSample * request.samplesPerPixel;
    const auto bitsPerPixel = request.bitsPerPixel == 0 ? neededBits : request.bitsPerPixel;
    if (bitsPerPixel < neededBits || bitsPerPixel > maximumBitsPerPixel) return std::nullopt;
    if (request.planar && bitsPerPixel != neededBits) return std::nullopt;
    // Whole bytes are read as bytes, so a pixel of them starts on one.
    if (request.bitsPerSample % 8 == 0 && bitsPerPixel % 8 != 0) return std::nullopt;

    const auto neededRow = (request.width * bitsPerPixel + 7) / 8;
    const auto bytesPerRow = request.bytesPerRow == 0 ? neededRow : request.bytesPerRow;
    if (bytesPerRow < neededRow) return std::nullopt;

    const auto rows = static_cast<std::uint64_t>(request.height) *
                      static_cast<std::uint64_t>(request.planar ? request.samplesPerPixel : 1);
    if (static_cast<std::uint64_t>(bytesPerRow) > maximumBytes / rows) return std::nullopt;
    if (static_cast<std::uint64_t>(bytesPerRow) * rows >
        static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max()))
        return std::nullopt;

    BitmapLayout layout;
    layout.width = static_cast<std::uint32_t>(request.width);
    layout.height = static_cast<std::uint32_t>(request.height);
    layout.model = request.model;
    layout.zeroIsWhite = request.zeroIsWhite;
    layout.bitsPerSample = static_cast<int>(request.bitsPerSample);
    layout.samplesPerPixel = static_cast<int>(request.samplesPerPixel);
    layout.hasAlpha = request.hasAlpha;
    layout.alphaFirst = request.alphaFirst;
    layout.straightAlpha = request.straightAlpha;
    layout.floatingPoint = request.floatingPoint;
    layout.planar = request.planar;
    layout.bitsPerPixel = static_cast<int>(bitsPerPixel);
    layout.bytesPerRow = static_cast<std::size_t>(bytesPerRow);
    return layout;
}

std::optional<BitmapLayout> layoutOf(const codecs::PixelLayout& pixels) {
    return makeLayout({
        .width = pixels.width,
        .height = pixels.height,
        .model = pixels.model,
        .bitsPerSample = pixels.bitsPerSample,
        .samplesPerPixel = pixels.samplesPerPixel(),
        .hasAlpha = pixels.alpha != codecs::Alpha::None,
        .straightAlpha = pixels.alpha == codecs::Alpha::Straight,
    });
}

BitmapPixels BitmapPixels::allocate(const BitmapLayout& layout) {
    BitmapPixels pixels;
    pixels.memory.reset(static_cast<std::uint8_t*>(std::calloc(1, layout.totalBytes())));
    if (!pixels.memory) return pixels;
    for (int plane = 0; plane < layout.planeCount(); ++plane)
        pixels.planes[static_cast<std::size_t>(plane)] =
            pixels.memory.get() + layout.bytesPerPlane() * static_cast<std::size_t>(plane);
    return pixels;
}

BitmapPixels BitmapPixels::copy(const BitmapLayout& layout, const ConstPlanes& planes) {
    BitmapPixels pixels = allocate(layout);
    if (!pixels) return pixels;
    for (int plane = 0; plane < layout.planeCount(); ++plane) {
        const auto index = static_cast<std::size_t>(plane);
        std::memcpy(pixels.planes[index], planes[index], layout.bytesPerPlane());
    }
    return pixels;
}

} // namespace cocoa::appkit
