#include "cocoa/codecs/tiff_samples.h"

#include <cstring>

namespace cocoa::codecs {

namespace {

/// Packed samples, the first in the high bits.
unsigned packed_sample(const std::uint8_t* bytes, std::uint64_t index, int bits) {
    const std::uint64_t bit = index * static_cast<unsigned>(bits);
    const auto shift = static_cast<int>(8 - bits - bit % 8);
    return bytes[bit / 8] >> shift & ((1U << bits) - 1);
}

void set_packed_sample(std::uint8_t* bytes, std::uint64_t index, int bits, unsigned value) {
    const std::uint64_t bit = index * static_cast<unsigned>(bits);
    const auto shift = static_cast<int>(8 - bits - bit % 8);
    const unsigned mask = ((1U << bits) - 1) << shift;
    std::uint8_t& byte = bytes[bit / 8];
    byte = static_cast<std::uint8_t>((byte & ~mask) | (value << shift & mask));
}

template <class Sample>
Sample load(const std::uint8_t* bytes, std::uint64_t index) {
    Sample sample;
    std::memcpy(&sample, bytes + index * sizeof sample, sizeof sample);
    return sample;
}

template <class Sample>
void store(std::uint8_t* bytes, std::uint64_t index, Sample sample) {
    std::memcpy(bytes + index * sizeof sample, &sample, sizeof sample);
}

std::uint16_t from_float(float value) {
    if (!(value > 0)) return 0; // not a number, too
    return value >= 1 ? 0xFFFF : static_cast<std::uint16_t>(value * 65535.0F + 0.5F);
}

/// One pass over the pixels with the indices of both samples at hand.
template <class Work>
void each_pixel(const FileRow& from, int fileSample, const LayoutRow& to, int layoutSample,
                Work work) {
    auto source = static_cast<std::uint64_t>(fileSample);
    std::uint64_t target = std::uint64_t{to.x} * static_cast<unsigned>(to.samplesPerPixel) +
                           static_cast<unsigned>(layoutSample);
    for (std::uint32_t i = 0; i < from.count; ++i) {
        work(source, target);
        source += static_cast<unsigned>(from.samplesPerPixel);
        target += static_cast<unsigned>(to.samplesPerPixel);
    }
}

template <class Sample>
void place_whole(const FileRow& from, int fileSample, const LayoutRow& to, int layoutSample,
                 Sample flip) {
    each_pixel(from, fileSample, to, layoutSample, [&](std::uint64_t source, std::uint64_t target) {
        store(to.bytes, target, static_cast<Sample>(load<Sample>(from.bytes, source) ^ flip));
    });
}

void place_packed(const FileRow& from, int fileSample, const LayoutRow& to, int layoutSample,
                  int bits, unsigned flip) {
    each_pixel(from, fileSample, to, layoutSample, [&](std::uint64_t source, std::uint64_t target) {
        set_packed_sample(to.bytes, target, bits, packed_sample(from.bytes, source, bits) ^ flip);
    });
}

void place_palette(const SampleConversion& conversion, const FileRow& from, int fileSample,
                   const LayoutRow& to, int layoutSample) {
    each_pixel(from, fileSample, to, layoutSample, [&](std::uint64_t source, std::uint64_t target) {
        const unsigned entry = conversion.fileBits == 8
                                   ? from.bytes[source]
                                   : packed_sample(from.bytes, source, conversion.fileBits);
        std::memcpy(to.bytes + target, conversion.palette[entry].data(), 3);
    });
}

} // namespace

void place_sample(const SampleConversion& conversion, const FileRow& from, int fileSample,
                  const LayoutRow& to, int layoutSample) {
    using Kind = SampleConversion::Kind;
    switch (conversion.kind) {
    case Kind::Palette:
        place_palette(conversion, from, fileSample, to, layoutSample);
        return;
    case Kind::HighHalf:
        each_pixel(
            from, fileSample, to, layoutSample, [&](std::uint64_t source, std::uint64_t target) {
                store(to.bytes, target,
                      static_cast<std::uint16_t>(load<std::uint32_t>(from.bytes, source) >> 16));
            });
        return;
    case Kind::FromFloat:
        each_pixel(from, fileSample, to, layoutSample,
                   [&](std::uint64_t source, std::uint64_t target) {
                       store(to.bytes, target, from_float(load<float>(from.bytes, source)));
                   });
        return;
    case Kind::Copy:
    case Kind::Invert:
        break;
    }
    const bool inverted = conversion.kind == Kind::Invert && layoutSample < to.colorSamples;
    if (conversion.fileBits == 16) {
        place_whole<std::uint16_t>(from, fileSample, to, layoutSample, inverted ? 0xFFFF : 0);
    } else if (conversion.fileBits == 8) {
        place_whole<std::uint8_t>(from, fileSample, to, layoutSample, inverted ? 0xFF : 0);
    } else {
        place_packed(from, fileSample, to, layoutSample, conversion.fileBits,
                     inverted ? (1U << conversion.fileBits) - 1 : 0);
    }
}

} // namespace cocoa::codecs
