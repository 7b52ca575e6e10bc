#include "cocoa/codecs/bmp_header.h"
#include "cocoa/codecs/formats.h"

#include <algorithm>
#include <bit>

namespace cocoa::codecs {

namespace {

enum Compression : std::uint32_t {
    PlainPixels = 0,
    Runs8Compression = 1,
    Runs4Compression = 2,
    BitFields = 3,
    AlphaBitFields = 6,
};

/// The sizes by which the generations of the header behind the file's own are told apart.
enum HeaderSize : std::uint32_t {
    OS2Header = 12,
    InfoHeader = 40,
    MasksHeader = 52,
    AlphaMaskHeader = 56,
    OS2LongHeader = 64,
    Version4Header = 108,
    Version5Header = 124,
};

constexpr std::size_t fileHeader = 14;

class HeaderReader {
public:
    explicit HeaderReader(Bytes data)
        : data_(data) {}

    std::optional<BmpHeader> read() {
        if (!sniff_bmp(data_) || data_.size() < fileHeader + OS2Header) return std::nullopt;
        size_ = long_at(fileHeader);
        if (size_ > data_.size() - fileHeader || !known_size()) return std::nullopt;
        const bool described = size_ == OS2Header ? read_old_sides() : read_sides();
        if (!described || !acceptable_size(header_.width, header_.height)) return std::nullopt;
        if (!read_coding() || !find_pixels()) return std::nullopt;
        read_palette();
        read_profile();
        return std::move(header_);
    }

private:
    bool known_size() const {
        return size_ == OS2Header || size_ == InfoHeader || size_ == MasksHeader ||
               size_ == AlphaMaskHeader || size_ == OS2LongHeader || size_ == Version4Header ||
               size_ == Version5Header;
    }

    std::uint32_t word_at(std::size_t at) const {
        return static_cast<std::uint32_t>(data_[at] | data_[at + 1] << 8);
    }
    std::uint32_t long_at(std::size_t at) const { return word_at(at) | word_at(at + 2) << 16; }
    std::uint32_t word(std::size_t offset) const { return word_at(fileHeader + offset); }
    std::uint32_t long_word(std::size_t offset) const { return long_at(fileHeader + offset); }

    bool read_old_sides() {
        header_.width = word(4);
        header_.height = word(6);
        header_.bitsPerPixel = static_cast<int>(word(10));
        return true;
    }

    bool read_sides() {
        constexpr std::uint32_t sign = 0x80000000;
        header_.width = long_word(4);
        header_.height = long_word(8);
        if (header_.width & sign) return false;
        if (header_.height & sign) {
            header_.topDown = true;
            header_.height = 0 - header_.height;
        }
        header_.bitsPerPixel = static_cast<int>(word(14));
        compression_ = long_word(16);
        header_.dotsPerMeterX = long_word(24);
        header_.dotsPerMeterY = long_word(28);
        colorsUsed_ = long_word(32);
        return true;
    }

    bool read_coding() {
        const int bits = header_.bitsPerPixel;
        switch (compression_) {
        case PlainPixels:
            if (bits == 16) set_masks(0x7C00, 0x03E0, 0x001F);
            if (bits == 32) set_masks(0xFF0000, 0x00FF00, 0x0000FF);
            return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16 || bits == 24 ||
                   bits == 32;
        case Runs8Compression:
            header_.coding = BmpHeader::Coding::Runs8;
            return bits == 8 && !header_.topDown;
        case Runs4Compression:
            header_.coding = BmpHeader::Coding::Runs4;
            return bits == 4 && !header_.topDown;
        case BitFields:
        case AlphaBitFields:
            return (bits == 16 || bits == 32) && size_ != OS2LongHeader && read_masks();
        default:
            return false;
        }
    }

    void set_masks(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
        header_.channels = {{{red}, {green}, {blue}, {0}}};
    }

    /// The masks follow the oldest header that has them and are part of the later ones.
    bool read_masks() {
        const bool withAlpha = compression_ == AlphaBitFields || size_ >= AlphaMaskHeader;
        const std::size_t count = withAlpha ? 4 : 3;
        if (size_ == InfoHeader) masksBehind_ = count * 4;
        if (data_.size() < fileHeader + InfoHeader + count * 4) return false;
        for (std::size_t i = 0; i < count; ++i)
            header_.channels[i].mask = long_word(InfoHeader + i * 4);
        const auto& channels = header_.channels;
        return std::all_of(channels.begin(), channels.end(), [this](const BmpChannel& channel) {
            return channel.contiguous() && (header_.bitsPerPixel == 32 || channel.mask <= 0xFFFF);
        });
    }

    /// Checks the place of the pixels and, as far as their size is known, that they are all there.
    bool find_pixels() {
        constexpr std::size_t offsetAt = 10;
        const std::uint64_t start = long_at(offsetAt);
        paletteStart_ = fileHeader + size_ + masksBehind_;
        if (start < paletteStart_ || start > data_.size()) return false;
        header_.pixels = data_.subspan(static_cast<std::size_t>(start));
        const std::uint64_t available = header_.pixels.size();
        if (header_.coding == BmpHeader::Coding::Plain)
            return header_.row_bytes() * header_.height <= available;
        // Two bytes make 255 pixels at most, but whole rows may be left out.
        constexpr std::uint64_t spare = 16 << 20;
        return std::uint64_t{header_.width} * header_.height <= spare + available * 128;
    }

    /// As many colours as are there; the rest are black.
    void read_palette() {
        if (header_.bitsPerPixel > 8) return;
        const std::size_t entrySize = size_ == OS2Header ? 3 : 4;
        const std::size_t room = (data_.size() - header_.pixels.size() - paletteStart_) / entrySize;
        const std::size_t most = std::size_t{1} << header_.bitsPerPixel;
        const std::size_t stated = colorsUsed_ == 0 ? most : colorsUsed_;
        header_.palette.resize(most);
        for (std::size_t i = 0; i < std::min({stated, most, room}); ++i) {
            const std::uint8_t* entry = &data_[paletteStart_ + i * entrySize];
            header_.palette[i] = {entry[2], entry[1], entry[0]};
        }
    }

    void read_profile() {
        if (size_ != Version5Header) return;
        constexpr std::uint32_t embedded = 0x4D424544; // "MBED", read as a number
        if (long_word(56) != embedded) return;
        const std::uint64_t start = std::uint64_t{fileHeader} + long_word(112);
        const std::uint64_t size = long_word(116);
        if (start > data_.size() || size > data_.size() - start) return;
        header_.iccProfile =
            data_.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(size));
    }

    Bytes data_;
    BmpHeader header_;
    std::uint32_t size_ = 0;
    std::uint32_t compression_ = PlainPixels;
    std::uint32_t colorsUsed_ = 0;
    std::size_t masksBehind_ = 0;
    std::size_t paletteStart_ = 0;
};

} // namespace

int BmpChannel::shift() const { return mask == 0 ? 0 : std::countr_zero(mask); }
int BmpChannel::bits() const { return std::popcount(mask); }
bool BmpChannel::contiguous() const {
    return mask == 0 || static_cast<int>(std::bit_width(mask)) - shift() == bits();
}

bool sniff_bmp(Bytes data) { return data.size() >= 2 && data[0] == 'B' && data[1] == 'M'; }

std::optional<BmpHeader> read_bmp_header(Bytes data) { return HeaderReader(data).read(); }

} // namespace cocoa::codecs
