#include "plugin/picture/pictures.h"

host::ObjectRef image_of_pixels(Host& host, int width, int height, const Pixels& pixels,
                                bool hasAlpha) {
    const host::ObjectRef wrapper =
        host.create("NSImageZNT", static_cast<double>(width), static_cast<double>(height));
    const NSInteger samples = hasAlpha ? 4 : 3;
    NSBitmapImageRep* const bitmap =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:NULL
                                                pixelsWide:width
                                                pixelsHigh:height
                                             bitsPerSample:8
                                           samplesPerPixel:samples
                                                  hasAlpha:hasAlpha
                                                  isPlanar:NO
                                            colorSpaceName:NSDeviceRGBColorSpace
                                               bytesPerRow:width * samples
                                              bitsPerPixel:0];
    std::uint8_t* bytes = [bitmap bitmapData];
    for (const std::uint32_t pixel : pixels) {
        *bytes++ = static_cast<std::uint8_t>(pixel >> 16);
        *bytes++ = static_cast<std::uint8_t>(pixel >> 8);
        *bytes++ = static_cast<std::uint8_t>(pixel);
        if (hasAlpha) *bytes++ = static_cast<std::uint8_t>(pixel >> 24);
    }
    [image_in(host, wrapper) addRepresentation:bitmap];
    [bitmap release];
    return wrapper;
}
