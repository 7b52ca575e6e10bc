#include "cocoa/codecs/exif.h"
#include "cocoa/codecs/formats.h"
#include "cocoa/codecs/png_deflate.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>

#include <png.h>
#include <zlib.h>

namespace cocoa::codecs {

namespace {

constexpr std::array<std::uint8_t, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

std::uint32_t big_endian_32(Bytes data, std::size_t at) {
    return std::uint32_t{data[at]} << 24 | std::uint32_t{data[at + 1]} << 16 |
           std::uint32_t{data[at + 2]} << 8 | data[at + 3];
}

/// What a walk over the chunks' lengths shows, before anything is inflated.
struct ChunkSurvey {
    std::uint64_t imageBytes = 0; ///< of deflated image data
    Bytes exif;
};

/// Nothing when the chunks do not reach a whole IEND, as in a truncated file.
std::optional<ChunkSurvey> survey_chunks(Bytes data) {
    ChunkSurvey survey;
    constexpr std::size_t frame = 12; // length, type and checksum
    std::size_t at = signature.size();
    while (data.size() - at >= frame) {
        const std::uint32_t length = big_endian_32(data, at);
        if (length > data.size() - at - frame) return std::nullopt;
        const auto type = std::string_view(reinterpret_cast<const char*>(&data[at + 4]), 4);
        if (type == "IEND") return survey;
        if (type == "IDAT") survey.imageBytes += length;
        if (type == "eXIf" &&
            crc32(0, &data[at + 4], length + 4) == big_endian_32(data, at + 8 + length)) {
            survey.exif = data.subspan(at + 8, length);
        }
        at += frame + length;
    }
    return std::nullopt;
}

[[noreturn]] void fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void ignore_warning(png_structp, png_const_charp) {}

/// libpng's state for one pass over the data. All that libpng can jump out of lies in functions of
/// this struct that own nothing themselves.
struct PngSession {
    png_structp png;
    png_infop info = nullptr;
    Bytes rest;

    explicit PngSession(Bytes data)
        : png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignore_warning))
        , rest(data) {
        if (png) info = png_create_info_struct(png);
    }
    ~PngSession() { png_destroy_read_struct(&png, &info, nullptr); }
    PngSession(const PngSession&) = delete;
    PngSession& operator=(const PngSession&) = delete;

    static void supply(png_structp png, png_bytep destination, size_t count) {
        auto* session = static_cast<PngSession*>(png_get_io_ptr(png));
        if (count > session->rest.size()) png_error(png, "end of data");
        std::memcpy(destination, session->rest.data(), count);
        session->rest = session->rest.subspan(count);
    }

    bool read_header() {
        if (!info || setjmp(png_jmpbuf(png))) return false;
        png_set_read_fn(png, this, supply);
        constexpr auto widest = static_cast<png_uint_32>(maximumPixels);
        png_set_user_limits(png, widest, widest);
        constexpr png_alloc_size_t maximumChunk = 64 << 20;
        png_set_chunk_malloc_max(png, maximumChunk);
        // Nobody asks for these, and compressed text can be made to swell.
        static constexpr png_byte unused[] = "tEXt\0zTXt\0iTXt\0sPLT\0hIST\0eXIf";
        png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, unused, sizeof unused / 5);
        png_read_info(png, info);
        return true;
    }

    /// `passes` of rows into the caller's memory.
    bool read_rows(std::uint8_t* pixels, std::size_t rowBytes, const PixelLayout& layout) {
        if (setjmp(png_jmpbuf(png))) return false;
        if (png_get_color_type(png, info) == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(png);
        if (png_get_valid(png, info, PNG_INFO_tRNS)) png_set_tRNS_to_alpha(png);
        if (std::endian::native == std::endian::little) png_set_swap(png);
        const int passes = png_set_interlace_handling(png);
        png_read_update_info(png, info);
        if (png_get_rowbytes(png, info) != layout.packedRowBytes()) return false;
        for (int pass = 0; pass < passes; ++pass) {
            std::uint8_t* row = pixels;
            for (std::uint32_t y = 0; y < layout.height; ++y, row += rowBytes) {
                png_read_row(png, row, nullptr);
            }
        }
        png_read_end(png, nullptr);
        return true;
    }
};

PixelLayout layout_of(const PngSession& session) {
    const int colorType = png_get_color_type(session.png, session.info);
    const bool transparentColor = png_get_valid(session.png, session.info, PNG_INFO_tRNS) != 0;
    const bool palette = colorType == PNG_COLOR_TYPE_PALETTE;
    const int depth = png_get_bit_depth(session.png, session.info);
    PixelLayout layout;
    layout.width = png_get_image_width(session.png, session.info);
    layout.height = png_get_image_height(session.png, session.info);
    layout.model = colorType & PNG_COLOR_MASK_COLOR ? ColorModel::RGB : ColorModel::Gray;
    layout.alpha =
        colorType & PNG_COLOR_MASK_ALPHA || transparentColor ? Alpha::Straight : Alpha::None;
    // libpng widens what a transparent colour or a palette makes of packed samples.
    const bool widened = palette || (transparentColor && depth < 8);
    layout.bitsPerSample = static_cast<std::uint8_t>(widened ? 8 : depth);
    return layout;
}

class PngReader : public Reader {
public:
    PngReader(Bytes data, PageInfo info, bool quick)
        : data_(data)
        , info_(std::move(info))
        , quick_(quick) {}

    const PageInfo& page(std::size_t) const override { return info_; }

    bool read(std::size_t index, int, std::uint8_t* pixels, std::size_t rowBytes) override {
        if (index != 0 || !pixels || rowBytes < info_.layout.packedRowBytes()) return false;
        if (quick_ && read_png_image_data(data_, info_.layout, pixels, rowBytes)) return true;
        // Whatever is the matter, libpng knows best what of the rows is good.
        PngSession session(data_);
        return session.read_header() && session.read_rows(pixels, rowBytes, info_.layout);
    }

private:
    Bytes data_;
    PageInfo info_;
    bool quick_; ///< the rows are stored one after the other as they are given
};

} // namespace

bool sniff_png(Bytes data) {
    return data.size() >= signature.size() &&
           std::equal(signature.begin(), signature.end(), data.begin());
}

std::unique_ptr<Reader> open_png(Bytes data) {
    if (!sniff_png(data)) return nullptr;
    const auto survey = survey_chunks(data);
    if (!survey) return nullptr;
    PngSession session(data);
    if (!session.read_header()) return nullptr;

    PageInfo info;
    info.layout = layout_of(session);
    if (!acceptable_size(info.layout.width, info.layout.height)) return nullptr;
    // Deflate makes at most 1032 bytes of one, so less data than this cannot be the image.
    constexpr std::uint64_t mostDeflation = 1032;
    const std::uint64_t storedRowBytes = png_get_rowbytes(session.png, session.info);
    if (storedRowBytes * info.layout.height / mostDeflation > survey->imageBytes) return nullptr;

    png_uint_32 x = 0;
    png_uint_32 y = 0;
    int unit = PNG_RESOLUTION_UNKNOWN;
    if (png_get_pHYs(session.png, session.info, &x, &y, &unit) && unit == PNG_RESOLUTION_METER) {
        info.dpiX = dots_per_inch(x);
        info.dpiY = dots_per_inch(y);
    }
    double gamma = 0;
    if (png_get_gAMA(session.png, session.info, &gamma)) info.gamma = gamma;
    png_charp name = nullptr;
    int method = 0;
    png_bytep profile = nullptr;
    png_uint_32 length = 0;
    if (png_get_iCCP(session.png, session.info, &name, &method, &profile, &length)) {
        info.iccProfile.assign(profile, profile + length);
    }
    info.exif.assign(survey->exif.begin(), survey->exif.end());
    info.orientation = exif_summary(info.exif).orientation;
    const bool quick = fits_png_deflate(info.layout) &&
                       storedRowBytes == info.layout.packedRowBytes() &&
                       png_get_color_type(session.png, session.info) != PNG_COLOR_TYPE_PALETTE &&
                       png_get_interlace_type(session.png, session.info) == PNG_INTERLACE_NONE;
    return std::make_unique<PngReader>(data, std::move(info), quick);
}

} // namespace cocoa::codecs
