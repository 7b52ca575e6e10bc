#include "cocoa/CoreGraphics/composite.h"

#include "cocoa/CoreGraphics/arithmetic.h"

#include <pixman.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace cocoa::cg {
namespace {

struct ReleaseImage {
    void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
};
using PixmanImage = std::unique_ptr<pixman_image_t, ReleaseImage>;

pixman_op_t operatorOf(CGBlendMode mode) {
    switch (mode) {
    case kCGBlendModeNormal:
        return PIXMAN_OP_OVER;
    case kCGBlendModeMultiply:
        return PIXMAN_OP_MULTIPLY;
    case kCGBlendModeScreen:
        return PIXMAN_OP_SCREEN;
    case kCGBlendModeOverlay:
        return PIXMAN_OP_OVERLAY;
    case kCGBlendModeDarken:
        return PIXMAN_OP_DARKEN;
    case kCGBlendModeLighten:
        return PIXMAN_OP_LIGHTEN;
    case kCGBlendModeColorDodge:
        return PIXMAN_OP_COLOR_DODGE;
    case kCGBlendModeColorBurn:
        return PIXMAN_OP_COLOR_BURN;
    case kCGBlendModeSoftLight:
        return PIXMAN_OP_SOFT_LIGHT;
    case kCGBlendModeHardLight:
        return PIXMAN_OP_HARD_LIGHT;
    case kCGBlendModeDifference:
        return PIXMAN_OP_DIFFERENCE;
    case kCGBlendModeExclusion:
        return PIXMAN_OP_EXCLUSION;
    case kCGBlendModeHue:
        return PIXMAN_OP_HSL_HUE;
    case kCGBlendModeSaturation:
        return PIXMAN_OP_HSL_SATURATION;
    case kCGBlendModeColor:
        return PIXMAN_OP_HSL_COLOR;
    case kCGBlendModeLuminosity:
        return PIXMAN_OP_HSL_LUMINOSITY;
    case kCGBlendModeClear:
        return PIXMAN_OP_CLEAR;
    case kCGBlendModeCopy:
        return PIXMAN_OP_SRC;
    case kCGBlendModeSourceIn:
        return PIXMAN_OP_IN;
    case kCGBlendModeSourceOut:
        return PIXMAN_OP_OUT;
    case kCGBlendModeSourceAtop:
        return PIXMAN_OP_ATOP;
    case kCGBlendModeDestinationOver:
        return PIXMAN_OP_OVER_REVERSE;
    case kCGBlendModeDestinationIn:
        return PIXMAN_OP_IN_REVERSE;
    case kCGBlendModeDestinationOut:
        return PIXMAN_OP_OUT_REVERSE;
    case kCGBlendModeDestinationAtop:
        return PIXMAN_OP_ATOP_REVERSE;
    case kCGBlendModeXOR:
        return PIXMAN_OP_XOR;
    case kCGBlendModePlusLighter:
        return PIXMAN_OP_ADD;
    case kCGBlendModePlusDarker:
        break; // has a kernel of its own
    }
    return PIXMAN_OP_OVER;
}

/// The library's name for a format; 0 when it has none.
pixman_format_code_t codeOf(const SurfaceFormat& format) {
    constexpr std::int8_t absent = SurfaceFormat::absent;
    struct Known {
        SurfaceFormat format;
        pixman_format_code_t code;
    };
    // Codes name the bytes from the highest of a word down.
    static constexpr Known known[] = {
        {{4, 0, 1, 2, 3}, PIXMAN_a8b8g8r8},      {{4, 1, 2, 3, 0}, PIXMAN_b8g8r8a8},
        {{4, 2, 1, 0, 3}, PIXMAN_a8r8g8b8},      {{4, 3, 2, 1, 0}, PIXMAN_r8g8b8a8},
        {{4, 0, 1, 2, absent}, PIXMAN_x8b8g8r8}, {{4, 1, 2, 3, absent}, PIXMAN_b8g8r8x8},
        {{4, 2, 1, 0, absent}, PIXMAN_x8r8g8b8}, {{4, 3, 2, 1, absent}, PIXMAN_r8g8b8x8},
        {{3, 0, 1, 2, absent}, PIXMAN_b8g8r8},   {{1, absent, absent, absent, 0}, PIXMAN_a8},
    };
    for (const Known& entry : known) {
        const SurfaceFormat& own = entry.format;
        if (own.bytes == format.bytes && own.red == format.red && own.green == format.green &&
            own.blue == format.blue && own.alpha == format.alpha) {
            return entry.code;
        }
    }
    return static_cast<pixman_format_code_t>(0);
}

PixmanImage imageOn(pixman_format_code_t code, const void* memory, int width, int height,
                    std::size_t stride) {
    // The library does not write to a source, though its parameter is not const.
    auto* words = static_cast<std::uint32_t*>(const_cast<void*>(memory));
    return PixmanImage(
        pixman_image_create_bits_no_clear(code, width, height, words, static_cast<int>(stride)));
}

PixmanImage imageOf(const PixelSource& source, int width, int height) {
    if (source.pixels != nullptr) {
        return imageOn(PIXMAN_a8r8g8b8, source.pixels, width, height, source.stride * 4);
    }
    const auto wide = [](unsigned sample) { return static_cast<std::uint16_t>(sample * 257); };
    const pixman_color_t color = {wide(redOf(source.color)), wide(greenOf(source.color)),
                                  wide(blueOf(source.color)), wide(alphaOf(source.color))};
    return PixmanImage(pixman_image_create_solid_fill(&color));
}

/// Rows of the library's images are whole words.
bool isWordAligned(const Surface& surface) {
    return surface.rowBytes % 4 == 0 && surface.rowBytes <= INT32_MAX &&
           (surface.format.bytes != 4 || reinterpret_cast<std::uintptr_t>(surface.data) % 4 == 0);
}

/// Pixels of the library's format, from an area's first one on.
struct Target {
    pixman_format_code_t code;
    void* memory;
    std::size_t stride; ///< in bytes
};

/// No side of `area` is longer than `longestSide`.
void compositeInPlace(const Target& target, const PixelRect& area, const PixelSource& source,
                      CGBlendMode mode, const Coverage* coverage) {
    const int width = area.width();
    const int height = area.height();
    const PixmanImage to = imageOn(target.code, target.memory, width, height, target.stride);
    const PixmanImage from = imageOf(source, width, height);
    PixmanImage mask;
    if (coverage != nullptr) {
        mask =
            imageOn(PIXMAN_a8, coverage->at(area.left, area.top), width, height, coverage->stride);
    }
    if (!to || !from || (coverage != nullptr && !mask)) return;
    pixman_image_composite32(operatorOf(mode), from.get(), mask.get(), to.get(), 0, 0, 0, 0, 0, 0,
                             width, height);
}

/// The library refuses images with sides of 32767 pixels and more.
constexpr int longestSide = 1 << 14;

/// The darkness of both is added up: of opaque colours, 1 - R = (1 - S) + (1 - D).
std::uint32_t plusDarker(std::uint32_t source, std::uint32_t below) {
    const unsigned alpha = std::min(alphaOf(source) + alphaOf(below), 255U);
    const auto sum = [&](unsigned first, unsigned second) {
        const int darkness =
            static_cast<int>(alphaOf(source) + alphaOf(below)) - static_cast<int>(first + second);
        return static_cast<unsigned>(
            std::clamp(static_cast<int>(alpha) - darkness, 0, static_cast<int>(alpha)));
    };
    return pixel(alpha, sum(redOf(source), redOf(below)), sum(greenOf(source), greenOf(below)),
                 sum(blueOf(source), blueOf(below)));
}

std::uint32_t mixed(std::uint32_t above, std::uint32_t below, unsigned coverage) {
    const auto mix = [coverage](unsigned first, unsigned second) {
        return (first * coverage + second * (255 - coverage) + 127) / 255;
    };
    return pixel(mix(alphaOf(above), alphaOf(below)), mix(redOf(above), redOf(below)),
                 mix(greenOf(above), greenOf(below)), mix(blueOf(above), blueOf(below)));
}

/// Composites into working copies of a few rows at a time, which are then stored back.
class BandCompositor {
public:
    BandCompositor(const Surface& surface, const PixelRect& area, const PixelSource& source,
                   CGBlendMode mode, const Coverage* coverage)
        : surface(surface)
        , area(area)
        , source(source)
        , mode(mode)
        , coverage(coverage) {}

    void run() {
        constexpr std::size_t bandPixels = 1 << 14;
        const auto width = static_cast<std::size_t>(area.width());
        const int height = std::max<int>(1, static_cast<int>(bandPixels / width));
        below.resize(width * static_cast<std::size_t>(std::min(height, area.height())));
        for (int y = area.top; y < area.bottom; y += height) {
            runBand({area.left, y, area.right, std::min(y + height, area.bottom)});
        }
    }

private:
    void runBand(const PixelRect& band) {
        const int width = band.width();
        const auto rowPixels = static_cast<std::size_t>(width);
        const auto line = [&](std::vector<std::uint32_t>& pixels, int y) {
            return pixels.data() + static_cast<std::size_t>(y - band.top) * rowPixels;
        };
        for (int y = band.top; y < band.bottom; ++y) {
            surface.load(band.left, y, width, line(below, y));
        }
        result = below;
        PixelSource part = source;
        if (part.pixels != nullptr) {
            part.pixels += static_cast<std::size_t>(band.top - area.top) * source.stride;
        }
        if (mode == kCGBlendModePlusDarker) {
            for (int y = 0; y < band.height(); ++y) {
                darken(part, y, line(result, band.top + y), width);
            }
        } else {
            const auto code = surface.format.isOpaque() ? PIXMAN_x8r8g8b8 : PIXMAN_a8r8g8b8;
            compositeInPlace({code, result.data(), rowPixels * 4}, band, part, mode, nullptr);
        }
        for (int y = band.top; y < band.bottom; ++y) {
            if (coverage != nullptr) showThrough(y, line(result, y), line(below, y), width);
            surface.store(band.left, y, width, line(result, y));
        }
    }

    static void darken(const PixelSource& part, int y, std::uint32_t* pixels, int width) {
        const std::uint32_t* above = part.pixels != nullptr
                                         ? part.pixels + static_cast<std::size_t>(y) * part.stride
                                         : nullptr;
        for (int x = 0; x < width; ++x) {
            pixels[x] = plusDarker(above != nullptr ? above[x] : part.color, pixels[x]);
        }
    }

    void showThrough(int y, std::uint32_t* above, const std::uint32_t* under, int width) const {
        const std::uint8_t* parts = coverage->at(area.left, y);
        for (int x = 0; x < width; ++x)
            above[x] = mixed(above[x], under[x], parts[x]);
    }

    const Surface& surface;
    const PixelRect area;
    const PixelSource& source;
    const CGBlendMode mode;
    const Coverage* coverage;
    std::vector<std::uint32_t> below;
    std::vector<std::uint32_t> result;
};

void compositeTile(const Surface& surface, const PixelRect& tile, const PixelSource& source,
                   CGBlendMode mode, const Coverage* coverage) {
    const pixman_format_code_t code = codeOf(surface.format);
    const bool inPlace = code != 0 && isWordAligned(surface) && mode != kCGBlendModePlusDarker &&
                         (coverage == nullptr || mode == kCGBlendModeNormal);
    if (inPlace) {
        compositeInPlace({code, surface.at(tile.left, tile.top), surface.rowBytes}, tile, source,
                         mode, coverage);
    } else {
        BandCompositor(surface, tile, source, mode, coverage).run();
    }
}

} // namespace

void composite(const Surface& surface, const PixelRect& area, const PixelSource& source,
               CGBlendMode mode, const Coverage* coverage) {
    for (int y = area.top; y < area.bottom; y += longestSide) {
        for (int x = area.left; x < area.right; x += longestSide) {
            PixelSource part = source;
            if (part.pixels != nullptr) {
                part.pixels += static_cast<std::size_t>(y - area.top) * source.stride +
                               static_cast<std::size_t>(x - area.left);
            }
            const PixelRect tile = {x, y, std::min(x + longestSide, area.right),
                                    std::min(y + longestSide, area.bottom)};
            compositeTile(surface, tile, part, mode, coverage);
        }
    }
}

} // namespace cocoa::cg
