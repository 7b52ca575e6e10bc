#include "cocoa/codecs/formats.h"
#include "cocoa/codecs/gif_blocks.h"
#include "cocoa/codecs/gif_codes.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

namespace cocoa::codecs {

namespace {

/// Red, green, blue and alpha as they lie in memory.
using Pixel = std::array<std::uint8_t, 4>;
constexpr Pixel clearPixel{};

/// Whether some pixel of some frame may be clear.
bool may_be_clear(const GifFile& file) {
    const GifFrame& first = file.frames.front();
    const bool covers = first.left == 0 && first.top == 0 && first.width >= file.width &&
                        first.height >= file.height;
    return !covers || first.transparentIndex >= 0 ||
           std::any_of(file.frames.begin(), file.frames.end(),
                       [](const GifFrame& frame) { return frame.disposal == GifDisposal::Clear; });
}

/// A colour for every index; those past the table's end are black.
std::array<Pixel, 256> colors_of(const GifFrame& frame) {
    std::array<Pixel, 256> colors;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        colors[i] = {0, 0, 0, 255};
        if (i * 3 + 3 <= frame.colorTable.size())
            std::copy_n(&frame.colorTable[i * 3], 3, colors[i].begin());
    }
    if (frame.transparentIndex >= 0)
        colors[static_cast<std::size_t>(frame.transparentIndex)] = clearPixel;
    return colors;
}

/// The part of a frame that lies on the picture.
struct Area {
    std::uint32_t left, top, width, height;

    Area(const GifFile& file, const GifFrame& frame)
        : left(std::min(frame.left, file.width))
        , top(std::min(frame.top, file.height))
        , width(std::min(frame.width, file.width - left))
        , height(std::min(frame.height, file.height - top)) {}
};

class GifReader : public Reader {
public:
    GifReader(GifFile file)
        : file_(std::move(file)) {
        info_.layout.width = file_.width;
        info_.layout.height = file_.height;
        info_.layout.alpha = may_be_clear(file_) ? Alpha::Straight : Alpha::None;
        animation_.repeats = file_.repeats;
        for (const GifFrame& frame : file_.frames)
            animation_.durations.push_back(frame.duration);
    }

    std::size_t pageCount() const override { return file_.frames.size(); }
    const PageInfo& page(std::size_t) const override { return info_; }
    const Animation* animation() const override {
        return file_.frames.size() > 1 ? &animation_ : nullptr;
    }

    bool read(std::size_t index, int, std::uint8_t* pixels, std::size_t rowBytes) override try {
        if (index >= file_.frames.size() || !pixels) return false;
        if (rowBytes < info_.layout.packedRowBytes()) return false;
        if (index == 0 && info_.layout.alpha == Alpha::None) return read_first(pixels, rowBytes);
        if (!show(index)) return false;
        give_canvas(pixels, rowBytes);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }

private:
    bool decode(const GifFrame& frame) {
        indices_.resize(static_cast<std::size_t>(frame.pixels()));
        return decode_gif_codes(frame.blocks, frame.codeBits, indices_);
    }

    /// An opaque first frame needs no canvas.
    bool read_first(std::uint8_t* pixels, std::size_t rowBytes) {
        const GifFrame& frame = file_.frames.front();
        if (!decode(frame)) return false;
        const auto colors = colors_of(frame);
        const std::uint8_t* indices = indices_.data();
        for (const std::uint32_t y : gif_row_order(frame.height, frame.interlaced)) {
            if (y < file_.height) {
                std::uint8_t* out = pixels + y * rowBytes;
                // Four bytes at a time; the next pixel goes over the fourth.
                for (std::uint32_t x = 0; x + 1 < file_.width; ++x, out += 3)
                    std::memcpy(out, colors[indices[x]].data(), 4);
                std::memcpy(out, colors[indices[file_.width - 1]].data(), 3);
            }
            indices += frame.width;
        }
        return true;
    }

    Pixel* row(std::uint32_t y) { return canvas_.data() + std::size_t{y} * file_.width; }

    /// Brings the canvas to the state in which a frame shows.
    bool show(std::size_t index) {
        if (shown_ == 0 || index + 1 < shown_) {
            canvas_.assign(std::size_t{file_.width} * file_.height, clearPixel);
            shown_ = 0;
        }
        while (shown_ <= index) {
            if (shown_ > 0) dispose(file_.frames[shown_ - 1]);
            const GifFrame& frame = file_.frames[shown_];
            if (!decode(frame)) {
                shown_ = 0; // the canvas is no frame's any more
                return false;
            }
            if (frame.disposal == GifDisposal::Restore) saved_ = canvas_;
            paint(frame);
            ++shown_;
        }
        return true;
    }

    void dispose(const GifFrame& frame) {
        if (frame.disposal == GifDisposal::Restore) canvas_.swap(saved_);
        if (frame.disposal != GifDisposal::Clear) return;
        const Area area(file_, frame);
        for (std::uint32_t y = area.top; y < area.top + area.height; ++y)
            std::fill_n(row(y) + area.left, area.width, clearPixel);
    }

    void paint(const GifFrame& frame) {
        const auto colors = colors_of(frame);
        const Area area(file_, frame);
        const std::uint8_t* indices = indices_.data();
        for (const std::uint32_t y : gif_row_order(frame.height, frame.interlaced)) {
            if (y < area.height) {
                Pixel* out = row(area.top + y) + area.left;
                for (std::uint32_t x = 0; x < area.width; ++x)
                    if (indices[x] != frame.transparentIndex) out[x] = colors[indices[x]];
            }
            indices += frame.width;
        }
    }

    void give_canvas(std::uint8_t* pixels, std::size_t rowBytes) {
        for (std::uint32_t y = 0; y < file_.height; ++y, pixels += rowBytes) {
            const Pixel* from = row(y);
            if (info_.layout.alpha != Alpha::None) {
                std::memcpy(pixels, from, std::size_t{file_.width} * sizeof(Pixel));
                continue;
            }
            for (std::uint32_t x = 0; x < file_.width; ++x)
                std::copy_n(from[x].data(), 3, pixels + std::size_t{x} * 3);
        }
    }

    GifFile file_;
    PageInfo info_;
    Animation animation_;
    std::vector<std::uint8_t> indices_; ///< of the frame decoded last
    std::vector<Pixel> canvas_;         ///< the frames up to `shown_`, on top of one another
    std::vector<Pixel> saved_;          ///< the canvas before a frame that will be taken off
    std::size_t shown_ = 0;
};

/// Small files may state a large picture of which their frames fill little, within reason.
bool believable_size(const GifFile& file) {
    if (!acceptable_size(file.width, file.height)) return false;
    constexpr std::uint64_t spare = 16 << 20;
    std::uint64_t largest = 0;
    for (const GifFrame& frame : file.frames) {
        if (!acceptable_size(frame.width, frame.height)) return false;
        largest = std::max(largest, frame.pixels());
    }
    return std::uint64_t{file.width} * file.height <= spare + largest;
}

} // namespace

std::unique_ptr<Reader> open_gif(Bytes data) try {
    auto file = survey_gif(data);
    if (!file || !believable_size(*file)) return nullptr;
    return std::make_unique<GifReader>(std::move(*file));
} catch (const std::bad_alloc&) {
    return nullptr;
}

} // namespace cocoa::codecs
