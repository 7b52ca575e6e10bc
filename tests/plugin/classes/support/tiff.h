#pragma once

/// The smallest TIFF files, written here by hand: uncompressed, 8 bits a sample, one strip a page.

#include <cstdint>
#include <string>
#include <vector>

struct TIFFPage {
    std::uint16_t width;
    std::uint16_t height;
    std::uint16_t samples; ///< 3 for RGB, 4 for RGB and straight alpha
    std::vector<std::uint8_t> pixels;
    std::uint32_t dotsPerInch = 72;
};

std::string tiff_of(const std::vector<TIFFPage>& pages);

/// A page of one colour.
TIFFPage plain_page(std::uint16_t width, std::uint16_t height,
                    std::vector<std::uint8_t> color = {0x20, 0x40, 0x60});

/// A file of one plain page.
inline std::string plain_tiff(std::uint16_t width, std::uint16_t height) {
    return tiff_of({plain_page(width, height)});
}

/// 2 by 2: red, green in the top row; blue, white in the bottom row.
TIFFPage four_colors();
