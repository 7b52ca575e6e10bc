#pragma once

#include "cocoa/CoreGraphics/object.h"

#include <CoreGraphics/CGDataProvider.h>

#include <cstdint>
#include <span>

namespace cocoa::cg {

/// Bytes that do not move, and what to do when they are not needed any more.
class DataProvider final : public Body {
public:
    using Release = CGDataProviderReleaseDataCallback;

    DataProvider(void* info, const void* data, std::size_t size, Release release)
        : content(static_cast<const std::uint8_t*>(data), size)
        , info(info)
        , release(release) {}
    ~DataProvider() override {
        if (release != nullptr) release(info, content.data(), content.size());
    }

    std::span<const std::uint8_t> bytes() const { return content; }

private:
    std::span<const std::uint8_t> content;
    void* info;
    Release release;
};

/// The release callback of a provider on memory of an object, which is its info and retained by it.
inline void releaseOwner(void* info, const void*, std::size_t) { releaseObject(info); }

inline DataProvider* bodyOf(CGDataProviderRef provider) {
    return static_cast<DataProvider*>(bodyOfObject(provider));
}

} // namespace cocoa::cg
