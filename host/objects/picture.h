#pragma once

/// Picture: pixels in 32 bits, with an alpha channel or with a mask Picture, which is black where
/// the Picture shows. Coordinates count from the upper left corner.

#include "host/objects/object.h"
#include "host/objects/pixel_store.h"

namespace host {

class Picture : public State {
public:
    ~Picture() override;

    /// Null before the Picture was made; drawing into it must be followed by changed().
    PixelStore* pixels() const { return pixels_.get(); }
    void setPixels(std::unique_ptr<PixelStore> pixels);

    int width() const { return pixels_ ? pixels_->width() : 0; }
    int height() const { return pixels_ ? pixels_->height() : 0; }

    bool hasAlpha = false;
    /// Made of shapes, not of pixels: it is drawn like any other, and cannot be locked.
    bool isVector = false;
    ObjectRef mask; ///< a Picture, or Nil
    /// 0x00RRGGBB; what a program sets through one Graphics of the Picture holds for all.
    std::uint32_t foreColor = 0;

    // Locking of the description by plug-ins. Each lock is to be given back.

    int locks = 0;

    /// The rendering that the host shows and hands out, made when it is first asked for: with the
    /// mask, or the alpha channel, as alpha. It is out of date until changed() is called. Null in a
    /// console. Not retained for the caller.
    CGImageRef image();
    void changed();

private:
    CGImageRef render() const;

    std::unique_ptr<PixelStore> pixels_;
    CGImageRef image_ = nullptr;
};

/// The alpha channel of a Picture, when it is not opaque, or its mask, as alpha: 0 to 255.
std::uint32_t alphaOf(const Picture& picture, int x, int y);

/// A Picture of this host's kind; Nil for sides below 1 and when there is no memory.
ObjectRef newPicture(int width, int height, bool hasAlpha = false);
/// The mask, which is made, black, if there is none and `create` is set. Nil for Pictures with an
/// alpha channel.
ObjectRef maskOf(const ObjectRef& picture, bool create);

} // namespace host
