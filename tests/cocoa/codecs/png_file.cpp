#include "png_file.h"

#include <cstdlib>

#include <gtest/gtest.h>
#include <zlib.h>

namespace codecs_test {

namespace {

std::uint32_t read_32(Bytes bytes, std::size_t at) {
    return std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
           std::uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

std::uint32_t adler_of(Bytes bytes) {
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const std::uint8_t byte : bytes) {
        low = (low + byte) % 65521;
        high = (high + low) % 65521;
    }
    return high << 16 | low;
}

int paeth(int left, int above, int corner) {
    const int estimate = left + above - corner;
    const int fromLeft = std::abs(estimate - left);
    const int fromAbove = std::abs(estimate - above);
    const int fromCorner = std::abs(estimate - corner);
    if (fromLeft <= fromAbove && fromLeft <= fromCorner) return left;
    return fromAbove <= fromCorner ? above : corner;
}

/// Undoes the row filters.
ByteVector unfilter(const ByteVector& filtered, std::size_t rowBytes, std::size_t height,
                    std::size_t pixelBytes) {
    ByteVector rows(rowBytes * height);
    for (std::size_t y = 0; y < height; ++y) {
        const std::uint8_t* source = &filtered[y * (rowBytes + 1)];
        const int filter = *source++;
        for (std::size_t x = 0; x < rowBytes; ++x) {
            const bool inner = x >= pixelBytes;
            const int left = inner ? rows[y * rowBytes + x - pixelBytes] : 0;
            const int above = y > 0 ? rows[(y - 1) * rowBytes + x] : 0;
            const int corner = y > 0 && inner ? rows[(y - 1) * rowBytes + x - pixelBytes] : 0;
            const int predictions[] = {0, left, above, (left + above) / 2,
                                       paeth(left, above, corner)};
            EXPECT_LE(filter, 4);
            rows[y * rowBytes + x] = static_cast<std::uint8_t>(source[x] + predictions[filter % 5]);
        }
    }
    return rows;
}

} // namespace

std::uint32_t crc_of(Bytes bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    return ~crc;
}

ByteVector stored_zlib(Bytes content) {
    ByteVector stream{0x78, 0x01};
    const std::uint32_t checksum = adler_of(content);
    constexpr std::size_t mostOfBlock = 65535;
    do {
        const std::size_t size = std::min(content.size(), mostOfBlock);
        stream.push_back(size == content.size()); // the last block
        append_16(stream, ByteOrder::Little, static_cast<std::uint16_t>(size));
        append_16(stream, ByteOrder::Little, static_cast<std::uint16_t>(~size));
        stream.insert(stream.end(), content.begin(),
                      content.begin() + static_cast<std::ptrdiff_t>(size));
        content = content.subspan(size);
    } while (!content.empty());
    append_32(stream, ByteOrder::Big, checksum);
    return stream;
}

PngFile::PngFile(std::uint32_t width, std::uint32_t height, int bits, PngColor color, int interlace)
    : bytes_{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'} {
    ByteVector head;
    append_32(head, ByteOrder::Big, width);
    append_32(head, ByteOrder::Big, height);
    append(head,
           {static_cast<std::uint8_t>(bits), color, 0, 0, static_cast<std::uint8_t>(interlace)});
    chunk("IHDR", head);
}

PngFile& PngFile::chunk(std::string_view type, const ByteVector& content) {
    ByteVector checked = bytes_of(type);
    append(checked, content);
    append_32(bytes_, ByteOrder::Big, static_cast<std::uint32_t>(content.size()));
    append(bytes_, checked);
    append_32(bytes_, ByteOrder::Big, crc_of(checked));
    return *this;
}

PngFile& PngFile::rows(const std::vector<ByteVector>& rows) {
    ByteVector unfiltered;
    for (const ByteVector& row : rows) {
        unfiltered.push_back(0);
        append(unfiltered, row);
    }
    return chunk("IDAT", stored_zlib(unfiltered));
}

ByteVector PngFile::end() {
    chunk("IEND", {});
    return bytes_;
}

ByteVector PngContent::chunk(std::string_view type) const {
    for (const auto& [name, content] : chunks) {
        if (name == type) return content;
    }
    return {};
}

PngContent take_apart(Bytes file) {
    PngContent png;
    ByteVector deflated;
    for (std::size_t at = 8; at + 12 <= file.size();) {
        const std::uint32_t size = read_32(file, at);
        const Bytes checked = file.subspan(at + 4, size + 4);
        EXPECT_EQ(crc_of(checked), read_32(file, at + 8 + size));
        const std::string type(checked.begin(), checked.begin() + 4);
        const ByteVector content(checked.begin() + 4, checked.end());
        if (type == "IDAT") {
            append(deflated, content);
        } else {
            png.chunks.emplace_back(type, content);
        }
        at += 12 + size;
    }
    const ByteVector head = png.chunk("IHDR");
    png.width = read_32(head, 0);
    png.height = read_32(head, 4);
    png.bits = head[8];
    png.color = head[9];
    png.interlace = head[12];
    if (png.interlace != 0) return png;

    constexpr int samples[] = {1, 0, 3, 1, 2, 0, 4};
    const auto pixelBits = static_cast<std::size_t>(samples[png.color] * png.bits);
    const std::size_t rowBytes = (png.width * pixelBits + 7) / 8;
    ByteVector filtered((rowBytes + 1) * png.height);
    uLongf size = filtered.size();
    EXPECT_EQ(uncompress(filtered.data(), &size, deflated.data(), deflated.size()), Z_OK);
    EXPECT_EQ(size, filtered.size());
    png.samples = unfilter(filtered, rowBytes, png.height, std::max<std::size_t>(pixelBits / 8, 1));
    return png;
}

} // namespace codecs_test
