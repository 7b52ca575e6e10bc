#include "cocoa/codecs/png_deflate.h"
#include "cocoa/codecs/png_filters.h"

#include <cstring>
#include <new>

#include <libdeflate.h>

namespace cocoa::codecs {

namespace {

struct FreeCompressor {
    void operator()(libdeflate_compressor* compressor) const {
        libdeflate_free_compressor(compressor);
    }
};

void put_big_endian(std::uint8_t* at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        at[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

/// The filtered bytes of an image.
std::uint64_t filtered_size(const PixelLayout& layout) {
    return (layout.packedRowBytes() + 1) * layout.height;
}

struct FreeDecompressor {
    void operator()(libdeflate_decompressor* decompressor) const {
        libdeflate_free_decompressor(decompressor);
    }
};

using Buffer = std::unique_ptr<std::uint8_t, Encoded::Free>;

Buffer filtered_rows(const Picture& picture) {
    const PixelLayout& layout = picture.layout;
    const auto rowBytes = static_cast<std::size_t>(layout.packedRowBytes());
    Buffer rows(
        static_cast<std::uint8_t*>(std::malloc(static_cast<std::size_t>(filtered_size(layout)))));
    if (!rows) return rows;
    PngRowFilter filter(rowBytes, static_cast<std::size_t>(layout.samplesPerPixel()));
    std::uint8_t* out = rows.get();
    const std::uint8_t* above = nullptr;
    const std::uint8_t* row = picture.pixels;
    for (std::uint32_t y = 0; y < layout.height; ++y, out += rowBytes + 1) {
        filter.filter(row, above, out);
        above = row;
        row += picture.rowBytes;
    }
    return rows;
}

std::uint32_t big_endian_at(Bytes data, std::size_t at) {
    return std::uint32_t{data[at]} << 24 | std::uint32_t{data[at + 1]} << 16 |
           std::uint32_t{data[at + 2]} << 8 | data[at + 3];
}

/// The contents of the image data's chunks, which follow one another.
std::optional<std::vector<Bytes>> image_data_chunks(Bytes file) {
    constexpr std::size_t signature = 8;
    constexpr std::size_t frame = 12; // length, type and checksum
    std::vector<Bytes> chunks;
    for (std::size_t at = signature; file.size() - at >= frame;) {
        const std::uint32_t length = big_endian_at(file, at);
        if (length > file.size() - at - frame) return std::nullopt;
        if (std::memcmp(&file[at + 4], "IDAT", 4) == 0) {
            const std::uint32_t checksum = big_endian_at(file, at + 8 + length);
            if (libdeflate_crc32(0, &file[at + 4], 4 + std::size_t{length}) != checksum)
                return std::nullopt;
            chunks.push_back(file.subspan(at + 8, length));
        } else if (!chunks.empty()) {
            break;
        }
        at += frame + length;
    }
    return chunks;
}

/// The chunks as one; `storage` holds them where they are several.
Bytes joined(const std::vector<Bytes>& chunks, std::vector<std::uint8_t>& storage) {
    if (chunks.size() == 1) return chunks.front();
    std::size_t size = 0;
    for (const Bytes chunk : chunks)
        size += chunk.size();
    storage.reserve(size);
    for (const Bytes chunk : chunks)
        storage.insert(storage.end(), chunk.begin(), chunk.end());
    return storage;
}

Buffer inflated(Bytes deflated, std::size_t size) {
    Buffer bytes(static_cast<std::uint8_t*>(std::malloc(size)));
    const std::unique_ptr<libdeflate_decompressor, FreeDecompressor> decompressor(
        libdeflate_alloc_decompressor());
    if (!bytes || !decompressor) return {};
    const auto result = libdeflate_zlib_decompress(decompressor.get(), deflated.data(),
                                                   deflated.size(), bytes.get(), size, nullptr);
    return result == LIBDEFLATE_SUCCESS ? std::move(bytes) : Buffer{};
}

/// Whether every row has the number of a filter.
bool has_filters(const std::uint8_t* rows, std::size_t step, std::uint32_t height) {
    constexpr std::uint8_t last = 4;
    for (std::uint32_t y = 0; y < height; ++y, rows += step)
        if (*rows > last) return false;
    return true;
}

} // namespace

bool fits_png_deflate(const PixelLayout& layout) {
    // Well within a chunk, and within what may be taken for an image beside its pixels.
    constexpr std::uint64_t most = 1 << 30;
    return layout.bitsPerSample == 8 && filtered_size(layout) <= most;
}

bool append_png_image_data(const Picture& picture, Output& output) try {
    const auto size = static_cast<std::size_t>(filtered_size(picture.layout));
    const Buffer rows = filtered_rows(picture);
    // On photos the next level takes twice as long, for three hundredths less bytes.
    constexpr int quickLevel = 1;
    const std::unique_ptr<libdeflate_compressor, FreeCompressor> compressor(
        libdeflate_alloc_compressor(quickLevel));
    if (!rows || !compressor) return false;

    constexpr std::size_t head = 8;
    constexpr std::size_t checksum = 4;
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), size);
    std::uint8_t* chunk = output.room(head + bound + checksum);
    if (!chunk) return false;
    const std::size_t deflated =
        libdeflate_zlib_compress(compressor.get(), rows.get(), size, chunk + head, bound);
    if (deflated == 0) return false;
    put_big_endian(chunk, static_cast<std::uint32_t>(deflated));
    std::memcpy(chunk + 4, "IDAT", 4);
    put_big_endian(chunk + head + deflated, libdeflate_crc32(0, chunk + 4, 4 + deflated));
    output.grow_by(head + deflated + checksum);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool read_png_image_data(Bytes file, const PixelLayout& layout, std::uint8_t* pixels,
                         std::size_t rowBytes) try {
    const auto chunks = image_data_chunks(file);
    if (!chunks || chunks->empty()) return false;
    std::vector<std::uint8_t> storage;
    const Buffer rows =
        inflated(joined(*chunks, storage), static_cast<std::size_t>(filtered_size(layout)));
    const auto packed = static_cast<std::size_t>(layout.packedRowBytes());
    if (!rows || !has_filters(rows.get(), packed + 1, layout.height)) return false;

    const auto pixelBytes = static_cast<std::size_t>(layout.samplesPerPixel());
    const std::uint8_t* row = rows.get();
    const std::uint8_t* above = nullptr;
    for (std::uint32_t y = 0; y < layout.height; ++y, row += packed + 1) {
        unfilter_png_row(row[0], row + 1, above, packed, pixelBytes, pixels);
        above = pixels;
        pixels += rowBytes;
    }
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

} // namespace cocoa::codecs
