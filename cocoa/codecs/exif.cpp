#include "cocoa/codecs/exif.h"

#include <algorithm>

namespace cocoa::codecs {

namespace {

enum Tag : std::uint16_t {
    OrientationTag = 0x0112,
    XResolutionTag = 0x011A,
    YResolutionTag = 0x011B,
    ResolutionUnitTag = 0x0128,
};
enum Type : std::uint16_t { ShortType = 3, LongType = 4, RationalType = 5 };

/// The entries of the block's first directory, which describes the image. They are looked up where
/// they lie, so that an altered block keeps the offsets that maker notes depend on.
class FirstDirectory {
public:
    explicit FirstDirectory(Bytes block)
        : block_(block) {
        if (block.size() < 8) return;
        bigEndian_ = block[0] == 'M';
        if (block[0] != block[1] || (block[0] != 'I' && block[0] != 'M') || word(2) != 42) return;
        const std::uint64_t start = longWord(4);
        if (start + 2 > block.size()) return;
        entries_ = start + 2;
        count_ = std::min<std::uint64_t>(word(start), (block.size() - entries_) / entrySize);
    }

    /// Where the entry of a tag lies that holds one value of a type; 0 when there is none.
    std::uint64_t find(Tag tag, Type type) const {
        for (std::uint64_t index = 0; index < count_; ++index) {
            const std::uint64_t entry = entries_ + index * entrySize;
            if (word(entry) == tag && word(entry + 2) == type && longWord(entry + 4) == 1) {
                return entry;
            }
        }
        return 0;
    }

    int short_value(Tag tag, int otherwise) const {
        const std::uint64_t entry = find(tag, ShortType);
        return entry ? word(entry + 8) : otherwise;
    }

    double rational_value(Tag tag) const {
        const std::uint64_t entry = find(tag, RationalType);
        if (!entry) return 0;
        const std::uint64_t offset = longWord(entry + 8);
        if (offset + 8 > block_.size()) return 0;
        const std::uint32_t denominator = longWord(offset + 4);
        return denominator == 0 ? 0 : static_cast<double>(longWord(offset)) / denominator;
    }

    bool big_endian() const { return bigEndian_; }

private:
    static constexpr std::uint64_t entrySize = 12;

    std::uint16_t word(std::uint64_t at) const {
        const std::uint16_t first = block_[at];
        const std::uint16_t second = block_[at + 1];
        return bigEndian_ ? first << 8 | second : second << 8 | first;
    }
    std::uint32_t longWord(std::uint64_t at) const {
        const std::uint32_t first = word(at);
        const std::uint32_t second = word(at + 2);
        return bigEndian_ ? first << 16 | second : second << 16 | first;
    }

    Bytes block_;
    bool bigEndian_ = false;
    std::uint64_t entries_ = 0;
    std::uint64_t count_ = 0;
};

} // namespace

ExifSummary exif_summary(Bytes block) {
    const FirstDirectory directory(block);
    ExifSummary summary;
    const int orientation = directory.short_value(OrientationTag, 1);
    if (orientation >= 1 && orientation <= 8) summary.orientation = orientation;

    constexpr int inches = 2;
    constexpr int centimeters = 3;
    const int unit = directory.short_value(ResolutionUnitTag, inches);
    if (unit == inches || unit == centimeters) {
        const double scale = unit == inches ? 1 : 2.54;
        summary.dpiX = directory.rational_value(XResolutionTag) * scale;
        summary.dpiY = directory.rational_value(YResolutionTag) * scale;
    }
    return summary;
}

std::vector<std::uint8_t> exif_with_orientation(Bytes block, int orientation) {
    std::vector<std::uint8_t> altered(block.begin(), block.end());
    const FirstDirectory directory(block);
    if (const std::uint64_t entry = directory.find(OrientationTag, ShortType)) {
        const std::size_t lowByte = entry + (directory.big_endian() ? 9 : 8);
        altered[entry + 8] = altered[entry + 9] = 0;
        altered[lowByte] = static_cast<std::uint8_t>(orientation);
    }
    return altered;
}

} // namespace cocoa::codecs
