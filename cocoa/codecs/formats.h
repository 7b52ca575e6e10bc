#pragma once

/// The readers and writers that make up the codecs of `codecs.cpp`, one pair a format.

#include "cocoa/codecs/codec.h"

#include <cmath>

namespace cocoa::codecs {

bool sniff_png(Bytes data);
std::unique_ptr<Reader> open_png(Bytes data);
Encoded encode_png(std::span<const Picture> pages, const EncodeOptions& options);

bool sniff_jpeg(Bytes data);
std::unique_ptr<Reader> open_jpeg(Bytes data);
Encoded encode_jpeg(std::span<const Picture> pages, const EncodeOptions& options);

bool sniff_tiff(Bytes data);
std::unique_ptr<Reader> open_tiff(Bytes data);
Encoded encode_tiff(std::span<const Picture> pages, const EncodeOptions& options);

bool sniff_gif(Bytes data);
std::unique_ptr<Reader> open_gif(Bytes data);
Encoded encode_gif(std::span<const Picture> pages, const EncodeOptions& options);

bool sniff_bmp(Bytes data);
std::unique_ptr<Reader> open_bmp(Bytes data);
Encoded encode_bmp(std::span<const Picture> pages, const EncodeOptions& options);

/// True for sides that a page may have.
inline bool acceptable_size(std::uint64_t width, std::uint64_t height) {
    return width > 0 && height > 0 && width <= maximumPixels && height <= maximumPixels / width;
}

/// True for a picture whose rows lie where its layout says that they do.
inline bool well_formed(const Picture& picture) {
    const PixelLayout& layout = picture.layout;
    return picture.pixels && acceptable_size(layout.width, layout.height) &&
           picture.rowBytes >= layout.packedRowBytes();
}

/// As `well_formed`, for codecs that take rows.
inline bool well_formed_or_rows(const Picture& picture) {
    const PixelLayout& layout = picture.layout;
    return picture.rows ? acceptable_size(layout.width, layout.height) : well_formed(picture);
}

/// The rows of a picture, wherever they come from.
class PictureRows {
public:
    /// Throws std::bad_alloc.
    explicit PictureRows(const Picture& picture)
        : picture_(picture)
        , made_(picture.rows ? static_cast<std::size_t>(picture.layout.packedRowBytes()) : 0) {}

    /// Valid until the next one is asked for.
    const std::uint8_t* operator[](std::uint32_t y) {
        if (!picture_.rows) return picture_.pixels + y * picture_.rowBytes;
        picture_.rows->make_row(y, made_.data());
        return made_.data();
    }

private:
    const Picture& picture_;
    std::vector<std::uint8_t> made_;
};

inline constexpr double inchesPerMeter = 1 / 0.0254;

/// Whole dots an inch are stored as rounded dots a metre; this is their way back.
inline double dots_per_inch(std::uint32_t dotsPerMeter) {
    const double exact = dotsPerMeter / inchesPerMeter;
    const double whole = std::round(exact);
    return std::round(whole * inchesPerMeter) == dotsPerMeter ? whole : exact;
}

} // namespace cocoa::codecs
