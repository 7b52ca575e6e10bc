#include "cocoa/CoreGraphics/draw_image.h"

#include "cocoa/CoreGraphics/arithmetic.h"
#include "cocoa/CoreGraphics/composite.h"
#include "cocoa/CoreGraphics/image_rows.h"
#include "cocoa/CoreGraphics/pixel_buffer.h"
#include "cocoa/CoreGraphics/transform_rows.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <utility>

namespace cocoa::cg {
namespace {

Filter filterOf(CGInterpolationQuality quality) {
    switch (quality) {
    case kCGInterpolationNone:
        return Filter::Nearest;
    case kCGInterpolationLow:
        return Filter::Linear;
    case kCGInterpolationMedium:
        return Filter::Cubic;
    default:
        return Filter::Lanczos3;
    }
}

/// The coverage of an image mask as pixels whose every channel is the coverage.
class CoveragePixels final : public RowSource {
public:
    explicit CoveragePixels(std::unique_ptr<RowSource> coverage)
        : RowSource(coverage->width, coverage->height, 4)
        , coverage(std::move(coverage))
        , values(this->coverage->rowBytes()) {}

    const std::uint8_t* row(int y, std::uint8_t* scratch) override {
        const std::uint8_t* parts = coverage->row(y, values.data());
        auto* working = reinterpret_cast<std::uint32_t*>(scratch);
        for (int i = 0; i < width; ++i)
            working[i] = parts[i] * 0x01010101U;
        return scratch;
    }

private:
    std::unique_ptr<RowSource> coverage;
    std::vector<std::uint8_t> values;
};

std::unique_ptr<RowSource> openRows(const Context& context, const Image& image,
                                    const Placement& placement) {
    if (image.isMask) return std::make_unique<CoveragePixels>(coverageRows(image, placement));
    return colorRows(image, context.colorSpace(), placement);
}

/// Composites the rows of an image, which are those of the region's bounds.
class RowPainter {
public:
    RowPainter(Context& context, const Region& region)
        : context(context)
        , region(region) {}

    void paintImage(RowSource& rows) {
        const auto factor = static_cast<unsigned>(std::lround(context.state.alpha * 255));
        forBands(rows, [&](const PixelRect& band, std::vector<std::uint32_t>& pixels) {
            if (factor != 255) {
                for (std::uint32_t& pixel : pixels)
                    pixel = scaled(pixel, factor);
            }
            composite(context.surface, band, {pixels.data(), width(), 0}, context.state.mode,
                      region.coverage.get());
        });
    }

    /// Lets a colour through where an image mask does.
    void paintMask(RowSource& rows, std::uint32_t color) {
        forBands(rows, [&](const PixelRect& band, std::vector<std::uint32_t>& pixels) {
            Coverage coverage(band);
            for (int y = band.top; y < band.bottom; ++y) {
                std::uint8_t* values = coverage.row(y);
                const std::uint32_t* line =
                    pixels.data() + static_cast<std::size_t>(y - band.top) * width();
                for (std::size_t x = 0; x < width(); ++x) {
                    values[x] = static_cast<std::uint8_t>(alphaOf(line[x]));
                }
            }
            if (region.coverage) coverage.multiply(*region.coverage);
            composite(context.surface, band, {nullptr, 0, color}, context.state.mode, &coverage);
        });
    }

private:
    std::size_t width() const { return static_cast<std::size_t>(region.bounds.width()); }

    template <typename Paint>
    void forBands(RowSource& rows, const Paint& paint) {
        constexpr std::size_t bandPixels = 1 << 15;
        const int height = std::clamp(static_cast<int>(bandPixels / width()), 1,
                                      std::max(region.bounds.height(), 1));
        std::vector<std::uint32_t> pixels(width() * static_cast<std::size_t>(height));
        for (int top = region.bounds.top; top < region.bounds.bottom; top += height) {
            const PixelRect band = {region.bounds.left, top, region.bounds.right,
                                    std::min(top + height, region.bounds.bottom)};
            for (int y = band.top; y < band.bottom; ++y) {
                auto* line = reinterpret_cast<std::uint8_t*>(
                    pixels.data() + static_cast<std::size_t>(y - band.top) * width());
                const std::uint8_t* row = rows.row(y - region.bounds.top, line);
                if (row != line) std::memcpy(line, row, rows.rowBytes());
            }
            paint(band, pixels);
        }
    }

    Context& context;
    const Region& region;
};

/// The place of an image along one axis: the unit axis starts at `origin` and ends `extent`
/// further.
Axis axisOf(double origin, double extent, int first, int count, bool antialias) {
    double low = std::min(origin, origin + extent);
    double high = std::max(origin, origin + extent);
    if (antialias) {
        low = snapped(low);
        high = snapped(high);
    }
    return {low, high - low, first, count};
}

/// The image's rows for an upright, perhaps mirrored, place.
std::unique_ptr<RowSource> uprightRows(const Context& context, const Image& image,
                                       const Matrix& unit, const PixelRect& bounds) {
    const bool antialias = context.state.antialias;
    Placement placement;
    placement.filter = filterOf(context.state.quality);
    placement.flipX = unit.a < 0;
    placement.flipY = unit.d > 0;
    placement.x = axisOf(unit.tx, unit.a, bounds.left, bounds.width(), antialias);
    placement.y = axisOf(unit.ty, unit.d, bounds.top, bounds.height(), antialias);
    return openRows(context, image, placement);
}

/// For a place turned by a quarter: the image is scaled lying, then turned.
std::unique_ptr<RowSource> turnedRows(const Context& context, const Image& image,
                                      const Matrix& unit, const PixelRect& bounds) {
    const bool antialias = context.state.antialias;
    Placement placement;
    placement.filter = filterOf(context.state.quality);
    // The image's columns run along the pixels' y, its rows along their x.
    placement.flipX = unit.b < 0;
    placement.flipY = unit.c > 0;
    placement.x = axisOf(unit.ty, unit.b, bounds.top, bounds.height(), antialias);
    placement.y = axisOf(unit.tx, unit.c, bounds.left, bounds.width(), antialias);
    const auto lying = openRows(context, image, placement);
    auto buffer = PixelBuffer::make(bounds.width(), bounds.height());
    if (!buffer) return nullptr;
    std::vector<std::uint32_t> line(static_cast<std::size_t>(lying->width));
    for (int x = 0; x < lying->height; ++x) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(
            lying->row(x, reinterpret_cast<std::uint8_t*>(line.data())));
        for (int y = 0; y < lying->width; ++y)
            buffer->row(y)[x] = row[y];
    }
    return std::make_unique<BufferRows>(std::move(*buffer));
}

/// A size that an image is scaled to before it is turned, so that every pixel of it counts.
int reducedLength(double pixels, int length) {
    return static_cast<int>(std::clamp(std::ceil(pixels), 1.0, static_cast<double>(length)));
}

std::unique_ptr<RowSource> slantedRows(const Context& context, const Image& image,
                                       const Matrix& unit, const PixelRect& bounds) {
    const PixelSize own = image.isMask ? PixelSize{static_cast<int>(image.layout.width),
                                                   static_cast<int>(image.layout.height)}
                                       : pixelSize(image);
    PixelSize size = own;
    const Filter filter = filterOf(context.state.quality);
    if (filter != Filter::Nearest) {
        size.width = reducedLength(std::hypot(unit.a, unit.b), own.width);
        size.height = reducedLength(std::hypot(unit.c, unit.d), own.height);
    }
    Placement placement = unscaled(size);
    placement.filter = filter;
    const auto rows = openRows(context, image, placement);
    auto buffer = PixelBuffer::make(size.width, size.height);
    if (!buffer) return nullptr;
    for (int y = 0; y < size.height; ++y) {
        auto* line = reinterpret_cast<std::uint8_t*>(buffer->row(y));
        const std::uint8_t* row = rows->row(y, line);
        if (row != line) std::memcpy(line, row, rows->rowBytes());
    }
    // From the pixels drawn on to those of the buffer, whose y runs down.
    const Matrix toBuffer = concat(
        unit.inverse(), {double(size.width), 0, 0, -double(size.height), 0, double(size.height)});
    return std::make_unique<TransformedRows>(std::move(*buffer), toBuffer, filter, bounds);
}

} // namespace

void drawImage(Context& context, const Image& image, const Matrix& unit) {
    const Quad quad = {unit.apply({0, 0}), unit.apply({1, 0}), unit.apply({1, 1}),
                       unit.apply({0, 1})};
    const Region shape = covered(quad, context.state.clip.bounds, context.state.antialias);
    const Region region = intersection(shape, context.state.clip);
    if (region.isEmpty()) return;
    // A side that no number of pixels fits on cannot be sampled along.
    constexpr double least = 1e-6;
    if (std::hypot(unit.a, unit.b) < least || std::hypot(unit.c, unit.d) < least) return;

    constexpr double level = 1e-3;
    const bool upright = std::abs(unit.b) < level && std::abs(unit.c) < level;
    const bool turned = std::abs(unit.a) < level && std::abs(unit.d) < level;
    std::unique_ptr<RowSource> rows;
    if (upright) {
        rows = uprightRows(context, image, unit, region.bounds);
    } else if (turned) {
        rows = turnedRows(context, image, unit, region.bounds);
    } else if (unit.determinant() != 0) {
        rows = slantedRows(context, image, unit, region.bounds);
    }
    if (!rows) return;
    RowPainter painter(context, region);
    if (image.isMask) {
        painter.paintMask(*rows, fillPixel(context.state));
    } else {
        painter.paintImage(*rows);
    }
}

} // namespace cocoa::cg

using namespace cocoa::cg;

void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image) {
    if (context == nullptr || image == nullptr || CGRectIsNull(rect)) return;
    Context& body = *bodyOf(context);
    const Matrix place = {CGRectGetWidth(rect), 0, 0, CGRectGetHeight(rect), CGRectGetMinX(rect),
                          CGRectGetMinY(rect)};
    try {
        drawImage(body, *bodyOf(image), concat(place, body.pixelMatrix()));
    } catch (const std::bad_alloc&) {
        // The rows of the image are longer than memory: what is not drawn yet stays undrawn.
    }
}
