#include "plugin/picture/picture_image.h"

#include "plugin/entry/references.h"
#include "plugin/entry/system_version.h"
#include "plugin/picture/locked_description.h"
#include "plugin/picture/picture_drawing.h"
#include "plugin/picture/picture_editor.h"

#include <cstddef>

namespace {

REALpictureStruct* picture_in(const HostObject& object) {
    return static_cast<REALpictureStruct*>(object.get());
}

/// What the host makes of a fresh Picture into which both are drawn; null when it makes nothing.
CGImageRef image_by_host(REALpictureStruct* picture, REALpictureStruct* mask) {
    const auto [width, height] = size_of_picture(picture);
    const HostObject fresh = HostObject::adopt(REALNewPicture(width, height, 32));
    if (!fresh) return nullptr;
    GraphicsDrawPicture(picture_in(fresh), picture, 0, 0, width, height, 0, 0, width, height);
    if (const HostObject freshMask = HostObject::adopt(REALGetPictureMask(picture_in(fresh), true)))
        GraphicsDrawPicture(picture_in(freshMask), mask, 0, 0, width, height, 0, 0, width, height);
    return REALCopyPictureCGImage(picture_in(fresh));
}

/// A copy of the pixels for the caller; null when no bitmap context is locked.
CGImageRef create_image(const LockedDescription& locked) {
    if (locked.type() != REALpictureCGBitmapContext || !locked.data()) return nullptr;
    return CGBitmapContextCreateImage(static_cast<CGContextRef>(locked.data()));
}

/// The image in gray, light and dark exchanged: hosts' masks are black where a Picture shows, and
/// an image mask is white there.
CGImageRef create_inverted_gray(CGImageRef image) {
    constexpr std::size_t bitsPerComponent = 8;
    const std::size_t width = CGImageGetWidth(image);
    const std::size_t height = CGImageGetHeight(image);
    const auto gray = CFReference<CGColorSpaceRef>::adopt(CGColorSpaceCreateDeviceGray());
    const auto context = CFReference<CGContextRef>::adopt(CGBitmapContextCreate(
        nullptr, width, height, bitsPerComponent, 0, gray.get(), kCGImageAlphaNone));
    if (!context) return nullptr;
    CGContextDrawImage(context.get(),
                       CGRectMake(0, 0, static_cast<CGFloat>(width), static_cast<CGFloat>(height)),
                       image);
    auto* row = static_cast<std::uint8_t*>(CGBitmapContextGetData(context.get()));
    if (!row) return nullptr;
    const std::size_t rowBytes = CGBitmapContextGetBytesPerRow(context.get());
    for (std::size_t y = 0; y < height; ++y, row += rowBytes)
        for (std::size_t x = 0; x < width; ++x)
            row[x] = static_cast<std::uint8_t>(255 - row[x]);
    return CGBitmapContextCreateImage(context.get());
}

} // namespace

CGImageRef CreateCGImageInternal(REALpictureStruct* picture, REALpictureStruct* mask) {
    if (system_is_at_least_10(7) && picture)
        if (CGImageRef const image = image_by_host(picture, mask)) return image;
    if (!picture) return nullptr;

    const LockedDescription lockedPicture(picture, REALpictureCGBitmapContext);
    auto image = CFReference<CGImageRef>::adopt(create_image(lockedPicture));
    if (!image || !mask) return image.leak();

    const LockedDescription lockedMask(mask, REALpictureCGBitmapContext);
    const auto maskImage = CFReference<CGImageRef>::adopt(create_image(lockedMask));
    if (!maskImage) return image.leak();
    const auto inverted = CFReference<CGImageRef>::adopt(create_inverted_gray(maskImage.get()));
    return CGImageCreateWithMask(image.get(), inverted.get());
}
