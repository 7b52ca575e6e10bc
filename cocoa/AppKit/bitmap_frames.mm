#include "cocoa/AppKit/bitmap_frames.h"

#include <cstring>

namespace cocoa::appkit {

BitmapFrames::BitmapFrames(NSData* data)
    : data_(Owned<NSData*>::adopt([data copy]))
    , reader_(codecs::open({static_cast<const std::uint8_t*>([data_.get() bytes]),
                            static_cast<std::size_t>([data_.get() length])})
                  .reader) {
    if (reader_ && !reader_->animation()) reader_.reset();
}

BitmapFrames BitmapFrames::copy() const {
    if (!reader_) return {};
    BitmapFrames frames(data_.get());
    frames.current_ = current_;
    return frames;
}

bool BitmapFrames::show(std::size_t index, std::uint8_t* pixels, std::size_t rowBytes) {
    if (index >= count()) return false;
    const codecs::PixelLayout& layout = reader_->page(index).layout;
    // Decoded aside, so that a broken frame leaves the pixels alone.
    const std::size_t size = rowBytes * layout.height;
    const std::unique_ptr<std::uint8_t, codecs::Encoded::Free> decoded(
        static_cast<std::uint8_t*>(std::malloc(size)));
    if (!decoded || !reader_->read(index, 1, decoded.get(), rowBytes)) return false;
    std::memcpy(pixels, decoded.get(), size);
    current_ = index;
    return true;
}

} // namespace cocoa::appkit
