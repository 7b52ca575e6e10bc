#pragma once

/// SVG, drawn by librsvg. The library is loaded when the first drawing is opened.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace cocoa::appkit {

class SvgDrawing {
public:
    /// Nothing for bytes that are no drawing, and where the library is not installed. What the
    /// drawing refers to outside itself is not loaded.
    static std::optional<SvgDrawing> open(std::span<const std::uint8_t> bytes);

    /// The drawing in the middle of a square, as large as fits: premultiplied RGBA, row by row from
    /// the top without padding. Empty when it cannot be drawn.
    std::vector<std::uint8_t> render(int side) const;

private:
    struct Close {
        void operator()(void* handle) const;
    };
    explicit SvgDrawing(void* handle)
        : handle_(handle) {}

    std::unique_ptr<void, Close> handle_;
};

} // namespace cocoa::appkit
