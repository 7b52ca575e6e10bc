#pragma once

/// TIFF files put together by hand, and read with the library's own calls as a second opinion.

#include "support.h"

#include <map>

#include <tiff.h>

namespace codecs_test {

/// One directory and the strips or tiles that it points to.
class TiffImage {
public:
    TiffImage(std::uint32_t width, std::uint32_t height, std::uint16_t photometric,
              std::uint16_t samples, std::uint16_t bits);

    TiffImage& shorts(std::uint16_t tag, const std::vector<std::uint32_t>& values);
    TiffImage& longs(std::uint16_t tag, const std::vector<std::uint32_t>& values);
    TiffImage& rational(std::uint16_t tag, std::uint32_t numerator, std::uint32_t denominator);
    TiffImage& bytes(std::uint16_t tag, const ByteVector& values);
    /// Adds a strip; a tile when the image has a tile width.
    TiffImage& data(const ByteVector& content);

private:
    friend class TiffFile;

    struct Field {
        std::uint16_t type;
        std::uint32_t count;
        std::vector<std::uint32_t> values;
    };
    std::map<std::uint16_t, Field> fields_; // sorted, as the format wants it
    std::vector<ByteVector> strips_;
};

class TiffFile {
public:
    explicit TiffFile(ByteOrder order);
    TiffFile& page(TiffImage image);
    const ByteVector& bytes() const { return bytes_; }

private:
    void append_field(const TiffImage::Field& field, ByteVector& inDirectory);

    ByteOrder order_;
    ByteVector bytes_;
    std::size_t linkAt_ = 4; ///< where the place of the next directory goes
};

/// A grey image of 3 by 2: 1, 2, 3; 4, 5, 6.
TiffImage tiny_gray();

/// 16-bit samples in a byte order.
ByteVector samples_16(ByteOrder order, std::initializer_list<std::uint16_t> samples);
ByteVector samples_32(ByteOrder order, std::initializer_list<std::uint32_t> samples);

/// The rows of a page as libtiff reads them, one after the other.
ByteVector rows_by_libtiff(const std::string& path, unsigned page);

/// The red, green, blue and alpha that libtiff makes of the first page.
ByteVector rendered_by_libtiff(const std::string& path);

} // namespace codecs_test
