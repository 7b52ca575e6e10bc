#pragma once

/// The fields of an EXIF block that are known: tags, names and forms.

#include <cstdint>
#include <span>
#include <string_view>

namespace cocoa::codecs {

struct ExifTagInfo {
    /// As the block numbers them.
    enum class Type : std::uint8_t {
        Ascii = 2,
        Short = 3,
        Long = 4,
        Rational = 5,
        Undefined = 7,
        SignedRational = 10,
    };
    enum class Meaning : std::uint8_t {
        Plain,
        List,    ///< several numbers, or one that is a list all the same
        Version, ///< four digits
        Comment, ///< text led by eight bytes that name its encoding
    };

    std::uint16_t tag;
    std::string_view name; ///< by which image properties are known
    Type type;             ///< in which it is written; read is any
    Meaning meaning = Meaning::Plain;
};

/// The directory for EXIF in the order of its tags.
std::span<const ExifTagInfo> exif_tags();

} // namespace cocoa::codecs
