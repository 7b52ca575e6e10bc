#pragma once

/// Rows of any bitmap as codecs and CoreGraphics take them: side by side, alpha last.

#include "cocoa/AppKit/bitmap_layout.h"

#include <vector>

namespace cocoa::appkit {

/// Converts depth, alpha and sample order exactly where the target can hold the value, else to the
/// nearest. Where the target has no alpha, the picture is laid over a background; where the source
/// has none, alpha is full. Both have the same colour model.
class RowConverter {
public:
    /// Colour components of the source's model, 0 to 1.
    using Background = std::array<double, 4>;

    RowConverter(const BitmapLayout& source, const codecs::PixelLayout& target,
                 const Background& background = {});

    /// `row` is counted from the top; `out` has the target's packed row bytes.
    void convert(const ConstPlanes& planes, std::uint32_t row, std::uint8_t* out);

private:
    bool convertBytes(const std::uint8_t* in, std::uint8_t* out) const;
    void flattenBytes(const std::uint8_t* in, std::uint8_t* out, std::size_t width) const;
    void unpack(const ConstPlanes& planes, std::uint32_t row);
    void changeAlpha();
    void flatten();
    void pack(std::uint8_t* out) const;

    BitmapLayout source_;
    codecs::PixelLayout target_;
    std::array<std::uint32_t, 4> background_; // in samples of the source
    std::uint32_t maximum_;                   // of a sample in samples_
    std::vector<std::uint16_t> samples_;      // a row: colours, then alpha when the source has it
};

/// The rows of a bitmap in a target layout, for encoders that take one at a time.
class ConvertedRows final : public codecs::RowSource {
public:
    /// Null when there is not enough memory.
    static std::unique_ptr<ConvertedRows> make(const BitmapLayout& source,
                                               const ConstPlanes& planes,
                                               const codecs::PixelLayout& target,
                                               const RowConverter::Background& background);

    void make_row(std::uint32_t y, std::uint8_t* out) override {
        converter_.convert(planes_, y, out);
    }

private:
    ConvertedRows(const BitmapLayout& source, const ConstPlanes& planes,
                  const codecs::PixelLayout& target, const RowConverter::Background& background)
        : converter_(source, target, background)
        , planes_(planes) {}

    RowConverter converter_;
    ConstPlanes planes_;
};

/// All rows of a bitmap in a target layout; empty when there is not enough memory.
struct ConvertedPixels {
    std::unique_ptr<std::uint8_t, BitmapPixels::Free> bytes;
    std::size_t rowBytes = 0;
    std::size_t size = 0;

    explicit operator bool() const { return bytes != nullptr; }
};
ConvertedPixels convertPixels(const BitmapLayout& source, const ConstPlanes& planes,
                              const codecs::PixelLayout& target,
                              const RowConverter::Background& background = {});

} // namespace cocoa::appkit
