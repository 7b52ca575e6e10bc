#pragma once

/// Brings the samples of a TIFF's rows into those of a `PixelLayout`.

#include "cocoa/codecs/codec.h"

#include <array>

namespace cocoa::codecs {

/// How a file's samples become the layout's.
struct SampleConversion {
    enum class Kind : std::uint8_t {
        Copy,
        Invert,    ///< of the colour samples, for files whose white is 0
        Palette,   ///< 8-bit red, green, blue out of `palette`
        HighHalf,  ///< 32-bit integers to 16 bits
        FromFloat, ///< single-precision floats, 0 to 1, to 16 bits
    };
    Kind kind = Kind::Copy;
    std::uint8_t fileBits = 8; ///< a sample: 1, 2, 4, 8, 16 or 32
    std::vector<std::array<std::uint8_t, 3>> palette;
};

/// A stretch of one file row: `count` pixels of `samplesPerPixel` samples each.
struct FileRow {
    const std::uint8_t* bytes;
    std::uint32_t count;
    int samplesPerPixel;
};

/// Where it goes: pixels from `x` on of a row of the layout, starting with one of its samples.
struct LayoutRow {
    std::uint8_t* bytes;
    std::uint32_t x;
    int samplesPerPixel;
    int colorSamples;
    int bitsPerSample;
};

/// Moves sample `fileSample` of every pixel of `from` to sample `layoutSample` of `to`, converted;
/// for a palette, to three samples from there on.
void place_sample(const SampleConversion& conversion, const FileRow& from, int fileSample,
                  const LayoutRow& to, int layoutSample);

} // namespace cocoa::codecs
