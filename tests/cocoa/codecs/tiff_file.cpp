#include "tiff_file.h"

#include <gtest/gtest.h>
#include <tiffio.h>

namespace codecs_test {

namespace {

std::size_t type_size(std::uint16_t type) {
    return type == TIFF_SHORT ? 2 : type == TIFF_LONG || type == TIFF_RATIONAL ? 4 : 1;
}

} // namespace

TiffImage::TiffImage(std::uint32_t width, std::uint32_t height, std::uint16_t photometric,
                     std::uint16_t samples, std::uint16_t bits) {
    longs(TIFFTAG_IMAGEWIDTH, {width});
    longs(TIFFTAG_IMAGELENGTH, {height});
    longs(TIFFTAG_ROWSPERSTRIP, {height});
    shorts(TIFFTAG_PHOTOMETRIC, {photometric});
    shorts(TIFFTAG_SAMPLESPERPIXEL, {samples});
    shorts(TIFFTAG_BITSPERSAMPLE, std::vector<std::uint32_t>(samples, bits));
    shorts(TIFFTAG_COMPRESSION, {COMPRESSION_NONE});
}

TiffImage& TiffImage::shorts(std::uint16_t tag, const std::vector<std::uint32_t>& values) {
    fields_[tag] = {TIFF_SHORT, static_cast<std::uint32_t>(values.size()), values};
    return *this;
}

TiffImage& TiffImage::longs(std::uint16_t tag, const std::vector<std::uint32_t>& values) {
    fields_[tag] = {TIFF_LONG, static_cast<std::uint32_t>(values.size()), values};
    return *this;
}

TiffImage& TiffImage::rational(std::uint16_t tag, std::uint32_t numerator,
                               std::uint32_t denominator) {
    fields_[tag] = {TIFF_RATIONAL, 1, {numerator, denominator}};
    return *this;
}

TiffImage& TiffImage::bytes(std::uint16_t tag, const ByteVector& values) {
    fields_[tag] = {
        TIFF_UNDEFINED, static_cast<std::uint32_t>(values.size()), {values.begin(), values.end()}};
    return *this;
}

TiffImage& TiffImage::data(const ByteVector& content) {
    strips_.push_back(content);
    return *this;
}

TiffFile::TiffFile(ByteOrder order)
    : order_(order) {
    bytes_ = bytes_of(order == ByteOrder::Little ? "II" : "MM");
    append_16(bytes_, order, 42);
    append_32(bytes_, order, 0);
}

void TiffFile::append_field(const TiffImage::Field& field, ByteVector& inDirectory) {
    ByteVector content;
    for (const std::uint32_t value : field.values) {
        switch (type_size(field.type)) {
        case 1:
            content.push_back(static_cast<std::uint8_t>(value));
            break;
        case 2:
            append_16(content, order_, static_cast<std::uint16_t>(value));
            break;
        default:
            append_32(content, order_, value);
        }
    }
    append_16(inDirectory, order_, field.type);
    append_32(inDirectory, order_, field.count);
    if (content.size() <= 4) {
        content.resize(4);
        append(inDirectory, content);
    } else {
        append_32(inDirectory, order_, static_cast<std::uint32_t>(bytes_.size()));
        append(bytes_, content);
    }
}

TiffFile& TiffFile::page(TiffImage image) {
    std::vector<std::uint32_t> offsets;
    std::vector<std::uint32_t> sizes;
    for (const ByteVector& strip : image.strips_) {
        offsets.push_back(static_cast<std::uint32_t>(bytes_.size()));
        sizes.push_back(static_cast<std::uint32_t>(strip.size()));
        append(bytes_, strip);
    }
    const bool tiled = image.fields_.count(TIFFTAG_TILEWIDTH) > 0;
    image.longs(tiled ? TIFFTAG_TILEOFFSETS : TIFFTAG_STRIPOFFSETS, offsets);
    image.longs(tiled ? TIFFTAG_TILEBYTECOUNTS : TIFFTAG_STRIPBYTECOUNTS, sizes);
    if (tiled) image.fields_.erase(TIFFTAG_ROWSPERSTRIP);

    ByteVector directory;
    append_16(directory, order_, static_cast<std::uint16_t>(image.fields_.size()));
    for (const auto& [tag, field] : image.fields_) {
        append_16(directory, order_, tag);
        append_field(field, directory);
    }
    ByteVector link;
    append_32(link, order_, static_cast<std::uint32_t>(bytes_.size()));
    std::copy(link.begin(), link.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(linkAt_));
    append(bytes_, directory);
    linkAt_ = bytes_.size();
    append_32(bytes_, order_, 0);
    return *this;
}

TiffImage tiny_gray() {
    return TiffImage(3, 2, PHOTOMETRIC_MINISBLACK, 1, 8).data({1, 2, 3, 4, 5, 6});
}

ByteVector samples_16(ByteOrder order, std::initializer_list<std::uint16_t> samples) {
    ByteVector content;
    for (const std::uint16_t sample : samples)
        append_16(content, order, sample);
    return content;
}

ByteVector samples_32(ByteOrder order, std::initializer_list<std::uint32_t> samples) {
    ByteVector content;
    for (const std::uint32_t sample : samples)
        append_32(content, order, sample);
    return content;
}

ByteVector rows_by_libtiff(const std::string& path, unsigned page) {
    TIFF* tiff = TIFFOpen(path.c_str(), "r");
    EXPECT_TRUE(tiff && TIFFSetDirectory(tiff, page));
    if (!tiff) return {};
    std::uint32_t height = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
    const auto rowBytes = static_cast<std::size_t>(TIFFScanlineSize(tiff));
    ByteVector rows(rowBytes * height);
    for (std::uint32_t y = 0; y < height; ++y) {
        EXPECT_EQ(TIFFReadScanline(tiff, &rows[y * rowBytes], y, 0), 1);
    }
    TIFFClose(tiff);
    return rows;
}

ByteVector rendered_by_libtiff(const std::string& path) {
    TIFF* tiff = TIFFOpen(path.c_str(), "r");
    EXPECT_TRUE(tiff);
    if (!tiff) return {};
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
    std::vector<std::uint32_t> raster(std::size_t{width} * height);
    EXPECT_TRUE(
        TIFFReadRGBAImageOriented(tiff, width, height, raster.data(), ORIENTATION_TOPLEFT, 1));
    TIFFClose(tiff);
    ByteVector pixels;
    for (const std::uint32_t pixel : raster) {
        for (int shift = 0; shift < 32; shift += 8) {
            pixels.push_back(static_cast<std::uint8_t>(pixel >> shift));
        }
    }
    return pixels;
}

} // namespace codecs_test
