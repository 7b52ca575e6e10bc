#include "cocoa/AppKit/row_converter.h"

#include "cocoa/AppKit/bitmap_samples.h"
#include "cocoa/AppKit/drop_alpha.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <new>

namespace cocoa::appkit {
namespace {

std::uint32_t premultiplied(std::uint32_t color, std::uint32_t alpha, std::uint32_t maximum) {
    return (color * alpha + maximum / 2) / maximum;
}

std::uint32_t straight(std::uint32_t color, std::uint32_t alpha, std::uint32_t maximum) {
    if (alpha == 0) return 0;
    return std::min(maximum, (color * maximum + alpha / 2) / alpha);
}

/// A premultiplied colour over an opaque background.
std::uint32_t over(std::uint32_t color, std::uint32_t background, std::uint32_t alpha,
                   std::uint32_t maximum) {
    return std::min(maximum, color + premultiplied(background, maximum - alpha, maximum));
}

std::uint16_t fromFloat(std::uint32_t bits) {
    const auto value = std::bit_cast<float>(bits);
    if (!(value > 0)) return 0; // also not a number
    return static_cast<std::uint16_t>(std::lround(std::min(value, 1.0F) * 65535.0F));
}

} // namespace

RowConverter::RowConverter(const BitmapLayout& source, const codecs::PixelLayout& target,
                           const Background& background)
    : source_(source)
    , target_(target)
    , background_()
    , maximum_(source.floatingPoint ? 65535 : source.maximumSample())
    , samples_(std::size_t{source.width} * static_cast<std::size_t>(source.samplesPerPixel)) {
    std::transform(background.begin(), background.end(), background_.begin(), [this](double value) {
        return static_cast<std::uint32_t>(std::lround(value * maximum_));
    });
}

void RowConverter::convert(const ConstPlanes& planes, std::uint32_t row, std::uint8_t* out) {
    if (convertBytes(planes[0] + std::size_t{row} * source_.bytesPerRow, out)) return;
    unpack(planes, row);
    changeAlpha();
    flatten();
    pack(out);
}

/// The common layouts of whole bytes, without the detour; false for the others.
bool RowConverter::convertBytes(const std::uint8_t* in, std::uint8_t* out) const {
    if (source_.planar || source_.floatingPoint || source_.zeroIsWhite) return false;
    if (source_.bitsPerSample != target_.bitsPerSample || source_.model != target_.model)
        return false;
    const std::size_t width = source_.width;
    const bool packed = source_.bitsPerPixel == source_.bitsPerSample * source_.samplesPerPixel;
    const bool orderKept = !source_.hasAlpha || !source_.alphaFirst;
    if (packed && orderKept && source_.alpha() == target_.alpha) {
        std::memcpy(out, in, target_.packedRowBytes());
        return true;
    }
    if (source_.bitsPerSample != 8 || source_.model != ColorModel::RGB) return false;
    if (source_.bitsPerPixel != 32 || !orderKept) return false;
    if (target_.alpha == codecs::Alpha::None) {
        if (source_.hasAlpha && source_.straightAlpha) return false;
        flattenBytes(in, out, width);
        return true;
    }
    if (target_.alpha == codecs::Alpha::Straight && source_.hasAlpha) {
        for (std::size_t x = 0; x < width; ++x, in += 4, out += 4) {
            const std::uint32_t alpha = in[3];
            if (alpha == 255) {
                std::memcpy(out, in, 4);
                continue;
            }
            for (int color = 0; color < 3; ++color)
                out[color] = static_cast<std::uint8_t>(straight(in[color], alpha, 255));
            out[3] = in[3];
        }
        return true;
    }
    return false;
}

/// Drops the fourth byte of pixels, having laid those that are not opaque over the background.
void RowConverter::flattenBytes(const std::uint8_t* in, std::uint8_t* out,
                                std::size_t width) const {
    const std::uint8_t* const end = in + width * 4;
    while (in != end) {
        const auto rest = static_cast<std::size_t>(end - in) / 4;
        const std::size_t opaque = dropOpaqueAlpha(in, out, rest, source_.hasAlpha);
        in += opaque * 4;
        out += opaque * 3;
        for (; in != end && in[3] != 255; in += 4, out += 3)
            for (std::size_t color = 0; color < 3; ++color)
                out[color] =
                    static_cast<std::uint8_t>(over(in[color], background_[color], in[3], 255));
    }
}

void RowConverter::unpack(const ConstPlanes& planes, std::uint32_t row) {
    const int count = source_.samplesPerPixel;
    const int colors = source_.colorSamples();
    for (int index = 0; index < count; ++index) {
        // In samples_ alpha comes last.
        const int from = index < colors ? source_.firstColorIndex() + index : source_.alphaIndex();
        const SamplePlace place = placeOf(source_, 0, row, from);
        const std::uint8_t* line = planes[place.plane] + place.row;
        std::size_t bit = place.bit;
        std::uint16_t* out = samples_.data() + index;
        for (std::uint32_t x = 0; x < source_.width; ++x) {
            const std::uint32_t value = readSample(line, bit, source_.bitsPerSample);
            *out = source_.floatingPoint ? fromFloat(value) : static_cast<std::uint16_t>(value);
            out += count;
            bit += static_cast<std::size_t>(source_.bitsPerPixel);
        }
    }
    if (!source_.zeroIsWhite) return;
    for (std::size_t pixel = 0; pixel < samples_.size(); pixel += static_cast<std::size_t>(count)) {
        std::uint32_t full = maximum_;
        if (source_.hasAlpha && !source_.straightAlpha) full = samples_[pixel + 1];
        samples_[pixel] =
            static_cast<std::uint16_t>(full - std::min<std::uint32_t>(full, samples_[pixel]));
    }
}

void RowConverter::changeAlpha() {
    if (!source_.hasAlpha) return;
    const bool wantsStraight = target_.alpha == codecs::Alpha::Straight;
    if (wantsStraight == source_.straightAlpha) return;
    const auto count = static_cast<std::size_t>(source_.samplesPerPixel);
    for (std::size_t pixel = 0; pixel < samples_.size(); pixel += count) {
        const std::uint32_t alpha = samples_[pixel + count - 1];
        for (std::size_t color = pixel; color < pixel + count - 1; ++color)
            samples_[color] = static_cast<std::uint16_t>(
                wantsStraight ? straight(samples_[color], alpha, maximum_)
                              : premultiplied(samples_[color], alpha, maximum_));
    }
}

void RowConverter::flatten() {
    if (!source_.hasAlpha || target_.alpha != codecs::Alpha::None) return;
    const auto count = static_cast<std::size_t>(source_.samplesPerPixel);
    for (std::size_t pixel = 0; pixel < samples_.size(); pixel += count) {
        const std::uint32_t alpha = samples_[pixel + count - 1];
        for (std::size_t color = 0; color < count - 1; ++color)
            samples_[pixel + color] = static_cast<std::uint16_t>(
                over(samples_[pixel + color], background_[color], alpha, maximum_));
    }
}

void RowConverter::pack(std::uint8_t* out) const {
    const auto stride = static_cast<std::size_t>(source_.samplesPerPixel);
    const std::uint32_t targetMaximum = (std::uint32_t{1} << target_.bitsPerSample) - 1;
    const int targetCount = target_.samplesPerPixel();
    if (target_.bitsPerSample < 8) std::memset(out, 0, target_.packedRowBytes());
    std::size_t bit = 0;
    for (std::size_t pixel = 0; pixel < std::size_t{source_.width} * stride; pixel += stride) {
        for (int index = 0; index < targetCount; ++index) {
            std::uint32_t value = maximum_;
            if (index < target_.colorSamples())
                value = samples_[pixel + static_cast<std::size_t>(index)];
            else if (source_.hasAlpha)
                value = samples_[pixel + stride - 1];
            if (targetMaximum != maximum_)
                value = (value * targetMaximum + maximum_ / 2) / maximum_;
            writeSample(out, bit, target_.bitsPerSample, value);
            bit += target_.bitsPerSample;
        }
    }
}

std::unique_ptr<ConvertedRows> ConvertedRows::make(const BitmapLayout& source,
                                                   const ConstPlanes& planes,
                                                   const codecs::PixelLayout& target,
                                                   const RowConverter::Background& background) try {
    return std::unique_ptr<ConvertedRows>(new ConvertedRows(source, planes, target, background));
} catch (const std::bad_alloc&) {
    return nullptr;
}

ConvertedPixels convertPixels(const BitmapLayout& source, const ConstPlanes& planes,
                              const codecs::PixelLayout& target,
                              const RowConverter::Background& background) try {
    ConvertedPixels result;
    const std::uint64_t rowBytes = target.packedRowBytes();
    const std::uint64_t size = rowBytes * source.height;
    if (size > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max())) return {};
    result.bytes.reset(static_cast<std::uint8_t*>(std::malloc(static_cast<std::size_t>(size))));
    if (!result.bytes) return {};
    result.rowBytes = static_cast<std::size_t>(rowBytes);
    result.size = static_cast<std::size_t>(size);
    RowConverter converter(source, target, background);
    for (std::uint32_t row = 0; row < source.height; ++row)
        converter.convert(planes, row, result.bytes.get() + std::size_t{row} * result.rowBytes);
    return result;
} catch (const std::bad_alloc&) {
    return {};
}

} // namespace cocoa::appkit
