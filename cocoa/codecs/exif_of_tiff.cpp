#include "cocoa/codecs/exif_fields.h"

#include <array>

namespace cocoa::codecs {

namespace {

/// Copies one directory to the front of a block, and the values that its entries point to behind
/// it.
class DirectoryCopy {
public:
    explicit DirectoryCopy(Bytes file)
        : file_(file)
        , bigEndian_(file[0] == 'M') {}

    std::vector<std::uint8_t> copy(std::uint64_t offset) {
        constexpr std::uint64_t entrySize = 12;
        constexpr std::uint32_t mostEntries = 1000;
        if (!inside(offset, 2)) return {};
        const std::uint32_t count = number(offset, 2);
        if (count == 0 || count > mostEntries || !inside(offset + 2, count * entrySize)) return {};

        // A first directory of one entry, which leads to the other.
        constexpr std::uint32_t first = 8;
        constexpr std::uint32_t second = first + 2 + entrySize + 4;
        block_.assign(file_.begin(), file_.begin() + 2);
        put(42, 2);
        put(first, 4);
        put(1, 2);
        constexpr std::uint32_t exifDirectory = 0x8769;
        constexpr std::uint32_t longType = 4;
        put(exifDirectory, 2);
        put(longType, 2);
        put(1, 4);
        put(second, 4);
        put(0, 4);

        put(count, 2);
        valuesStart_ = second + 2 + count * entrySize + 4;
        for (std::uint32_t i = 0; i < count; ++i)
            copy_entry(offset + 2 + i * entrySize);
        put(0, 4);
        block_.insert(block_.end(), values_.begin(), values_.end());
        return std::move(block_);
    }

private:
    bool inside(std::uint64_t offset, std::uint64_t size) const {
        return offset <= file_.size() && size <= file_.size() - offset;
    }

    std::uint32_t number(std::uint64_t at, std::uint32_t size) const {
        std::uint32_t value = 0;
        for (std::uint32_t i = 0; i < size; ++i)
            value =
                value << 8 | file_[static_cast<std::size_t>(at + (bigEndian_ ? i : size - 1 - i))];
        return value;
    }

    void put(std::uint64_t value, std::uint32_t size) {
        for (std::uint32_t i = 0; i < size; ++i)
            block_.push_back(
                static_cast<std::uint8_t>(value >> 8 * (bigEndian_ ? size - 1 - i : i)));
    }

    /// An entry whose values are missing, or too large beside the others', is left without any.
    void copy_entry(std::uint64_t at) {
        static constexpr std::array<std::uint8_t, 14> sizes{0, 1, 1, 2, 4, 8, 1,
                                                            1, 2, 4, 8, 4, 8, 4};
        constexpr std::uint64_t inPlace = 4;
        constexpr std::uint64_t large = 64 << 10;
        const std::uint32_t type = number(at + 2, 2);
        const std::uint32_t count = number(at + 4, 4);
        const std::uint64_t size = type < sizes.size() ? std::uint64_t{count} * sizes[type] : 0;
        const std::uint64_t place = size <= inPlace ? at + 8 : number(at + 8, 4);
        const bool usable = size > 0 && values_.size() + size <= large && inside(place, size);
        put(number(at, 2), 2);
        put(type, 2);
        put(usable ? count : 0, 4);
        if (!usable || size > inPlace) {
            put(usable ? valuesStart_ + values_.size() : 0, 4);
        } else {
            const Bytes value = file_.subspan(static_cast<std::size_t>(at + 8), inPlace);
            block_.insert(block_.end(), value.begin(), value.end());
        }
        if (!usable || size <= inPlace) return;
        const Bytes value =
            file_.subspan(static_cast<std::size_t>(place), static_cast<std::size_t>(size));
        values_.insert(values_.end(), value.begin(), value.end());
        if (values_.size() % 2 != 0) values_.push_back(0);
    }

    Bytes file_;
    bool bigEndian_;
    std::vector<std::uint8_t> block_;
    std::vector<std::uint8_t> values_;
    std::uint64_t valuesStart_ = 0;
};

} // namespace

std::vector<std::uint8_t> exif_of_tiff(Bytes file, std::uint64_t offset) {
    if (file.size() < 8 || file[0] != file[1] || (file[0] != 'I' && file[0] != 'M')) return {};
    return DirectoryCopy(file).copy(offset);
}

} // namespace cocoa::codecs
