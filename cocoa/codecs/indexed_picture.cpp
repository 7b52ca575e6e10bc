#include "cocoa/codecs/indexed_picture.h"

#include <algorithm>

namespace cocoa::codecs {

namespace {

constexpr std::size_t mostColors = 256;

/// Decides which pixels show.
class Visibility {
public:
    explicit Visibility(bool dithered)
        : dithered_(dithered) {}

    bool operator()(std::uint8_t opacity, std::uint32_t x, std::uint32_t y) const {
        if (!dithered_) return opacity >= 128;
        // Thresholds from 2 to 253, so that fully clear and opaque pixels stay what they are.
        return opacity * 64U > pattern(x, y) * 255U + 127U;
    }

private:
    /// The ordered pattern of 8 by 8: the bits of x ^ y and y, interleaved from the low ones.
    static unsigned pattern(std::uint32_t x, std::uint32_t y) {
        const std::uint32_t mixed = x ^ y;
        return (mixed & 1) << 5 | (y & 1) << 4 | (mixed >> 1 & 1) << 3 | (y >> 1 & 1) << 2 |
               (mixed >> 2 & 1) << 1 | (y >> 2 & 1);
    }

    bool dithered_;
};

/// The indices of up to 256 colours, given out as they appear.
class ExactColors {
public:
    /// -1 when there are too many.
    int index_of(const RGBColor& color) {
        const std::uint32_t key =
            1U << 24 | std::uint32_t{color[0]} << 16 | std::uint32_t{color[1]} << 8 | color[2];
        std::size_t slot = (key * 0x9E3779B1U) >> 22;
        while (keys_[slot] != 0 && keys_[slot] != key)
            slot = (slot + 1) % keys_.size();
        if (keys_[slot] == key) return indices_[slot];
        if (palette.size() == mostColors) return -1;
        keys_[slot] = key;
        indices_[slot] = static_cast<std::uint8_t>(palette.size());
        palette.push_back(color);
        return indices_[slot];
    }

    std::vector<RGBColor> palette;

private:
    std::array<std::uint32_t, 1024> keys_{};
    std::array<std::uint8_t, 1024> indices_{};
};

class Indexing {
public:
    Indexing(const Picture& picture, bool ditherTransparency)
        : picture_(picture)
        , width_(picture.layout.width)
        , height_(picture.layout.height)
        , visible_(ditherTransparency) {
        result_.indices.resize(std::size_t{width_} * height_);
    }

    /// False when there are too many colours.
    bool index_exactly() {
        ExactColors colors;
        std::size_t at = 0;
        bool someClear = false;
        for (std::uint32_t y = 0; y < height_; ++y) {
            ColorCursor pixel(picture_, y);
            for (std::uint32_t x = 0; x < width_; ++x, pixel.next(), ++at) {
                if (!visible_(pixel.opacity(), x, y)) {
                    someClear = true;
                    continue;
                }
                const int index = colors.index_of(pixel.color());
                if (index < 0) return false;
                result_.indices[at] = static_cast<std::uint8_t>(index);
            }
        }
        if (someClear && colors.palette.size() == mostColors) return false;
        result_.palette = std::move(colors.palette);
        if (someClear) mark_clear();
        if (result_.palette.empty()) result_.palette.push_back({});
        return true;
    }

    void index_nearly(std::vector<RGBColor> palette) {
        result_.palette = std::move(palette);
        if (spread_errors()) mark_clear();
    }

    /// Whether a table needs room for the clear pixels.
    bool has_clear() const {
        if (picture_.layout.alpha == Alpha::None) return false;
        for (std::uint32_t y = 0; y < height_; ++y) {
            ColorCursor pixel(picture_, y);
            for (std::uint32_t x = 0; x < width_; ++x, pixel.next())
                if (!visible_(pixel.opacity(), x, y)) return true;
        }
        return false;
    }

    IndexedPicture take() { return std::move(result_); }

private:
    void mark_clear() {
        const auto clear = static_cast<std::uint8_t>(result_.palette.size());
        result_.palette.push_back({});
        result_.transparentIndex = clear;
        std::size_t at = 0;
        for (std::uint32_t y = 0; y < height_; ++y) {
            ColorCursor pixel(picture_, y);
            for (std::uint32_t x = 0; x < width_; ++x, pixel.next(), ++at)
                if (!visible_(pixel.opacity(), x, y)) result_.indices[at] = clear;
        }
    }

    struct Error {
        std::int32_t red = 0;
        std::int32_t green = 0;
        std::int32_t blue = 0;

        void add(const Error& other, std::int32_t parts) {
            red += other.red * parts;
            green += other.green * parts;
            blue += other.blue * parts;
        }
    };

    /// What was missed at a pixel goes, in sixteenths, 7 to the next one and 3, 5 and 1 to those
    /// below. Returns whether some pixel was clear.
    bool spread_errors() {
        NearestColor nearest(result_.palette);
        // What the row above left, with a pixel of margin on both sides.
        std::vector<Error> below(std::size_t{width_} + 2);
        bool someClear = false;
        std::uint8_t* out = result_.indices.data();
        for (std::uint32_t y = 0; y < height_; ++y, out += width_) {
            ColorCursor pixel(picture_, y);
            Error ahead;      // for this pixel, from the left
            Error left;       // for the pixel below to the left, so far
            Error underneath; // for the one below, so far
            for (std::uint32_t x = 0; x < width_; ++x, pixel.next()) {
                const Error above = below[x + 1];
                Error missed;
                if (visible_(pixel.opacity(), x, y)) {
                    missed = place(pixel.color(), above, ahead, nearest, out[x]);
                } else {
                    someClear = true;
                }
                left.add(missed, 3);
                below[x] = left;
                left = underneath;
                left.add(missed, 5);
                underneath = missed;
                ahead = {missed.red * 7, missed.green * 7, missed.blue * 7};
            }
            below[width_] = left;
        }
        return someClear;
    }

    Error place(const RGBColor& color, const Error& above, const Error& ahead,
                NearestColor& nearest, std::uint8_t& index) const {
        const auto wanted = [](std::uint8_t value, std::int32_t first, std::int32_t second) {
            return std::clamp(value + ((first + second + 8) >> 4), 0, 255);
        };
        const std::int32_t red = wanted(color[0], above.red, ahead.red);
        const std::int32_t green = wanted(color[1], above.green, ahead.green);
        const std::int32_t blue = wanted(color[2], above.blue, ahead.blue);
        index = nearest(static_cast<unsigned>(red), static_cast<unsigned>(green),
                        static_cast<unsigned>(blue));
        const RGBColor& found = result_.palette[index];
        return {red - found[0], green - found[1], blue - found[2]};
    }

    const Picture& picture_;
    std::uint32_t width_;
    std::uint32_t height_;
    Visibility visible_;
    IndexedPicture result_;
};

std::vector<RGBColor> given_palette(Bytes table, std::size_t most) {
    std::vector<RGBColor> palette;
    for (std::size_t at = 0; at + 3 <= table.size() && palette.size() < most; at += 3)
        palette.push_back({table[at], table[at + 1], table[at + 2]});
    return palette;
}

} // namespace

IndexedPicture indexed(const Picture& picture, const EncodeOptions& options) {
    Indexing indexing(picture, options.ditherTransparency);
    const bool given = options.colorTable.size() >= 3;
    if (given || !indexing.index_exactly()) {
        const std::size_t room = mostColors - (indexing.has_clear() ? 1 : 0);
        indexing.index_nearly(given ? given_palette(options.colorTable, room)
                                    : choose_palette(picture, room));
    }
    return indexing.take();
}

} // namespace cocoa::codecs
