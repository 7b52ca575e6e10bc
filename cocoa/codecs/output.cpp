#include "cocoa/codecs/output.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace cocoa::codecs {

namespace {

constexpr std::size_t maximumSize = std::numeric_limits<std::ptrdiff_t>::max();

} // namespace

bool Output::reserve(std::size_t capacity) {
    if (capacity <= capacity_) return true;
    if (capacity > maximumSize) return false;
    auto* grown = static_cast<std::uint8_t*>(std::realloc(bytes_.get(), capacity));
    if (!grown) return false;
    static_cast<void>(bytes_.release()); // realloc took the old bytes
    bytes_.reset(grown);
    capacity_ = capacity;
    return true;
}

bool Output::write_at(std::size_t offset, const void* source, std::size_t count) {
    if (offset > maximumSize || count > maximumSize - offset) return false;
    const std::size_t end = offset + count;
    if (end > capacity_ &&
        !reserve(std::max({end, capacity_ + capacity_ / 2, std::size_t{4096}}))) {
        return false;
    }
    if (offset > size_) std::memset(bytes_.get() + size_, 0, offset - size_);
    if (count > 0) std::memcpy(bytes_.get() + offset, source, count);
    size_ = std::max(size_, end);
    return true;
}

std::uint8_t* Output::room(std::size_t capacity) {
    if (capacity > maximumSize - size_) return nullptr;
    if (size_ + capacity > capacity_ &&
        !reserve(std::max(size_ + capacity, capacity_ + capacity_ / 2))) {
        return nullptr;
    }
    return bytes_.get() + size_;
}

Encoded Output::take() {
    if (size_ > 0 && size_ < capacity_) {
        if (auto* cut = static_cast<std::uint8_t*>(std::realloc(bytes_.get(), size_))) {
            static_cast<void>(bytes_.release());
            bytes_.reset(cut);
        }
    }
    Encoded encoded{std::move(bytes_), size_};
    size_ = capacity_ = 0;
    return encoded;
}

} // namespace cocoa::codecs
