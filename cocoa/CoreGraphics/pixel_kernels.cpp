#include "cocoa/CoreGraphics/pixel_kernels.h"

#include "cocoa/CoreGraphics/arithmetic.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace cocoa::cg {
namespace {

/// Bytes of a pixel and the offsets of its samples; alpha is not read without alpha.
template <int bytes, int red, int green, int blue, int alphaByte, AlphaKind kind>
void readBytes(const std::uint8_t* pixels, std::size_t count, std::uint32_t* working) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* from = pixels + i * bytes;
        if constexpr (kind == AlphaKind::None) {
            working[i] = pixel(255, from[red], from[green], from[blue]);
        } else if constexpr (kind == AlphaKind::Straight) {
            working[i] = premultiplied(from[alphaByte], from[red], from[green], from[blue]);
        } else {
            // A colour above its alpha is no premultiplied pixel and would spoil compositing.
            const unsigned alpha = from[alphaByte];
            working[i] = pixel(alpha, std::min<unsigned>(from[red], alpha),
                               std::min<unsigned>(from[green], alpha),
                               std::min<unsigned>(from[blue], alpha));
        }
    }
}

struct ByteKernel {
    int bytes, red, green, blue, alpha;
    AlphaKind kind;
    ReadKernel read;
};

template <int bytes, int red, int green, int blue, int alpha, AlphaKind kind>
constexpr ByteKernel byteKernel() {
    return {bytes, red, green, blue, alpha, kind, readBytes<bytes, red, green, blue, alpha, kind>};
}

using enum AlphaKind;

constexpr ByteKernel byteKernels[] = {
    byteKernel<4, 0, 1, 2, 3, Premultiplied>(), byteKernel<4, 1, 2, 3, 0, Premultiplied>(),
    byteKernel<4, 2, 1, 0, 3, Premultiplied>(), byteKernel<4, 3, 2, 1, 0, Premultiplied>(),
    byteKernel<4, 0, 1, 2, 3, Straight>(),      byteKernel<4, 1, 2, 3, 0, Straight>(),
    byteKernel<4, 2, 1, 0, 3, Straight>(),      byteKernel<4, 3, 2, 1, 0, Straight>(),
    byteKernel<4, 0, 1, 2, 0, None>(),          byteKernel<4, 1, 2, 3, 0, None>(),
    byteKernel<4, 2, 1, 0, 0, None>(),          byteKernel<4, 3, 2, 1, 0, None>(),
    byteKernel<3, 0, 1, 2, 0, None>(),          byteKernel<1, 0, 0, 0, 0, None>(),
    byteKernel<2, 0, 0, 0, 1, Premultiplied>(), byteKernel<2, 0, 0, 0, 1, Straight>(),
};

template <typename Sample>
constexpr unsigned largest = std::numeric_limits<Sample>::max();

/// Reads bits of a row in the order of the layout.
class BitReader {
public:
    BitReader(const PixelLayout& layout, const std::uint8_t* row)
        : row(row)
        , swap(layout.swapUnit - 1U) {}

    /// Up to 32 bits.
    std::uint32_t read(std::size_t bit, unsigned count) const {
        std::uint64_t value = 0;
        const std::size_t last = (bit + count - 1) / 8;
        for (std::size_t i = bit / 8; i <= last; ++i)
            value = value << 8 | row[i ^ swap];
        const auto unread = static_cast<unsigned>((last + 1) * 8 - bit - count);
        return static_cast<std::uint32_t>(value >> unread & ((std::uint64_t{1} << count) - 1));
    }

private:
    const std::uint8_t* row;
    std::size_t swap;
};

template <typename Sample>
Sample widened(std::uint32_t value, const PixelLayout& layout) {
    constexpr unsigned most = largest<Sample>;
    if (layout.isFloat) {
        float number;
        std::memcpy(&number, &value, sizeof number);
        const float cut = number > 0 ? std::min(number, 1.0F) : 0.0F;
        return static_cast<Sample>(std::lround(cut * static_cast<float>(most)));
    }
    const unsigned range = (1U << layout.bitsPerSample) - 1;
    return static_cast<Sample>((value * most + range / 2) / range);
}

/// a * b / largest, rounded, for either width.
template <typename Sample>
unsigned product(unsigned first, unsigned second) {
    if constexpr (std::is_same_v<Sample, std::uint8_t>) {
        return multiply8(first, second);
    } else {
        return static_cast<unsigned>((std::uint64_t{first} * second + 32767) / 65535);
    }
}

template <typename Sample>
unsigned narrowed(unsigned sample) {
    if constexpr (std::is_same_v<Sample, std::uint8_t>) {
        return sample;
    } else {
        return narrow16(sample);
    }
}

template <typename Sample>
unsigned divided(unsigned sample, unsigned alpha) {
    if (alpha == 0) return 0;
    const auto value = (std::uint64_t{sample} * largest<Sample> + alpha / 2) / alpha;
    return static_cast<unsigned>(std::min<std::uint64_t>(value, largest<Sample>));
}

/// Red, green and blue of straight ink.
template <typename Sample>
void printed(const Sample* ink, unsigned (&rgb)[3]) {
    const unsigned light = largest<Sample> - ink[3];
    for (int i = 0; i < 3; ++i)
        rgb[i] = product<Sample>(largest<Sample> - ink[i], light);
}

template <typename Sample, CGColorSpaceModel model, AlphaKind kind>
void pack(const Sample* samples, std::size_t count, std::uint32_t* working) {
    constexpr int colors = model == kCGColorSpaceModelMonochrome ? 1
                           : model == kCGColorSpaceModelRGB      ? 3
                           : model == kCGColorSpaceModelCMYK     ? 4
                                                                 : 0;
    constexpr int stride = colors + (kind == AlphaKind::None ? 0 : 1);
    for (std::size_t i = 0; i < count; ++i, samples += stride) {
        const unsigned alpha = kind == AlphaKind::None ? largest<Sample> : samples[colors];
        bool multiplied = kind == AlphaKind::Premultiplied;
        unsigned rgb[3] = {0, 0, 0};
        if constexpr (colors == 1) {
            rgb[0] = rgb[1] = rgb[2] = samples[0];
        } else if constexpr (colors == 3) {
            std::copy_n(samples, 3, rgb);
        } else if constexpr (colors == 4) {
            Sample ink[4] = {samples[0], samples[1], samples[2], samples[3]};
            if (multiplied) {
                for (Sample& sample : ink) {
                    sample = static_cast<Sample>(divided<Sample>(sample, alpha));
                }
                multiplied = false;
            }
            printed(ink, rgb);
        }
        for (unsigned& sample : rgb) {
            sample = multiplied ? std::min(sample, alpha) : product<Sample>(sample, alpha);
        }
        working[i] = pixel(narrowed<Sample>(alpha), narrowed<Sample>(rgb[0]),
                           narrowed<Sample>(rgb[1]), narrowed<Sample>(rgb[2]));
    }
}

template <typename Sample>
using Pack = void (*)(const Sample*, std::size_t, std::uint32_t*);

template <typename Sample, CGColorSpaceModel model>
Pack<Sample> packOf(AlphaKind alpha) {
    switch (alpha) {
    case AlphaKind::None:
        return pack<Sample, model, AlphaKind::None>;
    case AlphaKind::Straight:
        return pack<Sample, model, AlphaKind::Straight>;
    case AlphaKind::Premultiplied:
        break;
    }
    return pack<Sample, model, AlphaKind::Premultiplied>;
}

} // namespace

ReadKernel readKernelFor(const PixelLayout& layout) {
    if (layout.bitsPerSample != 8 || layout.isFloat || layout.bitsPerPixel % 8 != 0 ||
        layout.colorSamples == 0 || layout.colorSamples > 3) {
        return nullptr;
    }
    const int bytes = layout.bitsPerPixel / 8;
    if (layout.swapUnit != 1 && layout.swapUnit != bytes) return nullptr;
    const auto place = [&layout](int bit) { return (bit / 8) ^ (layout.swapUnit - 1); };
    const int step = layout.colorSamples == 3 ? 8 : 0;
    const int red = place(layout.firstColorBit);
    const int green = place(layout.firstColorBit + step);
    const int blue = place(layout.firstColorBit + 2 * step);
    const int alpha = layout.alpha == AlphaKind::None ? 0 : place(layout.alphaBit);
    for (const ByteKernel& kernel : byteKernels) {
        if (kernel.bytes == bytes && kernel.red == red && kernel.green == green &&
            kernel.blue == blue && kernel.alpha == alpha && kernel.kind == layout.alpha) {
            return kernel.read;
        }
    }
    return nullptr;
}

template <typename Sample>
void unpackSamples(const PixelLayout& layout, const std::uint8_t* row, std::size_t first,
                   std::size_t count, Sample* samples) {
    const BitReader reader(layout, row);
    const unsigned bits = layout.bitsPerSample;
    std::size_t start = first * layout.bitsPerPixel;
    for (std::size_t i = 0; i < count; ++i, start += layout.bitsPerPixel) {
        for (unsigned color = 0; color < layout.colorSamples; ++color) {
            const std::size_t bit = start + layout.firstColorBit + std::size_t{color} * bits;
            *samples++ = widened<Sample>(reader.read(bit, bits), layout);
        }
        if (layout.alpha != AlphaKind::None) {
            *samples++ = widened<Sample>(reader.read(start + layout.alphaBit, bits), layout);
        }
    }
}

template <typename Sample>
void packSamples(CGColorSpaceModel model, AlphaKind alpha, const Sample* samples, std::size_t count,
                 std::uint32_t* working) {
    switch (model) {
    case kCGColorSpaceModelMonochrome:
        packOf<Sample, kCGColorSpaceModelMonochrome>(alpha)(samples, count, working);
        break;
    case kCGColorSpaceModelRGB:
        packOf<Sample, kCGColorSpaceModelRGB>(alpha)(samples, count, working);
        break;
    case kCGColorSpaceModelCMYK:
        packOf<Sample, kCGColorSpaceModelCMYK>(alpha)(samples, count, working);
        break;
    default:
        packOf<Sample, kCGColorSpaceModelUnknown>(alpha)(samples, count, working);
        break;
    }
}

template void unpackSamples(const PixelLayout&, const std::uint8_t*, std::size_t, std::size_t,
                            std::uint8_t*);
template void unpackSamples(const PixelLayout&, const std::uint8_t*, std::size_t, std::size_t,
                            std::uint16_t*);
template void packSamples(CGColorSpaceModel, AlphaKind, const std::uint8_t*, std::size_t,
                          std::uint32_t*);
template void packSamples(CGColorSpaceModel, AlphaKind, const std::uint16_t*, std::size_t,
                          std::uint32_t*);

} // namespace cocoa::cg
