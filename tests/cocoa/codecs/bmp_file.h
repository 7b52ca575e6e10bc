#pragma once

/// BMP files put together by hand.

#include "support.h"

namespace codecs_test {

struct BmpRecipe {
    std::uint32_t headerSize = 40;
    std::int32_t width = 1;
    std::int32_t height = 1; ///< below 0: from the top
    int bits = 24;
    std::uint32_t compression = 0;
    std::vector<std::uint32_t> masks{};
    std::vector<ByteVector> palette{}; ///< red, green, blue
    std::uint32_t dotsPerMeterX = 0;
    std::uint32_t dotsPerMeterY = 0;
    std::uint32_t profileSize = 0; ///< of a profile that follows the pixels
};

class BmpFile {
public:
    explicit BmpFile(const BmpRecipe& recipe)
        : recipe_(recipe) {}

    /// The file: headers, palette and these bytes.
    ByteVector pixels(const ByteVector& content) const;

private:
    BmpRecipe recipe_;
};

} // namespace codecs_test
