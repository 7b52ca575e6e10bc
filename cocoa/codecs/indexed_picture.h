#pragma once

/// Pictures as indices into a table of colours.

#include "cocoa/codecs/palette.h"

namespace cocoa::codecs {

struct IndexedPicture {
    std::vector<RGBColor> palette;     ///< 1 to 256, the clear one included
    int transparentIndex = -1;         ///< -1: no pixel is clear
    std::vector<std::uint8_t> indices; ///< rows without padding
};

/// Exact where the opaque pixels have few enough colours, else with the errors spread over the
/// neighbours. Pixels of some opacity become clear or opaque, by halves or, with
/// `ditherTransparency`, in a pattern of the same opacity on average. A `colorTable` is taken as it
/// is. Throws std::bad_alloc.
IndexedPicture indexed(const Picture& picture, const EncodeOptions& options);

} // namespace cocoa::codecs
