#pragma once

#include "support/host.h"

#include "host/objects/picture.h"

#include <Cocoa/Cocoa.h>

#include <cstdint>
#include <functional>
#include <vector>

/// 0xAARRGGBB; premultiplied in images, not in host Pictures.
using Pixels = std::vector<std::uint32_t>;

/// A pixel for every place, top row first.
inline Pixels pattern(int width, int height, const std::function<std::uint32_t(int x, int y)>& at) {
    Pixels pixels;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.push_back(at(x, y));
    return pixels;
}

/// Neither symmetrical nor of equal channels.
inline std::uint32_t colour_at(int x, int y) {
    return 0xFF000000U | static_cast<std::uint32_t>(40 + 30 * x + 5 * y) << 16 |
           static_cast<std::uint32_t>(200 - 20 * y - 7 * x) << 8 |
           static_cast<std::uint32_t>(9 * x * y + 3);
}
inline std::uint32_t gray_at(int x, int y) {
    const auto gray = static_cast<std::uint32_t>((x * 53 + y * 101) % 256);
    return 0xFF000000U | gray << 16 | gray << 8 | gray;
}

inline host::Picture& state_of(const host::ObjectRef& picture) {
    return *host::stateOf<host::Picture>(picture);
}

inline void set_pixels(const host::ObjectRef& picture, const Pixels& pixels) {
    host::Picture& state = state_of(picture);
    for (int y = 0; y < state.height(); ++y)
        for (int x = 0; x < state.width(); ++x)
            state.pixels()->setPixel(x, y,
                                     pixels.at(static_cast<std::size_t>(y * state.width() + x)));
    state.changed();
}

inline Pixels pixels_of(const host::ObjectRef& picture) {
    const host::Picture& state = state_of(picture);
    return pattern(state.width(), state.height(),
                   [&](int x, int y) { return state.pixels()->pixel(x, y); });
}

inline host::ObjectRef picture_of(Host& host, int width, int height,
                                  std::uint32_t (*at)(int x, int y)) {
    host::ObjectRef picture = host.create("Picture", width, height, 32);
    set_pixels(picture, pattern(width, height, at));
    return picture;
}

/// What an image shows at its own size, drawn onto nothing: premultiplied, top row first.
inline Pixels rendered(NSImage* image) {
    const NSSize size = [image size];
    const auto width = static_cast<int>(size.width);
    const auto height = static_cast<int>(size.height);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(width * height * 4));
    CGColorSpaceRef const space = CGColorSpaceCreateDeviceRGB();
    CGContextRef const context = CGBitmapContextCreate(
        bytes.data(), static_cast<std::size_t>(width), static_cast<std::size_t>(height), 8,
        static_cast<std::size_t>(width) * 4, space, kCGImageAlphaPremultipliedLast);
    CGColorSpaceRelease(space);
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    NSGraphicsContext* const graphics = [NSGraphicsContext graphicsContextWithGraphicsPort:context
                                                                                   flipped:NO];
    [NSGraphicsContext saveGraphicsState];
    [NSGraphicsContext setCurrentContext:graphics];
    [image drawInRect:NSMakeRect(0, 0, width, height)
             fromRect:NSZeroRect
            operation:NSCompositeCopy
             fraction:1];
    [NSGraphicsContext restoreGraphicsState];
    [pool release];
    CGContextRelease(context);
    return pattern(width, height, [&](int x, int y) {
        const std::uint8_t* const p = bytes.data() + (y * width + x) * 4;
        return std::uint32_t{p[3]} << 24 | std::uint32_t{p[0]} << 16 | std::uint32_t{p[1]} << 8 |
               p[2];
    });
}

inline NSImage* image_in(Host& host, const host::ObjectRef& wrapper) {
    return static_cast<NSImage*>(host.handle(wrapper));
}

/// The wrapper of an image of bitmap pixels (0xAARRGGBB, premultiplied), top row first.
host::ObjectRef image_of_pixels(Host& host, int width, int height, const Pixels& pixels,
                                bool hasAlpha = true);
