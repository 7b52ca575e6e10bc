#pragma once

/// EXIF blocks put together by hand.

#include "support.h"

namespace codecs_test {

/// The fields of the directory for EXIF.
class ExifBuilder {
public:
    explicit ExifBuilder(ByteOrder order = ByteOrder::Big)
        : order_(order) {}

    ExifBuilder& text(std::uint16_t tag, std::string_view text); ///< with a zero at its end
    ExifBuilder& shorts(std::uint16_t tag, const std::vector<std::uint16_t>& values);
    ExifBuilder& longs(std::uint16_t tag, const std::vector<std::uint32_t>& values);
    ExifBuilder& undefined(std::uint16_t tag, const ByteVector& bytes);
    using Fraction = std::pair<std::int32_t, std::int32_t>;
    ExifBuilder& rationals(std::uint16_t tag, const std::vector<Fraction>& values);
    ExifBuilder& signed_rationals(std::uint16_t tag, const std::vector<Fraction>& values);

    /// As it stands in JPEG and PNG files.
    ByteVector block() const;
    /// The directory and its values as they stand at an offset of a TIFF.
    ByteVector directory_at(std::size_t offset) const;

private:
    struct Field {
        std::uint16_t tag;
        std::uint16_t type;
        std::uint32_t count;
        ByteVector value;
    };
    ExifBuilder& fractions(std::uint16_t tag, std::uint16_t type,
                           const std::vector<Fraction>& values);

    ByteOrder order_;
    std::vector<Field> fields_;
};

/// A block of a picture taken at 1/250 second, aperture 8, ISO 200, on 2009-05-11.
ByteVector snapshot_exif();

} // namespace codecs_test
