#include "cocoa/codecs/formats.h"
#include "cocoa/codecs/tiff_memory.h"

#include <algorithm>
#include <cstring>

namespace cocoa::codecs {

namespace {

bool known_bits(int bits) { return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16; }

/// What the compressions cannot hold: fax codes know black and white, JPEG whole bytes of colour.
bool can_hold(const PixelLayout& layout, TIFFCompression compression) {
    switch (compression) {
    case TIFFCompression::None:
    case TIFFCompression::LZW:
    case TIFFCompression::PackBits:
        return known_bits(layout.bitsPerSample);
    case TIFFCompression::CCITTFax3:
    case TIFFCompression::CCITTFax4:
        return layout.bitsPerSample == 1 && layout.model == ColorModel::Gray &&
               layout.alpha == Alpha::None;
    case TIFFCompression::JPEG:
        return layout.bitsPerSample == 8 && layout.alpha == Alpha::None;
    }
    return false;
}

bool is_fax(TIFFCompression compression) {
    return compression == TIFFCompression::CCITTFax3 || compression == TIFFCompression::CCITTFax4;
}

class PageWriter {
public:
    PageWriter(TIFF* tiff, const Picture& picture, const EncodeOptions& options)
        : tiff_(tiff)
        , picture_(picture)
        , layout_(picture.layout)
        , options_(options) {}

    bool write(std::size_t number, std::size_t count) {
        if (!set_layout() || !set_metadata()) return false;
        if (count > 1) {
            constexpr int pageOfMany = FILETYPE_PAGE;
            set(TIFFTAG_SUBFILETYPE, pageOfMany);
            set(TIFFTAG_PAGENUMBER, static_cast<int>(number), static_cast<int>(count));
        }
        return write_strips() && TIFFWriteDirectory(tiff_) != 0;
    }

private:
    template <class... Values>
    bool set(std::uint32_t tag, Values... values) {
        return TIFFSetField(tiff_, tag, values...) != 0;
    }

    bool set_layout() {
        return set(TIFFTAG_IMAGEWIDTH, layout_.width) && set(TIFFTAG_IMAGELENGTH, layout_.height) &&
               set(TIFFTAG_BITSPERSAMPLE, int{layout_.bitsPerSample}) &&
               set(TIFFTAG_SAMPLESPERPIXEL, layout_.samplesPerPixel()) &&
               set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) &&
               set(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT) &&
               set(TIFFTAG_COMPRESSION, static_cast<int>(options_.compression)) &&
               set(TIFFTAG_PHOTOMETRIC, photometric()) && set_alpha() && set_compression();
    }

    int photometric() const {
        switch (layout_.model) {
        case ColorModel::Gray:
            // Fax codes are made for pages whose white is 0.
            return is_fax(options_.compression) ? PHOTOMETRIC_MINISWHITE : PHOTOMETRIC_MINISBLACK;
        case ColorModel::RGB:
            return options_.compression == TIFFCompression::JPEG ? PHOTOMETRIC_YCBCR
                                                                 : PHOTOMETRIC_RGB;
        case ColorModel::CMYK:
            return PHOTOMETRIC_SEPARATED;
        }
        return PHOTOMETRIC_RGB;
    }

    bool set_alpha() {
        if (layout_.alpha == Alpha::None) return true;
        const std::uint16_t type =
            layout_.alpha == Alpha::Premultiplied ? EXTRASAMPLE_ASSOCALPHA : EXTRASAMPLE_UNASSALPHA;
        return set(TIFFTAG_EXTRASAMPLES, 1, &type);
    }

    bool set_compression() {
        switch (options_.compression) {
        case TIFFCompression::LZW:
            // Differences of neighbours repeat more often than whole samples do.
            return layout_.bitsPerSample < 8 || set(TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
        case TIFFCompression::JPEG: {
            const float quality = options_.quality > 0 ? std::min(options_.quality, 1.0F) : 0.0F;
            if (!set(TIFFTAG_JPEGQUALITY, static_cast<int>(std::lround(quality * 100)))) {
                return false;
            }
            if (layout_.model != ColorModel::RGB) return true;
            // The best qualities keep the colours as sharp as the light.
            constexpr float fullColor = 0.95F;
            return set(TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB) &&
                   (quality < fullColor || set(TIFFTAG_YCBCRSUBSAMPLING, 1, 1));
        }
        default:
            return true;
        }
    }

    bool set_metadata() {
        if (picture_.dpiX > 0 && picture_.dpiY > 0) {
            if (!set(TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH) ||
                !set(TIFFTAG_XRESOLUTION, picture_.dpiX) ||
                !set(TIFFTAG_YRESOLUTION, picture_.dpiY)) {
                return false;
            }
        }
        return picture_.iccProfile.empty() ||
               set(TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(picture_.iccProfile.size()),
                   picture_.iccProfile.data());
    }

    /// Rows of one strip: some 64 KB, in multiples of the 16 that JPEG wants.
    std::uint32_t strip_height() const {
        constexpr std::uint64_t goodSize = 64 << 10;
        constexpr std::uint64_t step = 16;
        const std::uint64_t rows = goodSize / std::max<std::uint64_t>(layout_.packedRowBytes(), 1);
        const std::uint64_t rounded = std::max(rows / step * step, step);
        return static_cast<std::uint32_t>(std::min<std::uint64_t>(rounded, layout_.height));
    }

    bool write_strips() {
        const std::uint32_t stripHeight = strip_height();
        if (!set(TIFFTAG_ROWSPERSTRIP, stripHeight)) return false;
        const auto packed = static_cast<std::size_t>(layout_.packedRowBytes());
        const bool inverted = is_fax(options_.compression);
        const bool inPlace = picture_.rowBytes == packed && !inverted;
        std::vector<std::uint8_t> staging(inPlace ? 0 : packed * stripHeight);
        std::uint32_t strip = 0;
        for (std::uint64_t top = 0; top < layout_.height; top += stripHeight, ++strip) {
            const auto rows = static_cast<std::uint32_t>(
                std::min<std::uint64_t>(stripHeight, layout_.height - top));
            const std::uint8_t* source = picture_.pixels + top * picture_.rowBytes;
            if (!inPlace) gather(source, rows, packed, inverted, staging.data());
            // libtiff takes variable bytes, but alters none when it neither swaps nor predicts in
            // place, which whole strips do not make it do.
            void* bytes = inPlace ? const_cast<std::uint8_t*>(source) : staging.data();
            if (TIFFWriteEncodedStrip(tiff_, strip, bytes, static_cast<tmsize_t>(packed * rows)) <
                0) {
                return false;
            }
        }
        return true;
    }

    void gather(const std::uint8_t* source, std::uint32_t rows, std::size_t packed, bool inverted,
                std::uint8_t* target) const {
        for (std::uint32_t y = 0; y < rows; ++y, source += picture_.rowBytes, target += packed) {
            std::memcpy(target, source, packed);
            for (std::size_t i = 0; inverted && i < packed; ++i) {
                target[i] = static_cast<std::uint8_t>(~target[i]);
            }
        }
    }

    TIFF* tiff_;
    const Picture& picture_;
    const PixelLayout& layout_;
    const EncodeOptions& options_;
};

} // namespace

Encoded encode_tiff(std::span<const Picture> pages, const EncodeOptions& options) {
    if (pages.empty()) return {};
    std::uint64_t plainSize = 0;
    for (const Picture& picture : pages) {
        if (!well_formed(picture) || !can_hold(picture.layout, options.compression)) return {};
        plainSize += picture.layout.packedRowBytes() * picture.layout.height;
    }
    // Offsets in a TIFF have 32 bits; the directories take little beside the pixels.
    constexpr std::uint64_t mostBytes = 0xF0000000;
    if (plainSize > mostBytes) return {};

    TiffOutput output;
    if (options.compression == TIFFCompression::None &&
        !output.bytes.reserve(static_cast<std::size_t>(plainSize + 4096 * pages.size()))) {
        return {};
    }
    TiffHandle tiff = open_tiff_output(output);
    if (!tiff) return {};
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (!PageWriter(tiff.get(), pages[i], options).write(i, pages.size())) return {};
    }
    tiff.reset();
    return output.bytes.take();
}

} // namespace cocoa::codecs
