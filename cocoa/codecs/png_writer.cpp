#include "cocoa/codecs/formats.h"
#include "cocoa/codecs/output.h"
#include "cocoa/codecs/png_deflate.h"

#include <algorithm>
#include <bit>

#include <png.h>

namespace cocoa::codecs {

namespace {

[[noreturn]] void fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void ignore_warning(png_structp, png_const_charp) {}

/// libpng's state for one file. What libpng can jump out of owns nothing itself.
struct PngWriteSession {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignore_warning);
    png_infop info = nullptr;
    Output output;

    PngWriteSession() {
        if (png) info = png_create_info_struct(png);
    }
    ~PngWriteSession() { png_destroy_write_struct(&png, &info); }
    PngWriteSession(const PngWriteSession&) = delete;
    PngWriteSession& operator=(const PngWriteSession&) = delete;

    static void store(png_structp png, png_bytep source, size_t count) {
        auto* session = static_cast<PngWriteSession*>(png_get_io_ptr(png));
        if (!session->output.append(source, count)) png_error(png, "out of memory");
    }
    static void flush(png_structp) {}

    void describe(const Picture& picture, int colorType, bool interlaced) {
        const PixelLayout& layout = picture.layout;
        png_set_IHDR(png, info, layout.width, layout.height, layout.bitsPerSample, colorType,
                     interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        if (picture.dpiX > 0 && picture.dpiY > 0) {
            png_set_pHYs(png, info, dots_per_meter(picture.dpiX), dots_per_meter(picture.dpiY),
                         PNG_RESOLUTION_METER);
        }
        if (picture.gamma > 0) png_set_gAMA(png, info, std::min(picture.gamma, mostGamma));
        if (!picture.iccProfile.empty()) {
            png_set_iCCP(png, info, "ICC Profile", PNG_COMPRESSION_TYPE_BASE,
                         picture.iccProfile.data(),
                         static_cast<png_uint_32>(picture.iccProfile.size()));
        }
        if (!picture.exif.empty()) {
            // Taken by a pointer to variable bytes, but only copied.
            png_set_eXIf_1(png, info, static_cast<png_uint_32>(picture.exif.size()),
                           const_cast<png_bytep>(picture.exif.data()));
        }
    }

    /// What the format's numbers can hold, and more than makes sense.
    static constexpr double mostGamma = 20000;

    static png_uint_32 dots_per_meter(double dpi) {
        return static_cast<png_uint_32>(
            std::min(std::round(dpi * inchesPerMeter), double{PNG_UINT_31_MAX}));
    }

    bool write_head(const Picture& picture, int colorType, bool interlaced) {
        if (!info || setjmp(png_jmpbuf(png))) return false;
        png_set_write_fn(png, this, store, flush);
        const auto widest = static_cast<png_uint_32>(maximumPixels);
        png_set_user_limits(png, widest, widest);
        // A profile that libpng finds fault with is left out, the image still written.
        png_set_benign_errors(png, 1);
        // On photos this is three times as fast as the library's defaults, for a hundredth more
        // bytes.
        constexpr int quickLevel = 3;
        png_set_compression_level(png, quickLevel);
        if (picture.layout.bitsPerSample >= 8) {
            png_set_filter(png, PNG_FILTER_TYPE_BASE,
                           PNG_FILTER_NONE | PNG_FILTER_SUB | PNG_FILTER_UP);
        }
        describe(picture, colorType, interlaced);
        png_write_info(png, info);
        return true;
    }

    bool write_rows(const Picture& picture) {
        if (setjmp(png_jmpbuf(png))) return false;
        if (std::endian::native == std::endian::little) png_set_swap(png);
        const int passes = png_set_interlace_handling(png);
        for (int pass = 0; pass < passes; ++pass) {
            const std::uint8_t* row = picture.pixels;
            for (std::uint32_t y = 0; y < picture.layout.height; ++y, row += picture.rowBytes) {
                png_write_row(png, row);
            }
        }
        png_write_end(png, info);
        return true;
    }

    /// For image data that libpng does not know of.
    bool write_end_chunk() {
        if (setjmp(png_jmpbuf(png))) return false;
        constexpr png_byte name[] = {'I', 'E', 'N', 'D'};
        png_write_chunk(png, name, nullptr, 0);
        return true;
    }

    bool write(const Picture& picture, int colorType, bool interlaced) {
        if (!write_head(picture, colorType, interlaced)) return false;
        if (interlaced || !fits_png_deflate(picture.layout)) return write_rows(picture);
        return append_png_image_data(picture, output) && write_end_chunk();
    }
};

/// PNG's number for a layout, or -1: it has no CMYK, no premultiplied alpha, and packed samples
/// only in plain grey.
int color_type(const PixelLayout& layout) {
    const bool bytes = layout.bitsPerSample == 8 || layout.bitsPerSample == 16;
    const bool packed =
        layout.bitsPerSample == 1 || layout.bitsPerSample == 2 || layout.bitsPerSample == 4;
    const bool plainGray = layout.model == ColorModel::Gray && layout.alpha == Alpha::None;
    if (layout.model == ColorModel::CMYK || layout.alpha == Alpha::Premultiplied) return -1;
    if (!bytes && !(packed && plainGray)) return -1;
    return (layout.model == ColorModel::RGB ? PNG_COLOR_MASK_COLOR : 0) |
           (layout.alpha == Alpha::Straight ? PNG_COLOR_MASK_ALPHA : 0);
}

} // namespace

Encoded encode_png(std::span<const Picture> pages, const EncodeOptions& options) {
    if (pages.size() != 1 || !well_formed(pages.front())) return {};
    const int colorType = color_type(pages.front().layout);
    if (colorType < 0) return {};
    PngWriteSession session;
    if (!session.write(pages.front(), colorType, options.interlaced)) return {};
    return session.output.take();
}

} // namespace cocoa::codecs
