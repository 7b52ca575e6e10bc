#include "plugin/picture/new_image.h"

#include "plugin/entry/references.h"
#include "plugin/entry/system_version.h"
#include "plugin/picture/picture_editor.h"

#include <cstring>
#include <vector>

namespace {

/// The kernels write pixels without gaps.
constexpr NSInteger opaqueSamples = 3;
constexpr NSInteger alphaSamples = 4;

NSBitmapImageRep* new_bitmap(const PictureEditor& picture, NSInteger samples) {
    return [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:NULL
                                                    pixelsWide:picture.width
                                                    pixelsHigh:picture.height
                                                 bitsPerSample:8
                                               samplesPerPixel:samples
                                                      hasAlpha:samples == alphaSamples
                                                      isPlanar:NO
                                                colorSpaceName:NSCalibratedRGBColorSpace
                                                   bytesPerRow:0
                                                  bitsPerPixel:0] autorelease];
}

/// Writes the rows of a bitmap, each by `write(pixels)`; where the bitmap leaves gaps between its
/// pixels, they are spread behind.
template <typename Write>
void write_rows(NSBitmapImageRep* bitmap, const PictureEditor& picture, NSInteger samples,
                Write write) {
    std::uint8_t* row = [bitmap bitmapData];
    if (!row) return;
    const NSInteger rowBytes = [bitmap bytesPerRow];
    const auto pixelBytes = static_cast<std::size_t>([bitmap bitsPerPixel] / 8);
    const auto sampleBytes = static_cast<std::size_t>(samples);
    const auto width = static_cast<std::size_t>(picture.width);
    std::vector<std::uint8_t> dense(pixelBytes == sampleBytes ? 0 : width * sampleBytes);
    for (std::int32_t y = 0; y < picture.height; ++y, row += rowBytes) {
        if (dense.empty()) {
            write(row);
            continue;
        }
        write(dense.data());
        for (std::size_t x = 0; x < width; ++x)
            std::memcpy(row + x * pixelBytes, dense.data() + x * sampleBytes, sampleBytes);
    }
}

NSImage* image_by_host(REALpictureStruct* picture) {
    const auto image = CFReference<CGImageRef>::adopt(REALCopyPictureCGImage(picture));
    if (!image) return nil;
    const NSSize size = NSMakeSize(static_cast<CGFloat>(CGImageGetWidth(image.get())),
                                   static_cast<CGFloat>(CGImageGetHeight(image.get())));
    return [[[NSImage alloc] initWithCGImage:image.get() size:size] autorelease];
}

NSImage* opaque_image(REALpictureStruct* picture) {
    PictureReader reader;
    if (!reader.GetPictureEditor(picture, 1, 0)) return nil;
    NSBitmapImageRep* const bitmap = new_bitmap(reader, opaqueSamples);
    if (!bitmap) return nil;
    if (const auto order = pixel_order_of(reader.pixelFormat)) {
        const auto copy = fastest_pixel_kernels().copyRGB[static_cast<std::size_t>(*order)];
        write_rows(bitmap, reader, opaqueSamples, [&](std::uint8_t* rgb) {
            copy(reader.pixels(), static_cast<std::size_t>(reader.width), rgb);
            reader.next_row();
        });
    }
    NSImage* const image = [[[NSImage alloc] initWithSize:NSMakeSize(0, 0)] autorelease];
    [image addRepresentation:bitmap];
    [image setSize:NSMakeSize(reader.width, reader.height)];
    return image;
}

NSImage* masked_image(REALpictureStruct* picture, REALpictureStruct* mask) {
    PictureReader reader;
    if (!reader.GetPictureEditor(picture, 1, 0)) return nil;
    PictureReader maskReader;
    if (!maskReader.GetPictureEditor(mask, 1, 0)) return nil;
    if (maskReader.width != reader.width || maskReader.height != reader.height) return nil;
    NSBitmapImageRep* const bitmap = new_bitmap(reader, alphaSamples);
    if (!bitmap) return nil;
    const auto order = pixel_order_of(reader.pixelFormat);
    const auto maskOrder = pixel_order_of(maskReader.pixelFormat);
    if (order && maskOrder) {
        const auto premultiply =
            fastest_pixel_kernels().premultiply[static_cast<std::size_t>(*order)]
                                               [static_cast<std::size_t>(*maskOrder)];
        write_rows(bitmap, reader, alphaSamples, [&](std::uint8_t* rgba) {
            premultiply(reader.pixels(), maskReader.pixels(),
                        static_cast<std::size_t>(reader.width), rgba);
            reader.next_row();
            maskReader.next_row();
        });
    }
    NSImage* const image =
        [[[NSImage alloc] initWithSize:NSMakeSize(reader.width, reader.height)] autorelease];
    [image addRepresentation:bitmap];
    return image;
}

} // namespace

NSImage* NewNSImage(REALpictureStruct* image, REALpictureStruct* mask) {
    if (!image) return nil;
    if (mask) return masked_image(image, mask);
    if (system_is_at_least_10(6))
        if (NSImage* const made = image_by_host(image)) return made;
    if (const HostObject ownMask = HostObject::adopt(REALGetPictureMask(image, false)))
        return masked_image(image, static_cast<REALpictureStruct*>(ownMask.get()));
    return opaque_image(image);
}
