#pragma once

/// The members of an icon file (.icns): a table of pictures, each under a type of four characters.
///
/// A member is a whole encoded picture, or samples of a side that its type tells. The samples of a
/// colour stand together, packed as runs: a count of 0 to 127 goes before one byte more than that
/// many, a count from 128 before one byte that stands count - 125 times. Colours of the older types
/// have their alpha in a second member, of bare bytes, or at least a mask of bits.

#include <cstdint>
#include <span>
#include <vector>

namespace cocoa::appkit {

struct IconPicture {
    int scale = 1; ///< pixels a point
    /// Of a whole encoded picture, in the file's memory; else empty.
    std::span<const std::uint8_t> encoded;
    int side = 0;                      ///< of samples, in pixels
    bool hasAlpha = false;             ///< the samples are RGBA, colours not multiplied; else RGB
    std::vector<std::uint8_t> samples; ///< rows from the top, without padding
};

/// The pictures that can be shown, whole encoded ones first, in the file's order. Members of other
/// kinds, and broken ones, are passed over. Empty for bytes that are no icon file.
std::vector<IconPicture> iconPictures(std::span<const std::uint8_t> file);

} // namespace cocoa::appkit
