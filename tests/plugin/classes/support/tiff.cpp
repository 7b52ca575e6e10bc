#include "plugin/classes/support/tiff.h"

namespace {

class Writer {
public:
    void u16(std::uint32_t value) {
        for (int shift = 0; shift < 16; shift += 8)
            bytes += static_cast<char>(value >> shift & 0xFF);
    }
    void u32(std::uint32_t value) {
        u16(value & 0xFFFF);
        u16(value >> 16);
    }
    std::uint32_t position() const { return static_cast<std::uint32_t>(bytes.size()); }

    std::string bytes;
};

enum FieldType { Short = 3, Long = 4, Rational = 5 };

void entry(Writer& file, int tag, FieldType type, std::uint32_t count, std::uint32_t value) {
    file.u16(static_cast<std::uint32_t>(tag));
    file.u16(type);
    file.u32(count);
    file.u32(value);
}

/// Pixels, resolution and depths go in front of the directory that points at them.
void write_page(Writer& file, const TIFFPage& page) {
    const std::uint32_t strip = file.position();
    file.bytes.append(page.pixels.begin(), page.pixels.end());
    if (file.position() % 2) file.bytes += '\0';
    const std::uint32_t resolution = file.position();
    file.u32(page.dotsPerInch);
    file.u32(1);
    const std::uint32_t depths = file.position();
    for (int i = 0; i < page.samples; ++i)
        file.u16(8);

    const bool hasAlpha = page.samples == 4;
    const std::uint32_t count = hasAlpha ? 13 : 12;
    file.u16(count);
    entry(file, 256, Short, 1, page.width);
    entry(file, 257, Short, 1, page.height);
    entry(file, 258, Short, page.samples, depths);
    entry(file, 259, Short, 1, 1);
    entry(file, 262, Short, 1, 2);
    entry(file, 273, Long, 1, strip);
    entry(file, 277, Short, 1, page.samples);
    entry(file, 278, Short, 1, page.height);
    entry(file, 279, Long, 1, static_cast<std::uint32_t>(page.pixels.size()));
    entry(file, 282, Rational, 1, resolution);
    entry(file, 283, Rational, 1, resolution);
    entry(file, 296, Short, 1, 2);
    if (hasAlpha) entry(file, 338, Short, 1, 2);
    file.u32(0); // the next directory
}

/// Bytes in front of a page's directory.
std::uint32_t directory_offset(const TIFFPage& page) {
    const auto pixels = static_cast<std::uint32_t>(page.pixels.size());
    return pixels + pixels % 2 + 8 + 2u * page.samples;
}

} // namespace

std::string tiff_of(const std::vector<TIFFPage>& pages) {
    Writer file;
    file.bytes = "II";
    file.u16(42);
    file.u32(8 + directory_offset(pages.front()));
    for (std::size_t i = 0; i < pages.size(); ++i) {
        write_page(file, pages[i]);
        if (i + 1 == pages.size()) break;
        // The next directory stands behind the next page's pixels.
        Writer next;
        next.u32(file.position() + directory_offset(pages[i + 1]));
        file.bytes.replace(file.bytes.size() - 4, 4, next.bytes);
    }
    return file.bytes;
}

TIFFPage plain_page(std::uint16_t width, std::uint16_t height, std::vector<std::uint8_t> color) {
    TIFFPage page{width, height, static_cast<std::uint16_t>(color.size()), {}};
    for (int i = 0; i < width * height; ++i)
        page.pixels.insert(page.pixels.end(), color.begin(), color.end());
    return page;
}

TIFFPage four_colors() { return {2, 2, 3, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}}; }
