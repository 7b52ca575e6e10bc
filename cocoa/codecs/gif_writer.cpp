#include "cocoa/codecs/formats.h"
#include "cocoa/codecs/gif_codes.h"
#include "cocoa/codecs/indexed_picture.h"

#include <algorithm>
#include <bit>
#include <new>

namespace cocoa::codecs {

namespace {

class GifWriter {
public:
    explicit GifWriter(const IndexedPicture& picture)
        : picture_(picture)
        , tableBits_(std::max(static_cast<int>(std::bit_width(picture.palette.size() - 1)), 1)) {}

    bool write(std::uint16_t width, std::uint16_t height, bool interlaced) {
        text(picture_.transparentIndex >= 0 ? "GIF89a" : "GIF87a");
        word(width);
        word(height);
        const auto tableSize = static_cast<std::uint8_t>(tableBits_ - 1);
        byte(static_cast<std::uint8_t>(0x80 | 0x70 | tableSize)); // a table, of 8-bit colours
        byte(0);                                                  // the background
        byte(0);                                                  // square pixels
        write_table();
        if (picture_.transparentIndex >= 0) write_transparency();
        byte(0x2C);
        word(0);
        word(0);
        word(width);
        word(height);
        byte(interlaced ? 0x40 : 0);
        write_pixels(width, height, interlaced);
        byte(0x3B);
        return whole_;
    }

    Encoded take() { return output_.take(); }

private:
    void byte(std::uint8_t value) { whole_ = whole_ && output_.append(&value, 1); }
    void word(std::uint16_t value) {
        byte(static_cast<std::uint8_t>(value));
        byte(static_cast<std::uint8_t>(value >> 8));
    }
    void text(std::string_view text) {
        whole_ = whole_ && output_.append(text.data(), text.size());
    }

    void write_table() {
        for (std::size_t i = 0; i < std::size_t{1} << tableBits_; ++i) {
            const RGBColor color = i < picture_.palette.size() ? picture_.palette[i] : RGBColor{};
            whole_ = whole_ && output_.append(color.data(), color.size());
        }
    }

    void write_transparency() {
        byte(0x21);
        byte(0xF9);
        byte(4);
        byte(1);
        word(0);
        byte(static_cast<std::uint8_t>(picture_.transparentIndex));
        byte(0);
    }

    void write_pixels(std::uint32_t width, std::uint32_t height, bool interlaced) {
        // Two colours are coded as four, which the format demands.
        GifCodeWriter codes(output_, std::max(tableBits_, 2));
        for (const std::uint32_t y : gif_row_order(height, interlaced))
            codes.write({&picture_.indices[std::size_t{y} * width], width});
        whole_ = codes.finish() && whole_;
    }

    const IndexedPicture& picture_;
    int tableBits_;
    Output output_;
    bool whole_ = true;
};

bool can_hold(const PixelLayout& layout) {
    constexpr std::uint32_t longest = 65535;
    return layout.model != ColorModel::CMYK && layout.alpha != Alpha::Premultiplied &&
           layout.bitsPerSample == 8 && layout.width <= longest && layout.height <= longest;
}

} // namespace

Encoded encode_gif(std::span<const Picture> pages, const EncodeOptions& options) try {
    if (pages.size() != 1 || !well_formed(pages.front())) return {};
    const Picture& picture = pages.front();
    if (!can_hold(picture.layout)) return {};
    const IndexedPicture indices = indexed(picture, options);
    GifWriter writer(indices);
    const auto width = static_cast<std::uint16_t>(picture.layout.width);
    const auto height = static_cast<std::uint16_t>(picture.layout.height);
    if (!writer.write(width, height, options.interlaced)) return {};
    return writer.take();
} catch (const std::bad_alloc&) {
    return {};
}

} // namespace cocoa::codecs
