/// Images as host Pictures, and images drawn into CoreGraphics contexts.

#include "plugin/classes/handle.h"
#include "plugin/classes/nsimage/members.h"
#include "plugin/entry/exceptions.h"
#include "plugin/entry/frames.h"
#include "plugin/picture/copy_picture.h"
#include "plugin/picture/drawing_context.h"

#include <algorithm>
#include <limits>

namespace nsimage {

namespace {

/// A colour space given as a Variant is looked at and never used: any value is taken.
void look_at_color_space(REALobjectStruct* colorSpace) {
    if (!colorSpace) return;
    if (REALclassRef const colorSpaceClass = REALGetClassRef("CGColorSpaceZNT"))
        REALObjectIsA(colorSpace, colorSpaceClass);
}

/// Hosts with words of 64 bits have coordinates that no image reaches.
int narrowed(REALword coordinate) {
    return static_cast<int>(std::clamp<REALword>(coordinate, std::numeric_limits<int>::min(),
                                                 std::numeric_limits<int>::max()));
}

NSRect narrowed_rect(double x, double y, double width, double height) {
    return NSMakeRect(static_cast<float>(x), static_cast<float>(y), static_cast<float>(width),
                      static_cast<float>(height));
}

bool refuse(const char* message) {
    RaiseException("NilObjectException", message);
    return false;
}

/// Makes a graphics context current by the class's own saving, for as long as this lives.
class SavedByClass {
public:
    explicit SavedByClass(NSGraphicsContext* graphics) {
        [NSGraphicsContext saveGraphicsState];
        [NSGraphicsContext setCurrentContext:graphics];
    }
    SavedByClass(const SavedByClass&) = delete;
    SavedByClass& operator=(const SavedByClass&) = delete;
    ~SavedByClass() { [NSGraphicsContext restoreGraphicsState]; }
};

} // namespace

REALpictureStruct* CopyPictureRect(REALobjectStruct* object, REALword x, REALword y, REALword w,
                                   REALword h, REALobjectStruct* colorSpace) {
    return FullFrame([&] {
        look_at_color_space(colorSpace);
        return NSImageCopyPictureRect(image_of(object), narrowed(x), narrowed(y), narrowed(w),
                                      narrowed(h), nullptr);
    });
}

REALpictureStruct* CopyPicture(REALobjectStruct* object, REALobjectStruct* colorSpace) {
    return CopyPictureRect(object, 0, 0, 0, 0, colorSpace);
}

REALpictureStruct* CopyMask(REALobjectStruct* object) {
    return FullFrame([&] { return NSImageCopyPictureMask(image_of(object)); });
}

REALpictureStruct* CopyPictureWithMask(REALobjectStruct* object, REALobjectStruct* colorSpace) {
    return FullFrame([&] {
        look_at_color_space(colorSpace);
        return NSImageCopyPictureWithMask(image_of(object));
    });
}

bool DrawIntoCGContextAtPoint(REALobjectStruct* object, REALword context, double x, double y,
                              double sx, double sy, double sourceWidth, double sourceHeight,
                              REALword operation, double fraction) {
    if (!context) return refuse("CGContext is nil");
    return FullFrame([&]() -> bool {
        NSImage* const image = image_of(object);
        if (!image) return false;
        NSGraphicsContext* const graphics =
            [NSGraphicsContext graphicsContextWithGraphicsPort:reinterpret_cast<void*>(context)
                                                       flipped:NO];
        if (!graphics) return false;
        {
            const SavedByClass saved(graphics);
            [image drawAtPoint:narrowed_rect(x, y, 0, 0).origin
                      fromRect:narrowed_rect(sx, sy, sourceWidth, sourceHeight)
                     operation:static_cast<NSCompositingOperation>(operation)
                      fraction:static_cast<float>(fraction)];
        }
        [graphics flushGraphics];
        return true;
    });
}

bool DrawIntoCGContextAtRect(REALobjectStruct* object, REALword context, double x, double y,
                             double w, double h, double sourceX, double sourceY, double sourceWidth,
                             double sourceHeight, REALword operation, double fraction) {
    if (!context) return refuse("CGContext is nil");
    return FullFrame([&]() -> bool {
        NSImage* const image = image_of(object);
        if (!image) return false;
        const DrawingContext drawing(reinterpret_cast<CGContextRef>(context));
        if (!drawing) return false;
        [image drawInRect:narrowed_rect(x, y, w, h)
                 fromRect:narrowed_rect(sourceX, sourceY, sourceWidth, sourceHeight)
                operation:static_cast<NSCompositingOperation>(operation)
                 fraction:static_cast<float>(fraction)];
        return true;
    });
}

} // namespace nsimage
