#include "cocoa/codecs/formats.h"
#include "cocoa/codecs/output.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>

namespace cocoa::codecs {

namespace {

constexpr std::uint32_t fileHeaderSize = 14;
constexpr std::uint32_t infoHeaderSize = 40;
constexpr std::uint32_t paletteSize = 256 * 4;

class BmpWriter {
public:
    explicit BmpWriter(const Picture& picture)
        : picture_(picture)
        , layout_(picture.layout)
        , gray_(layout_.model == ColorModel::Gray)
        , packedBytes_(static_cast<std::size_t>(layout_.packedRowBytes()))
        , rowBytes_((packedBytes_ + 3) / 4 * 4) {}

    Encoded write() {
        const std::uint32_t start = fileHeaderSize + infoHeaderSize + (gray_ ? paletteSize : 0);
        const std::uint64_t size = start + std::uint64_t{rowBytes_} * layout_.height;
        if (size > std::numeric_limits<std::uint32_t>::max()) return {};
        std::uint8_t* bytes = output_.room(static_cast<std::size_t>(size));
        if (!bytes) return {};
        at_ = bytes;
        write_headers(static_cast<std::uint32_t>(size), start);
        if (gray_) write_grays();
        PictureRows rows(picture_);
        for (std::uint32_t y = layout_.height; y-- > 0;)
            write_row(rows[y]);
        output_.grow_by(static_cast<std::size_t>(size));
        return output_.take();
    }

private:
    void word(std::uint32_t value) {
        *at_++ = static_cast<std::uint8_t>(value);
        *at_++ = static_cast<std::uint8_t>(value >> 8);
    }
    void long_word(std::uint32_t value) {
        word(value & 0xFFFF);
        word(value >> 16);
    }

    static std::uint32_t dots_per_meter(double dpi) {
        constexpr double most = std::numeric_limits<std::int32_t>::max();
        return dpi > 0
                   ? static_cast<std::uint32_t>(std::min(std::round(dpi * inchesPerMeter), most))
                   : 0;
    }

    void write_headers(std::uint32_t size, std::uint32_t start) {
        *at_++ = 'B';
        *at_++ = 'M';
        long_word(size);
        long_word(0);
        long_word(start);

        long_word(infoHeaderSize);
        long_word(layout_.width);
        long_word(layout_.height);
        word(1); // planes
        word(gray_ ? 8 : 24);
        long_word(0); // no compression
        long_word(size - start);
        long_word(dots_per_meter(picture_.dpiX));
        long_word(dots_per_meter(picture_.dpiY));
        long_word(0); // all colours of the table,
        long_word(0); // each as important
    }

    void write_grays() {
        for (std::uint32_t gray = 0; gray < 256; ++gray)
            long_word(gray << 16 | gray << 8 | gray);
    }

    void write_row(const std::uint8_t* row) {
        std::uint8_t* out = at_;
        if (gray_) {
            out = std::copy_n(row, layout_.width, out);
        } else {
            for (std::uint32_t x = layout_.width; x > 0; --x, row += 3, out += 3) {
                out[0] = row[2];
                out[1] = row[1];
                out[2] = row[0];
            }
        }
        at_ = std::fill_n(out, rowBytes_ - packedBytes_, std::uint8_t{0});
    }

    const Picture& picture_;
    const PixelLayout& layout_;
    bool gray_;
    std::size_t packedBytes_;
    std::size_t rowBytes_;
    Output output_;
    std::uint8_t* at_ = nullptr;
};

} // namespace

Encoded encode_bmp(std::span<const Picture> pages, const EncodeOptions&) try {
    if (pages.size() != 1 || !well_formed_or_rows(pages.front())) return {};
    const PixelLayout& layout = pages.front().layout;
    if (layout.bitsPerSample != 8 || layout.alpha != Alpha::None) return {};
    if (layout.model == ColorModel::CMYK) return {};
    return BmpWriter(pages.front()).write();
} catch (const std::bad_alloc&) {
    return {};
}

} // namespace cocoa::codecs
