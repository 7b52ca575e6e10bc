#include "support.h"

#include <cstdio>
#include <cstring>
#include <random>

#include <gtest/gtest.h>

namespace cocoa::codecs {

void PrintTo(const PixelLayout& layout, std::ostream* stream) {
    static constexpr const char* models[] = {"grey", "RGB", "CMYK"};
    static constexpr const char* alphas[] = {"no alpha", "straight alpha", "premultiplied alpha"};
    *stream << layout.width << " x " << layout.height << ' '
            << models[static_cast<int>(layout.model)] << ", "
            << alphas[static_cast<int>(layout.alpha)] << ", " << int{layout.bitsPerSample}
            << " bits";
}

} // namespace cocoa::codecs

namespace codecs_test {

void append(ByteVector& target, const ByteVector& source) {
    target.insert(target.end(), source.begin(), source.end());
}

void append_16(ByteVector& target, ByteOrder order, std::uint16_t value) {
    const auto high = static_cast<std::uint8_t>(value >> 8);
    const auto low = static_cast<std::uint8_t>(value);
    append(target, order == ByteOrder::Big ? ByteVector{high, low} : ByteVector{low, high});
}

void append_32(ByteVector& target, ByteOrder order, std::uint32_t value) {
    const auto high = static_cast<std::uint16_t>(value >> 16);
    const auto low = static_cast<std::uint16_t>(value);
    append_16(target, order, order == ByteOrder::Big ? high : low);
    append_16(target, order, order == ByteOrder::Big ? low : high);
}

ByteVector bytes_of(std::string_view text) { return {text.begin(), text.end()}; }

ByteVector words(std::initializer_list<std::uint16_t> samples) {
    ByteVector bytes(samples.size() * 2);
    std::memcpy(bytes.data(), std::data(samples), bytes.size());
    return bytes;
}

ByteVector exif_block(std::uint8_t orientation) {
    ByteVector block = bytes_of("MM");
    append(block, {0, 42, 0, 0, 0, 8});                // the directory follows
    append(block, {0, 1});                             // of one entry:
    append(block, {0x01, 0x12, 0, 3, 0, 0, 0, 1});     // the orientation, one 16-bit number
    append(block, {0, orientation, 0, 0, 0, 0, 0, 0}); // and no further directory
    return block;
}

ByteVector noise(std::size_t count, unsigned seed) {
    std::mt19937 generator(seed);
    ByteVector bytes(count);
    for (auto& byte : bytes)
        byte = static_cast<std::uint8_t>(generator());
    return bytes;
}

ByteVector gradient(std::uint32_t width, std::uint32_t height, int samples) {
    ByteVector bytes;
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            for (int sample = 0; sample < samples; ++sample) {
                const std::uint32_t across = x * 200 / width;
                const std::uint32_t down = y * 200 / height;
                bytes.push_back(static_cast<std::uint8_t>(sample == 0   ? 20 + across
                                                          : sample == 1 ? 240 - down
                                                          : sample == 2 ? 30 + (across + down) / 2
                                                                        : 10 + down / 2));
            }
        }
    }
    return bytes;
}

ByteVector copy(const Encoded& encoded) {
    const Bytes bytes = view(encoded);
    return {bytes.begin(), bytes.end()};
}

std::optional<ByteVector> decode(Bytes data, std::size_t page, int reduction) {
    const Opened opened = open(data);
    if (!opened.reader || page >= opened.reader->pageCount()) return std::nullopt;
    const PixelLayout layout = opened.reader->reducedLayout(page, reduction);
    const auto packed = static_cast<std::size_t>(layout.packedRowBytes());
    constexpr std::size_t padding = 5;
    constexpr std::uint8_t untouched = 0xA5;
    const std::size_t rowBytes = packed + padding;
    const auto bitsPerPixel = static_cast<unsigned>(layout.bitsPerPixel());
    ByteVector buffer(rowBytes * layout.height, untouched);
    if (!opened.reader->read(page, reduction, buffer.data(), rowBytes)) return std::nullopt;
    ByteVector pixels;
    for (std::size_t y = 0; y < layout.height; ++y) {
        const auto row = buffer.begin() + static_cast<std::ptrdiff_t>(y * rowBytes);
        const auto end = row + static_cast<std::ptrdiff_t>(packed);
        pixels.insert(pixels.end(), row, end);
        const auto unusedBits = packed * 8 - std::size_t{layout.width} * bitsPerPixel;
        pixels.back() &= static_cast<std::uint8_t>(0xFF << unusedBits);
        EXPECT_EQ(ByteVector(end, end + padding), ByteVector(padding, untouched)) << "row " << y;
    }
    return pixels;
}

std::optional<PageInfo> header(Bytes data, std::size_t page) {
    const Opened opened = open(data);
    if (!opened.reader || page >= opened.reader->pageCount()) return std::nullopt;
    return opened.reader->page(page);
}

Picture picture(const PixelLayout& layout, const ByteVector& pixels) {
    EXPECT_GE(pixels.size(), layout.packedRowBytes() * layout.height);
    Picture picture;
    picture.layout = layout;
    picture.pixels = pixels.data();
    picture.rowBytes = static_cast<std::size_t>(layout.packedRowBytes());
    return picture;
}

Picture padded_picture(const PixelLayout& layout, const ByteVector& pixels, ByteVector& storage) {
    Picture padded = picture(layout, pixels);
    const std::size_t packed = padded.rowBytes;
    padded.rowBytes = packed + 7;
    storage.assign(padded.rowBytes * layout.height, 0xEE);
    for (std::size_t y = 0; y < layout.height; ++y) {
        std::memcpy(&storage[y * padded.rowBytes], &pixels[y * packed], packed);
    }
    padded.pixels = storage.data();
    return padded;
}

Encoded encode(const Codec& codec, const Picture& page, const EncodeOptions& options) {
    return codec.encode({&page, 1}, options);
}

std::string TemporaryFolder::write(std::string_view name, Bytes data) const {
    return file(name, {reinterpret_cast<const char*>(data.data()), data.size()});
}

ByteVector TemporaryFolder::read(std::string_view name) const {
    const std::string bytes = content(name);
    EXPECT_FALSE(bytes.empty()) << name;
    return {bytes.begin(), bytes.end()};
}

CommandResult run(const std::string& command) {
    CommandResult result;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (!pipe) return result;
    char buffer[4096];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, pipe)) {
        result.output.append(buffer, count);
    }
    result.status = pclose(pipe);
    return result;
}

} // namespace codecs_test
