#pragma once

/// Turning pictures as EXIF's orientations demand.

#include "cocoa/codecs/codec.h"

namespace cocoa::appkit {

/// Whether an upright picture has the stored one's sides exchanged.
constexpr bool exchangesSides(int orientation) { return orientation >= 5 && orientation <= 8; }

/// The layout of the upright picture.
codecs::PixelLayout uprightLayout(codecs::PixelLayout stored, int orientation);

/// Copies a stored picture upright. `out` has packed rows of the upright layout and is zeroed.
void turnUpright(const codecs::PixelLayout& stored, const std::uint8_t* in, int orientation,
                 std::uint8_t* out);

} // namespace cocoa::appkit
