#pragma once

/// How the samples of a picture lie in memory.

#include <CoreGraphics/CGImage.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace cocoa::cg {

enum class AlphaKind : std::uint8_t { None, Straight, Premultiplied };

/// Samples are read from a row as a stream of bits, the highest bit of byte 0 first, after the
/// bytes of every `swapUnit` were put into big-endian order: byte i of the stream is byte `i ^
/// (swapUnit - 1)` of the row.
struct PixelLayout {
    std::size_t width = 0;
    std::size_t height = 0;
    std::size_t bytesPerRow = 0;
    CGColorSpaceModel model = kCGColorSpaceModelUnknown; ///< unknown: alpha only
    AlphaKind alpha = AlphaKind::None;
    std::uint8_t colorSamples = 0;
    std::uint8_t bitsPerSample = 8;
    bool isFloat = false;
    std::uint8_t swapUnit = 1; ///< 1, 2 or 4
    std::uint8_t bitsPerPixel = 8;
    std::uint8_t firstColorBit = 0; ///< within a pixel
    std::uint8_t alphaBit = 0;

    bool alphaOnly() const { return colorSamples == 0; }
    /// What a row must hold at least.
    std::uint64_t usedBytesPerRow() const;
    /// What memory must hold at least: the last row may lack its padding. Nothing when that is more
    /// than memory can be.
    std::optional<std::size_t> usedBytes() const;
};

/// The parameters of CGImageCreate and CGBitmapContextCreate; nothing when they do not fit
/// together. `model` is unknown when there is no colour space, as only alpha-only pixels may have
/// it.
std::optional<PixelLayout> makeLayout(std::size_t width, std::size_t height,
                                      std::size_t bitsPerComponent, std::size_t bitsPerPixel,
                                      std::size_t bytesPerRow, CGColorSpaceModel model,
                                      CGBitmapInfo info);

} // namespace cocoa::cg
