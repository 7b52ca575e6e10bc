#include "cocoa/codecs/bmp_header.h"
#include "cocoa/codecs/formats.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace cocoa::codecs {

namespace {

/// One row of indices, one a byte, out of packed ones.
void unpack_indices(const std::uint8_t* row, int bits, std::span<std::uint8_t> indices) {
    const auto mask = static_cast<std::uint8_t>((1 << bits) - 1);
    const auto perByte = static_cast<std::size_t>(8 / bits);
    for (std::size_t x = 0; x < indices.size(); ++x) {
        const auto shift = static_cast<int>(perByte - 1 - x % perByte) * bits;
        indices[x] = row[x / perByte] >> shift & mask;
    }
}

/// The run-length codings: pairs of a count and a value, and escapes that begin with 0.
class RunDecoder {
public:
    RunDecoder(const BmpHeader& header, std::uint8_t* indices)
        : header_(header)
        , indices_(indices)
        , data_(header.pixels)
        , nibbles_(header.coding == BmpHeader::Coding::Runs4) {}

    /// Fills the indices, row 0 first, which is the lowest one. False when the data ends without
    /// the mark of its end.
    bool decode() {
        while (at_ + 2 <= data_.size()) {
            const unsigned count = data_[at_];
            const unsigned value = data_[at_ + 1];
            at_ += 2;
            if (count > 0) {
                put_run(count, value);
                continue;
            }
            switch (value) {
            case 0: // end of the row
                x_ = 0;
                ++y_;
                break;
            case 1: // end of the picture
                return true;
            case 2: // a leap to the right and up
                if (at_ + 2 > data_.size()) return false;
                x_ += data_[at_];
                y_ += data_[at_ + 1];
                at_ += 2;
                break;
            default:
                if (!put_literals(value)) return false;
            }
        }
        return false;
    }

private:
    void put(unsigned index) {
        if (x_ < header_.width && y_ < header_.height)
            indices_[y_ * header_.width + x_] = static_cast<std::uint8_t>(index);
        ++x_;
    }

    void put_run(unsigned count, unsigned value) {
        for (unsigned i = 0; i < count; ++i)
            put(nibbles_ ? (i % 2 == 0 ? value >> 4 : value & 15) : value);
    }

    /// Values as they are, filled up to an even count of bytes.
    bool put_literals(unsigned count) {
        const std::size_t bytes = nibbles_ ? (count + 1) / 2 : count;
        if (at_ + bytes + bytes % 2 > data_.size()) return false;
        for (unsigned i = 0; i < count; ++i) {
            const unsigned byte = data_[at_ + (nibbles_ ? i / 2 : i)];
            put(nibbles_ ? (i % 2 == 0 ? byte >> 4 : byte & 15) : byte);
        }
        at_ += bytes + bytes % 2;
        return true;
    }

    const BmpHeader& header_;
    std::uint8_t* indices_;
    Bytes data_;
    bool nibbles_;
    std::size_t at_ = 0;
    std::uint64_t x_ = 0;
    std::uint64_t y_ = 0;
};

/// Takes one channel out of pixels and brings it to 8 bits.
class ChannelReader {
public:
    explicit ChannelReader(const BmpChannel& channel)
        : mask_(channel.mask)
        , shift_(channel.shift())
        , excess_(std::max(channel.bits() - 8, 0)) {
        const unsigned most = (1U << std::min(channel.bits(), 8)) - 1;
        for (unsigned i = 0; i <= most; ++i)
            values_[i] = static_cast<std::uint8_t>(most == 0 ? 0 : (i * 255 + most / 2) / most);
    }

    std::uint8_t operator()(std::uint32_t pixel) const {
        return values_[(pixel & mask_) >> shift_ >> excess_];
    }

private:
    std::uint32_t mask_;
    int shift_;
    int excess_;
    std::array<std::uint8_t, 256> values_{};
};

class BmpReader : public Reader {
public:
    explicit BmpReader(BmpHeader header)
        : header_(std::move(header)) {
        PixelLayout& layout = info_.layout;
        layout.width = header_.width;
        layout.height = header_.height;
        layout.alpha = header_.has_alpha() ? Alpha::Straight : Alpha::None;
        info_.dpiX = dots_per_inch(header_.dotsPerMeterX);
        info_.dpiY = dots_per_inch(header_.dotsPerMeterY);
        info_.iccProfile.assign(header_.iccProfile.begin(), header_.iccProfile.end());
    }

    const PageInfo& page(std::size_t) const override { return info_; }

    bool read(std::size_t index, int, std::uint8_t* pixels, std::size_t rowBytes) override try {
        if (index != 0 || !pixels || rowBytes < info_.layout.packedRowBytes()) return false;
        pixels_ = pixels;
        rowBytes_ = rowBytes;
        if (header_.coding != BmpHeader::Coding::Plain) return read_runs();
        if (header_.bitsPerPixel <= 8) {
            read_indices();
        } else if (header_.bitsPerPixel == 24) {
            read_bytes();
        } else {
            read_channels();
        }
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }

private:
    const std::uint8_t* file_row(std::uint32_t y) const {
        return header_.pixels.data() + static_cast<std::size_t>(header_.row_bytes()) * y;
    }
    /// Where a row of the file goes.
    std::uint8_t* target(std::uint32_t y) const {
        return pixels_ + std::size_t{header_.topDown ? y : header_.height - 1 - y} * rowBytes_;
    }

    void color(std::span<const std::uint8_t> indices, std::uint8_t* out) const {
        for (const std::uint8_t index : indices) {
            std::memcpy(out, header_.palette[index].data(), 3);
            out += 3;
        }
    }

    bool read_runs() {
        std::vector<std::uint8_t> indices(std::size_t{header_.width} * header_.height);
        if (!RunDecoder(header_, indices.data()).decode()) return false;
        for (std::uint32_t y = 0; y < header_.height; ++y)
            color({&indices[std::size_t{y} * header_.width], header_.width}, target(y));
        return true;
    }

    void read_indices() {
        std::vector<std::uint8_t> indices(header_.width);
        for (std::uint32_t y = 0; y < header_.height; ++y) {
            unpack_indices(file_row(y), header_.bitsPerPixel, indices);
            color(indices, target(y));
        }
    }

    void read_bytes() {
        for (std::uint32_t y = 0; y < header_.height; ++y) {
            const std::uint8_t* in = file_row(y);
            std::uint8_t* out = target(y);
            for (std::uint32_t x = 0; x < header_.width; ++x, in += 3, out += 3) {
                out[0] = in[2];
                out[1] = in[1];
                out[2] = in[0];
            }
        }
    }

    void read_channels() {
        const std::array<ChannelReader, 4> channels{
            ChannelReader(header_.channels[0]), ChannelReader(header_.channels[1]),
            ChannelReader(header_.channels[2]), ChannelReader(header_.channels[3])};
        const std::size_t count = header_.has_alpha() ? 4 : 3;
        const bool wide = header_.bitsPerPixel == 32;
        for (std::uint32_t y = 0; y < header_.height; ++y) {
            const std::uint8_t* in = file_row(y);
            std::uint8_t* out = target(y);
            for (std::uint32_t x = 0; x < header_.width; ++x, in += wide ? 4 : 2) {
                std::uint32_t pixel = static_cast<std::uint32_t>(in[0] | in[1] << 8);
                if (wide) pixel |= static_cast<std::uint32_t>(in[2] | in[3] << 8) << 16;
                for (std::size_t i = 0; i < count; ++i)
                    *out++ = channels[i](pixel);
            }
        }
    }

    BmpHeader header_;
    PageInfo info_;
    std::uint8_t* pixels_ = nullptr;
    std::size_t rowBytes_ = 0;
};

} // namespace

std::unique_ptr<Reader> open_bmp(Bytes data) try {
    auto header = read_bmp_header(data);
    return header ? std::make_unique<BmpReader>(std::move(*header)) : nullptr;
} catch (const std::bad_alloc&) {
    return nullptr;
}

} // namespace cocoa::codecs
