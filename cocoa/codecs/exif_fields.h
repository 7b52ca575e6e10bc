#pragma once

/// The camera's settings in an EXIF block, as names and values.

#include "cocoa/codecs/codec.h"

#include <string>

namespace cocoa::codecs {

struct ExifField {
    enum class Kind : std::uint8_t { Integers, Fractions, Text };

    std::string_view name; ///< by which image properties are known: "ExposureTime"
    Kind kind = Kind::Integers;
    bool list = false; ///< meant as a list even of one number
    std::vector<double> numbers{};
    std::string text{}; ///< in UTF-8, or in whatever encoding the camera took for ASCII
};

/// The fields of the block's directory for EXIF, sorted by their tags: those that are known, hold
/// what they should, and say something of the picture (maker notes do not). None for a broken
/// block.
std::vector<ExifField> exif_fields(Bytes block);

/// A block of fields: those whose names are known and whose values are of the right kind, fractions
/// to nine digits. Empty when there are none.
std::vector<std::uint8_t> exif_block(std::span<const ExifField> fields);

/// The EXIF directory of a TIFF file, which lies at `offset`, as a block of its own; empty when it
/// is broken.
std::vector<std::uint8_t> exif_of_tiff(Bytes file, std::uint64_t offset);

} // namespace cocoa::codecs
