#include "bmp_file.h"

namespace codecs_test {

ByteVector BmpFile::pixels(const ByteVector& content) const {
    constexpr std::size_t oldHeader = 12;
    constexpr std::size_t fileHeader = 14;
    const bool old = recipe_.headerSize == oldHeader;
    ByteVector info;
    const auto word = [&info](std::uint32_t value) {
        append_16(info, ByteOrder::Little, static_cast<std::uint16_t>(value));
    };
    const auto long_word = [&info](std::uint32_t value) {
        append_32(info, ByteOrder::Little, value);
    };
    long_word(recipe_.headerSize);
    if (old) {
        word(static_cast<std::uint32_t>(recipe_.width));
        word(static_cast<std::uint32_t>(recipe_.height));
    } else {
        long_word(static_cast<std::uint32_t>(recipe_.width));
        long_word(static_cast<std::uint32_t>(recipe_.height));
    }
    word(1);
    word(static_cast<std::uint32_t>(recipe_.bits));
    if (!old) {
        long_word(recipe_.compression);
        long_word(0);
        long_word(recipe_.dotsPerMeterX);
        long_word(recipe_.dotsPerMeterY);
        long_word(static_cast<std::uint32_t>(recipe_.palette.size()));
        long_word(0);
    }
    for (const std::uint32_t mask : recipe_.masks)
        long_word(mask);
    if (info.size() < recipe_.headerSize) info.resize(recipe_.headerSize);
    ByteVector palette;
    for (const ByteVector& color : recipe_.palette) {
        append(palette, {color[2], color[1], color[0]});
        if (!old) palette.push_back(0);
    }
    if (recipe_.profileSize > 0) {
        constexpr std::size_t spaceAt = 56;
        const ByteVector embedded = bytes_of("DEBM");
        std::copy(embedded.begin(), embedded.end(), info.begin() + spaceAt);
        info.resize(112);
        long_word(static_cast<std::uint32_t>(recipe_.headerSize + palette.size() + content.size()));
        long_word(recipe_.profileSize);
        info.resize(recipe_.headerSize);
    }

    ByteVector file = bytes_of("BM");
    const auto start = static_cast<std::uint32_t>(fileHeader + info.size() + palette.size());
    append_32(file, ByteOrder::Little, static_cast<std::uint32_t>(start + content.size()));
    append_32(file, ByteOrder::Little, 0);
    append_32(file, ByteOrder::Little, start);
    append(file, info);
    append(file, palette);
    append(file, content);
    return file;
}

} // namespace codecs_test
