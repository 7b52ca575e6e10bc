#pragma once

#include "cocoa/CoreGraphics/row_source.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>

namespace cocoa::cg {

/// Working pixels in memory.
class PixelBuffer {
public:
    /// Nothing when memory does not suffice.
    static std::optional<PixelBuffer> make(int width, int height) {
        const std::uint64_t bytes =
            std::uint64_t{4} * static_cast<unsigned>(width) * static_cast<unsigned>(height);
        if (bytes > PTRDIFF_MAX) return std::nullopt;
        auto* pixels = static_cast<std::uint32_t*>(std::malloc(static_cast<std::size_t>(bytes)));
        if (pixels == nullptr) return std::nullopt;
        return PixelBuffer(width, height, pixels);
    }

    int width() const { return columns; }
    int height() const { return lines; }
    std::uint32_t* row(int y) { return pixels.get() + offset(y); }
    const std::uint32_t* row(int y) const { return pixels.get() + offset(y); }

private:
    struct Free {
        void operator()(std::uint32_t* memory) const { std::free(memory); }
    };

    PixelBuffer(int width, int height, std::uint32_t* pixels)
        : columns(width)
        , lines(height)
        , pixels(pixels) {}
    std::size_t offset(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(columns);
    }

    int columns;
    int lines;
    std::unique_ptr<std::uint32_t, Free> pixels;
};

class BufferRows final : public RowSource {
public:
    explicit BufferRows(PixelBuffer pixels)
        : RowSource(pixels.width(), pixels.height(), 4)
        , buffer(std::move(pixels)) {}

    const std::uint8_t* row(int y, std::uint8_t*) override {
        return reinterpret_cast<const std::uint8_t*>(buffer.row(y));
    }

private:
    PixelBuffer buffer;
};

} // namespace cocoa::cg
