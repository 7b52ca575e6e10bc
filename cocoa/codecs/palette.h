#pragma once

/// Tables of few colours for pictures of many.

#include "cocoa/codecs/gif_blocks.h"

namespace cocoa::codecs {

/// The pixels of an 8-bit picture one after the other: grey or RGB, with or without straight alpha.
struct ColorCursor {
    const std::uint8_t* at;
    std::size_t step;
    std::size_t green; ///< where its sample lies from the pixel's first
    std::size_t blue;
    std::size_t alpha; ///< 0: none

    ColorCursor(const Picture& picture, std::uint32_t row)
        : at(picture.pixels + row * picture.rowBytes)
        , step(static_cast<std::size_t>(picture.layout.samplesPerPixel()))
        , green(picture.layout.model == ColorModel::RGB ? 1 : 0)
        , blue(green * 2)
        , alpha(picture.layout.alpha == Alpha::None ? 0 : blue + 1) {}

    RGBColor color() const { return {at[0], at[green], at[blue]}; }
    std::uint8_t opacity() const { return alpha ? at[alpha] : 255; }
    void next() { at += step; }
};

/// Up to `count` colours with small squared distances to those of the picture's pixels that are
/// more than half opaque; at least one. Large pictures are looked at in samples.
std::vector<RGBColor> choose_palette(const Picture& picture, std::size_t count);

/// Looks colours up in a table of 1 to 256.
class NearestColor {
public:
    explicit NearestColor(std::span<const RGBColor> palette);

    /// The index of the entry nearest to a colour, or to one that differs by less than 4 a channel.
    std::uint8_t operator()(unsigned red, unsigned green, unsigned blue) {
        const std::size_t cell = std::size_t{red >> 2} << 12 | green >> 2 << 6 | blue >> 2;
        const std::uint16_t known = cells_[cell];
        return static_cast<std::uint8_t>(known != unknown ? known : search(cell));
    }

private:
    static constexpr std::uint16_t unknown = 0xFFFF;
    std::uint16_t search(std::size_t cell);

    std::array<std::array<std::int32_t, 256>, 3> channels_{};
    std::size_t count_;
    std::vector<std::uint16_t> cells_; ///< found when first asked for
};

} // namespace cocoa::codecs
