#pragma once

#include "cocoa/AppKit/ownership.h"
#include "cocoa/codecs/codec.h"

namespace cocoa::appkit {

/// The frames of a moving picture, of which a bitmap shows one at a time.
class BitmapFrames {
public:
    /// None.
    BitmapFrames() = default;
    /// Those of encoded data, which must have some; the first is the current one.
    explicit BitmapFrames(NSData* data);

    BitmapFrames copy() const;

    explicit operator bool() const { return reader_ != nullptr; }
    std::size_t count() const { return reader_->pageCount(); }
    std::size_t current() const { return current_; }
    double duration() const { return reader_->animation()->durations[current_]; } ///< in seconds
    /// How often all of them are to be shown again, 0 for ever; nothing when that is not said.
    std::optional<unsigned> repeats() const { return reader_->animation()->repeats; }

    /// Makes another frame the current one and decodes it into rows of the layout that all frames
    /// have. False, with everything as it was, when there is no such frame or it is broken.
    bool show(std::size_t index, std::uint8_t* pixels, std::size_t rowBytes);

private:
    Owned<NSData*> data_;
    std::unique_ptr<codecs::Reader> reader_;
    std::size_t current_ = 0;
};

} // namespace cocoa::appkit
