#pragma once

/// What a test sees of a wrapped image, straight from its Cocoa object.

#include "plugin/classes/support/tiff.h"
#include "support/host.h"

#include <Cocoa/Cocoa.h>

#include <array>

struct Pixel {
    int red, green, blue, alpha = 255; ///< colours multiplied by alpha

    friend bool operator==(const Pixel&, const Pixel&) = default;
};

inline void PrintTo(const Pixel& pixel, std::ostream* stream) {
    *stream << pixel.red << " " << pixel.green << " " << pixel.blue << " " << pixel.alpha;
}

inline NSImage* image_in(Host& host, const host::ObjectRef& object) {
    return static_cast<NSImage*>(host.handle(object));
}

/// The first representation as 8-bit RGBA, row by row from the top.
std::vector<Pixel> pixels_of(NSImage* image);

inline host::ObjectRef new_image(Host& host, const std::vector<TIFFPage>& pages) {
    return host.create("NSImageZNT", host.memoryBlock(tiff_of(pages)));
}

constexpr Pixel red{255, 0, 0};
constexpr Pixel green{0, 255, 0};
constexpr Pixel blue{0, 0, 255};
constexpr Pixel white{255, 255, 255};
