#include "files.h"

#include "cocoa/codecs/jpeg_file.h"
#include "cocoa/codecs/png_file.h"
#include "cocoa/codecs/tiff_file.h"

namespace appkit_test {

using namespace codecs_test;

namespace {

void append(ByteVector& target, const Pixel& pixel) {
    for (const int sample : {pixel.red, pixel.green, pixel.blue})
        target.push_back(static_cast<std::uint8_t>(sample));
}

TiffImage grayPage(std::uint32_t width, std::uint32_t height, const ByteVector& samples) {
    return TiffImage(width, height, PHOTOMETRIC_MINISBLACK, 1, 8).data(samples);
}

ByteVector count(std::uint8_t last) {
    ByteVector numbers;
    for (std::uint8_t number = 1; number <= last; ++number)
        numbers.push_back(number);
    return numbers;
}

} // namespace

ByteVector fourColorPNG() {
    return PngFile(2, 2, 8, PngRGB)
        .rows({{255, 0, 0, 0, 255, 0}, {0, 0, 255, 255, 255, 255}})
        .end();
}

ByteVector onePixelPNG(const Pixel& pixel) {
    ByteVector row;
    append(row, pixel);
    row.push_back(static_cast<std::uint8_t>(pixel.alpha));
    return PngFile(1, 1, 8, PngRGBA).rows({row}).end();
}

ByteVector pngWithDensity(std::uint32_t pixelsAMeterX, std::uint32_t pixelsAMeterY) {
    ByteVector density;
    append_32(density, ByteOrder::Big, pixelsAMeterX);
    append_32(density, ByteOrder::Big, pixelsAMeterY);
    density.push_back(1);
    return PngFile(4, 2, 8, PngGray)
        .chunk("pHYs", density)
        .rows({{1, 2, 3, 4}, {5, 6, 7, 8}})
        .end();
}

ByteVector quarteredJPEG(std::uint8_t orientation) {
    ByteVector samples;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 32; ++x)
            append(samples, y < 8 ? (x < 16 ? red : green) : (x < 16 ? blue : white));
    return make_jpeg({.width = 32,
                      .height = 16,
                      .quality = 100,
                      .markers = {{JPEG_APP0 + 1, exif_marker(exif_block(orientation))}}},
                     samples);
}

ByteVector inkJPEG() {
    ByteVector samples;
    for (int pixel = 0; pixel < 64; ++pixel)
        codecs_test::append(samples, {255, 0, 255, 255}); // inverted, as such files are
    return make_jpeg({.width = 8,
                      .height = 8,
                      .given = JCS_CMYK,
                      .stored = JCS_CMYK,
                      .quality = 100,
                      .adobeMarker = true},
                     samples);
}

ByteVector twoPageTIFF() {
    return TiffFile(ByteOrder::Big)
        .page(grayPage(3, 2, count(6)))
        .page(grayPage(1, 1, {9}))
        .bytes();
}

ByteVector turnedTIFF(std::uint8_t orientation) {
    return TiffFile(ByteOrder::Little)
        .page(TiffImage(3, 2, PHOTOMETRIC_RGB, 3, 8)
                  .shorts(TIFFTAG_ORIENTATION, {orientation})
                  .data(count(18)))
        .bytes();
}

ByteVector tiffWithDensity(std::uint32_t dotsAnInch) {
    return TiffFile(ByteOrder::Little)
        .page(grayPage(3, 2, count(6))
                  .rational(TIFFTAG_XRESOLUTION, dotsAnInch, 1)
                  .rational(TIFFTAG_YRESOLUTION, dotsAnInch, 1)
                  .shorts(TIFFTAG_RESOLUTIONUNIT, {RESUNIT_INCH}))
        .bytes();
}

ByteVector premultipliedTIFF(const Pixel& pixel) {
    ByteVector row;
    append(row, pixel);
    row.push_back(static_cast<std::uint8_t>(pixel.alpha));
    return TiffFile(ByteOrder::Little)
        .page(TiffImage(1, 1, PHOTOMETRIC_RGB, 4, 8)
                  .shorts(TIFFTAG_EXTRASAMPLES, {EXTRASAMPLE_ASSOCALPHA})
                  .data(row))
        .bytes();
}

} // namespace appkit_test
