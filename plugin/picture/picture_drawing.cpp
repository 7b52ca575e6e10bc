#include "plugin/picture/picture_drawing.h"

#include "plugin/entry/references.h"
#include "plugin/picture/locked_description.h"
#include "sdk/gd_image.h"
#include "sdk/registration.h"

#include <cstring>

namespace {

bool copy_rows(const gdImageStruct* target, const gdImageStruct* source) {
    if (!target || !source) return false;
    if (target->sx != source->sx || target->sy != source->sy) return false;
    if (target->pixels || source->pixels || !target->tpixels || !source->tpixels) return false;
    for (int row = 0; row < source->sy; ++row)
        std::memcpy(target->tpixels[row], source->tpixels[row],
                    static_cast<std::size_t>(source->sx) * sizeof(int));
    return true;
}

} // namespace

bool draw_picture(REALobjectStruct* graphics, REALpictureStruct* source, int w, int h, int sw,
                  int sh) {
    using DrawPicture =
        void (*)(REALobjectStruct * graphics, REALpictureStruct * image, REALword x, REALword y,
                 REALword w, REALword h, REALword sx, REALword sy, REALword sw, REALword sh);
    const auto draw = reinterpret_cast<DrawPicture>(REALLoadObjectMethod(
        graphics,
        "DrawPicture(Image as Picture, x as Integer, y as Integer, w as Integer, h as Integer, "
        "sx as Integer = 0, sy as Integer = 0, sw as Integer = -10000, sh as Integer = -10000)"));
    if (draw) {
        draw(graphics, source, 0, 0, w, h, 0, 0, sw, sh);
        return true;
    }
    // Asked for, and not called: what it would draw is copied instead.
    if (rbversion < 2012.0 && gResolver) gResolver("RuntimeGraphicsDrawPicture");
    return false;
}

bool OwnCopy(REALpictureStruct* dest, REALpictureStruct* source, int, int, int w, int h, int, int,
             int sw, int sh) {
    if (!dest || !source || sw != w || sh != h) return false;
    bool isCopied = false;
    {
        const LockedDescription lockedSource(source, REALpictureGDImage);
        if (!lockedSource.is_locked()) return false;
        const LockedDescription lockedTarget(dest, REALpictureGDImage);
        isCopied = copy_rows(static_cast<const gdImageStruct*>(lockedTarget.data()),
                             static_cast<const gdImageStruct*>(lockedSource.data()));
    }
    REALPictureClearCache(dest);
    return isCopied;
}

bool GraphicsDrawPicture(REALpictureStruct* dest, REALpictureStruct* source, int x, int y, int w,
                         int h, int sx, int sy, int sw, int sh) {
    const HostObject graphics = HostObject::adopt(REALGetPictureGraphics(dest));
    if (graphics && source && draw_picture(graphics.get(), source, w, h, sw, sh)) return true;
    return OwnCopy(dest, source, x, y, w, h, sx, sy, sw, sh);
}
