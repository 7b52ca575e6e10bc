#include "cocoa/CoreGraphics/image_rows.h"

#include "cocoa/CoreGraphics/arithmetic.h"
#include "cocoa/CoreGraphics/color_conversion.h"
#include "cocoa/CoreGraphics/pixel_kernels.h"
#include "cocoa/CoreGraphics/resample.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

namespace cocoa::cg {
namespace {

/// A rectangle of pixels of a picture after it was mirrored.
struct Window {
    int x, y, width, height;
};

/// What reading needs to know of a window of an image: where a row of it starts.
class WindowReader {
public:
    WindowReader(const Image& image, const Placement& placement, const Window& window)
        : image(image)
        , flipX(placement.flipX)
        , flipY(placement.flipY)
        , window(window) {
        const int width = static_cast<int>(image.layout.width);
        firstColumn = static_cast<std::size_t>(flipX ? width - window.x - window.width : window.x);
    }

    const std::uint8_t* row(int y) const {
        const int line = window.y + y;
        const int height = static_cast<int>(image.layout.height);
        return image.row(static_cast<std::size_t>(flipY ? height - 1 - line : line));
    }

    const Image& image;
    const bool flipX;
    const bool flipY;
    const Window window;
    std::size_t firstColumn;
};

/// Rows whose layout has a kernel of its own.
class KernelRows final : public RowSource {
public:
    KernelRows(const WindowReader& reader, ReadKernel kernel)
        : RowSource(reader.window.width, reader.window.height, 4)
        , reader(reader)
        , kernel(kernel) {}

    const std::uint8_t* row(int y, std::uint8_t* scratch) override {
        const std::size_t bytes = reader.image.layout.bitsPerPixel / 8U;
        auto* working = reinterpret_cast<std::uint32_t*>(scratch);
        kernel(reader.row(y) + reader.firstColumn * bytes, static_cast<std::size_t>(width),
               working);
        if (reader.flipX) std::reverse(working, working + width);
        return scratch;
    }

private:
    WindowReader reader;
    ReadKernel kernel;
};

/// What a decode array makes of a sample.
template <typename Sample>
class DecodeMap {
public:
    DecodeMap(const std::vector<CGFloat>& decode, std::size_t colors)
        : colors(colors) {
        for (std::size_t i = 0; i < colors && !decode.empty(); ++i) {
            const double low = static_cast<double>(decode[2 * i]);
            const double high = static_cast<double>(decode[2 * i + 1]);
            isIdentity = isIdentity && low == 0 && high == 1;
            ranges.push_back({low, high});
        }
    }

    void apply(Sample* samples, std::size_t count, std::size_t stride) const {
        if (isIdentity) return;
        constexpr double most = std::numeric_limits<Sample>::max();
        for (std::size_t i = 0; i < count; ++i, samples += stride) {
            for (std::size_t color = 0; color < colors; ++color) {
                const auto [low, high] = ranges[color];
                const double value = low * most + samples[color] * (high - low);
                samples[color] = static_cast<Sample>(std::lround(std::clamp(value, 0.0, most)));
            }
        }
    }

private:
    std::size_t colors;
    bool isIdentity = true;
    std::vector<std::pair<double, double>> ranges;
};

/// Rows that are read sample by sample, with decode array and profile.
template <typename Sample>
class SampleRows final : public RowSource {
public:
    SampleRows(const WindowReader& reader, std::shared_ptr<const ProfileConversion> conversion)
        : RowSource(reader.window.width, reader.window.height, 4)
        , reader(reader)
        , decode(reader.image.decode, reader.image.layout.colorSamples)
        , conversion(std::move(conversion)) {
        const PixelLayout& layout = reader.image.layout;
        colors = layout.colorSamples;
        stride = colors + (layout.alpha == AlphaKind::None ? 0U : 1U);
        const auto pixels = static_cast<std::size_t>(width);
        samples.resize(pixels * stride);
        if (this->conversion) {
            straight.resize(pixels * colors);
            converted.resize(pixels * 3);
            rgba.resize(pixels * 4);
        }
    }

    const std::uint8_t* row(int y, std::uint8_t* scratch) override {
        const PixelLayout& layout = reader.image.layout;
        const auto pixels = static_cast<std::size_t>(width);
        unpackSamples(layout, reader.row(y), reader.firstColumn, pixels, samples.data());
        decode.apply(samples.data(), pixels, stride);
        auto* working = reinterpret_cast<std::uint32_t*>(scratch);
        if (conversion) {
            convert(pixels);
            packSamples(kCGColorSpaceModelRGB, AlphaKind::Straight, rgba.data(), pixels, working);
        } else {
            packSamples(layout.model, layout.alpha, samples.data(), pixels, working);
        }
        if (reader.flipX) std::reverse(working, working + width);
        return scratch;
    }

private:
    static constexpr unsigned most = std::numeric_limits<Sample>::max();

    /// Through the profile into straight RGBA.
    void convert(std::size_t pixels) {
        const AlphaKind kind = reader.image.layout.alpha;
        for (std::size_t i = 0; i < pixels; ++i) {
            const Sample* pixel = samples.data() + i * stride;
            const std::uint64_t alpha = kind == AlphaKind::None ? most : pixel[colors];
            for (std::size_t color = 0; color < colors; ++color) {
                std::uint64_t value = pixel[color];
                if (kind == AlphaKind::Premultiplied) {
                    value = alpha == 0
                                ? 0
                                : std::min<std::uint64_t>((value * most + alpha / 2) / alpha, most);
                }
                straight[i * colors + color] = static_cast<Sample>(value);
            }
            rgba[i * 4 + 3] = static_cast<Sample>(alpha);
        }
        conversion->convert(straight.data(), converted.data(), pixels);
        for (std::size_t i = 0; i < pixels; ++i) {
            std::copy_n(converted.data() + i * 3, 3, rgba.data() + i * 4);
        }
    }

    WindowReader reader;
    DecodeMap<Sample> decode;
    std::shared_ptr<const ProfileConversion> conversion;
    std::size_t colors;
    std::size_t stride;
    std::vector<Sample> samples;
    std::vector<Sample> straight;
    std::vector<Sample> converted;
    std::vector<Sample> rgba;
};

/// One channel of coverage from a mask.
class MaskSampleRows final : public RowSource {
public:
    explicit MaskSampleRows(const WindowReader& reader)
        : RowSource(reader.window.width, reader.window.height, 1)
        , reader(reader)
        , decode(reader.image.decode, 1) {}

    const std::uint8_t* row(int y, std::uint8_t* scratch) override {
        const auto pixels = static_cast<std::size_t>(width);
        unpackSamples(reader.image.layout, reader.row(y), reader.firstColumn, pixels, scratch);
        decode.apply(scratch, pixels, 1);
        if (reader.image.isMask) {
            for (std::size_t i = 0; i < pixels; ++i) {
                scratch[i] = static_cast<std::uint8_t>(255 - scratch[i]);
            }
        }
        if (reader.flipX) std::reverse(scratch, scratch + width);
        return scratch;
    }

private:
    WindowReader reader;
    DecodeMap<std::uint8_t> decode;
};

/// Working pixels times coverage.
class MaskedRows final : public RowSource {
public:
    MaskedRows(std::unique_ptr<RowSource> colors, std::unique_ptr<RowSource> coverage)
        : RowSource(colors->width, colors->height, 4)
        , colors(std::move(colors))
        , coverage(std::move(coverage))
        , coverageRow(this->coverage->rowBytes()) {}

    const std::uint8_t* row(int y, std::uint8_t* scratch) override {
        const std::uint8_t* pixels = colors->row(y, scratch);
        const std::uint8_t* through = coverage->row(y, coverageRow.data());
        const auto* from = reinterpret_cast<const std::uint32_t*>(pixels);
        auto* working = reinterpret_cast<std::uint32_t*>(scratch);
        for (int i = 0; i < width; ++i)
            working[i] = scaled(from[i], through[i]);
        return scratch;
    }

private:
    std::unique_ptr<RowSource> colors;
    std::unique_ptr<RowSource> coverage;
    std::vector<std::uint8_t> coverageRow;
};

using OpenWindow = std::function<std::unique_ptr<RowSource>(const Window&)>;

/// The wanted pixels of a picture of which any window can be opened.
std::unique_ptr<RowSource> scaledRows(PixelSize size, int channels, const Placement& placement,
                                      const OpenWindow& open) {
    FilterBank horizontal = horizontalBank(placement.filter, size.width, placement.x, channels);
    FilterBank vertical = verticalBank(placement.filter, size.height, placement.y);
    auto rows = open({horizontal.begin(), vertical.begin(), horizontal.end() - horizontal.begin(),
                      vertical.end() - vertical.begin()});
    if (horizontal.isIdentity() && vertical.isIdentity()) return rows;
    return std::make_unique<ScaledRows>(std::move(rows), std::move(horizontal),
                                        std::move(vertical));
}

PixelSize ownSize(const Image& image) {
    return {static_cast<int>(image.layout.width), static_cast<int>(image.layout.height)};
}

std::unique_ptr<RowSource> openColors(const Image& image, const ColorSpace* target,
                                      const WindowReader& reader) {
    const PixelLayout& layout = image.layout;
    const bool wide = layout.bitsPerSample > 8;
    auto conversion = profileConversion(image.colorSpace(), target, wide ? 16 : 8, image.intent);
    if (!conversion && image.decode.empty()) {
        if (const ReadKernel kernel = readKernelFor(layout)) {
            return std::make_unique<KernelRows>(reader, kernel);
        }
    }
    if (wide) return std::make_unique<SampleRows<std::uint16_t>>(reader, std::move(conversion));
    return std::make_unique<SampleRows<std::uint8_t>>(reader, std::move(conversion));
}

/// A window of a picture that is drawn at another size than its own before it is scaled as a whole.
Placement windowed(const Placement& placement, PixelSize whole, const Window& window) {
    Placement result = placement;
    result.x = {0, static_cast<double>(whole.width), window.x, window.width};
    result.y = {0, static_cast<double>(whole.height), window.y, window.height};
    return result;
}

std::unique_ptr<RowSource> unmaskedRows(const Image& image, const ColorSpace* target,
                                        const Placement& placement) {
    return scaledRows(ownSize(image), 4, placement, [&](const Window& window) {
        return openColors(image, target, WindowReader(image, placement, window));
    });
}

} // namespace

PixelSize pixelSize(const Image& image) {
    PixelSize size = ownSize(image);
    if (image.mask) {
        const PixelSize mask = ownSize(*bodyOf(image.mask.get()));
        size = {std::max(size.width, mask.width), std::max(size.height, mask.height)};
    }
    return size;
}

Placement unscaled(PixelSize size) {
    Placement placement;
    placement.x = {0, static_cast<double>(size.width), 0, size.width};
    placement.y = {0, static_cast<double>(size.height), 0, size.height};
    return placement;
}

std::unique_ptr<RowSource> coverageRows(const Image& mask, const Placement& placement) {
    return scaledRows(ownSize(mask), 1, placement, [&](const Window& window) {
        return std::make_unique<MaskSampleRows>(WindowReader(mask, placement, window));
    });
}

std::unique_ptr<RowSource> colorRows(const Image& image, const ColorSpace* target,
                                     const Placement& placement) {
    if (!image.mask) return unmaskedRows(image, target, placement);
    const Image& mask = *bodyOf(image.mask.get());
    const PixelSize size = pixelSize(image);
    return scaledRows(size, 4, placement, [&](const Window& window) {
        const Placement part = windowed(placement, size, window);
        return std::make_unique<MaskedRows>(unmaskedRows(image, target, part),
                                            coverageRows(mask, part));
    });
}

} // namespace cocoa::cg
