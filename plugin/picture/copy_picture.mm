#include "plugin/picture/copy_picture.h"

#include "plugin/entry/references.h"
#include "plugin/picture/drawing_context.h"
#include "plugin/picture/picture_drawing.h"
#include "plugin/picture/picture_editor.h"

#include <cstdlib>
#include <memory>

namespace {

struct PixelSize {
    int width = 0;
    int height = 0;

    bool is_empty() const { return width < 1 || height < 1; }
};

/// 0 for what is no length that a Picture could have.
int whole(CGFloat length) {
    constexpr CGFloat tooLong = 2147483648.0;
    return length >= 0 && length < tooLong ? static_cast<int>(length) : 0;
}

/// 0 by 0 for an image that is not valid.
PixelSize whole_size(NSImage* image) {
    if (![image isValid]) return {};
    const NSSize size = [image size];
    return {whole(size.width), whole(size.height)};
}

/// Draws the rectangle of the image, unscaled, to the origin of the context; false when Cocoa has
/// no graphics context for it.
bool draw_into(CGContextRef context, NSImage* image, NSRect source) {
    const DrawingContext drawing(context);
    if (!drawing) return false;
    [image drawInRect:NSMakeRect(0, 0, source.size.width, source.size.height)
             fromRect:source
            operation:NSCompositeCopy
             fraction:1.0];
    return true;
}

/// A Picture's description, locked in the way that the host chooses, as long as this lives.
class HostChosenDescription {
public:
    explicit HostChosenDescription(REALpictureStruct* picture)
        : picture_(picture) {
        REALLockPictureDescription(picture, &description_);
    }
    HostChosenDescription(const HostChosenDescription&) = delete;
    HostChosenDescription& operator=(const HostChosenDescription&) = delete;
    ~HostChosenDescription() { REALUnlockPictureDescription(picture_); }

    /// Null unless it is a bitmap context.
    CGContextRef context() const {
        return description_.type == REALpictureCGBitmapContext
                   ? static_cast<CGContextRef>(description_.data)
                   : nullptr;
    }

private:
    REALpictureStruct* picture_;
    REALpictureDescription description_ = {};
};

/// The alphas of the image, a byte a pixel and the top row first; null when they cannot be had.
std::unique_ptr<std::uint8_t[], decltype(&std::free)> alphas_of(NSImage* image, PixelSize size) {
    std::unique_ptr<std::uint8_t[], decltype(&std::free)> none(nullptr, &std::free);
    const auto gray = CFReference<CGColorSpaceRef>::adopt(CGColorSpaceCreateDeviceGray());
    const std::int64_t count = std::int64_t{size.width} * size.height;
    if (!gray || count > UINT32_MAX) return none;
    std::unique_ptr<std::uint8_t[], decltype(&std::free)> alphas(
        static_cast<std::uint8_t*>(std::calloc(static_cast<std::size_t>(count), 1)), &std::free);
    if (!alphas) return none;
    const auto width = static_cast<std::size_t>(size.width);
    const auto context = CFReference<CGContextRef>::adopt(
        CGBitmapContextCreate(alphas.get(), width, static_cast<std::size_t>(size.height), 8, width,
                              gray.get(), kCGImageAlphaOnly));
    if (!context || !draw_into(context.get(), image, NSMakeRect(0, 0, size.width, size.height)))
        return none;
    return alphas;
}

HostObject as_owned(REALpictureStruct* picture) { return HostObject::adopt(picture); }

REALpictureStruct* leaked(HostObject& picture) {
    return static_cast<REALpictureStruct*>(picture.leak());
}

bool has_alpha(NSImage* image) {
    NSEnumerator* const representations = [[image representations] objectEnumerator];
    while (NSImageRep* const representation = [representations nextObject])
        if ([representation hasAlpha]) return true;
    return false;
}

} // namespace

REALpictureStruct* NSImageCopyPictureRect(NSImage* image, int x, int y, int w, int h,
                                          CGColorSpaceRef) {
    if (x < 0 || y < 0 || w < 0 || h < 0 || !image) return nullptr;
    const PixelSize size = whole_size(image);
    if (size.is_empty()) return nullptr;
    if (w < 1) w = size.width;
    if (h < 1) h = size.height;
    if (std::int64_t{x} + w > size.width) w = size.width - x;
    if (std::int64_t{y} + h > size.height) h = size.height - y;
    if (w <= 0 || h <= 0) return nullptr;

    HostObject picture = as_owned(REALNewPicture(w, h, 32));
    if (!picture) return nullptr;
    auto* const hostPicture = static_cast<REALpictureStruct*>(picture.get());
    {
        const HostChosenDescription locked(hostPicture);
        if (!locked.context() || !draw_into(locked.context(), image, NSMakeRect(x, y, w, h)))
            return nullptr;
    }
    REALPictureClearCache(hostPicture);
    return leaked(picture);
}

REALpictureStruct* NSImageCopyPictureMask(NSImage* image) {
    constexpr int longestSide = 32767;
    const PixelSize size = whole_size(image);
    if (size.is_empty() || size.width > longestSide || size.height > longestSide) return nullptr;
    const auto alphas = alphas_of(image, size);
    if (!alphas) return nullptr;

    PictureWriter writer;
    {
        const HostObject picture = as_owned(REALNewPicture(size.width, size.height, 32));
        if (!writer.GetPictureEditor(static_cast<REALpictureStruct*>(picture.get()), 0, 1))
            return nullptr;
    }
    if (writer.width < size.width || writer.height < size.height) return nullptr;
    if (const auto order = pixel_order_of(writer.pixelFormat)) {
        const auto write = fastest_pixel_kernels().writeMask[static_cast<std::size_t>(*order)];
        const std::uint8_t* row = alphas.get();
        for (int y = 0; y < size.height; ++y, row += size.width) {
            write(row, static_cast<std::size_t>(size.width), writer.pixels());
            writer.next_row();
        }
    }
    REALLockObject(writer.picture);
    REALPictureClearCache(writer.picture);
    return writer.picture;
}

REALpictureStruct* NSImageCopyPictureWithMask(NSImage* image) {
    if (!has_alpha(image)) return NSImageCopyPictureRect(image, 0, 0, 0, 0, nullptr);
    const HostObject mask = as_owned(NSImageCopyPictureMask(image));
    if (!mask) return nullptr;
    HostObject picture = as_owned(NSImageCopyPictureRect(image, 0, 0, 0, 0, nullptr));
    if (!picture) return nullptr;

    auto* const hostPicture = static_cast<REALpictureStruct*>(picture.get());
    const auto [width, height] = size_of_picture(hostPicture);
    if (width < 1 || height < 1) return nullptr;
    const HostObject hostMask = as_owned(REALGetPictureMask(hostPicture, true));
    const bool isDrawn =
        hostMask && GraphicsDrawPicture(static_cast<REALpictureStruct*>(hostMask.get()),
                                        static_cast<REALpictureStruct*>(mask.get()), 0, 0, width,
                                        height, 0, 0, width, height);
    return isDrawn ? leaked(picture) : nullptr;
}
