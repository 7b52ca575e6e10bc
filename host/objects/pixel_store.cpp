#include "host/objects/pixel_store.h"

#include "sdk/gd_image.h"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>

namespace host {

namespace {

constexpr Pixel white = 0xFFFFFF;
constexpr std::uint32_t opaque = 0xFF;

/// Where the bytes of a bitmap context's pixel are, in memory order.
struct Places {
    int red, green, blue, alpha;
};

Places placesOf(CGImageAlphaInfo alphaInfo) {
    const bool first = alphaInfo == kCGImageAlphaPremultipliedFirst ||
                       alphaInfo == kCGImageAlphaFirst || alphaInfo == kCGImageAlphaNoneSkipFirst;
    return first ? Places{1, 2, 3, 0} : Places{0, 1, 2, 3};
}

class BitmapContext : public PixelStore {
public:
    BitmapContext(CGContextRef context, CGImageAlphaInfo alphaInfo)
        : PixelStore(static_cast<int>(CGBitmapContextGetWidth(context)),
                     static_cast<int>(CGBitmapContextGetHeight(context)))
        , context_(context)
        , places_(placesOf(alphaInfo))
        , isPremultiplied_(alphaInfo == kCGImageAlphaPremultipliedFirst ||
                           alphaInfo == kCGImageAlphaPremultipliedLast) {}
    ~BitmapContext() override { CGContextRelease(context_); }

    Pixel pixel(int x, int y) const override {
        const std::uint8_t* const bytes = at(x, y);
        const std::uint32_t alpha = isPremultiplied_ ? bytes[places_.alpha] : opaque;
        const auto straight = [&](int place) -> std::uint32_t {
            if (alpha == 0) return 0;
            return std::min<std::uint32_t>((bytes[place] * opaque + alpha / 2) / alpha, opaque);
        };
        return alpha << 24 | straight(places_.red) << 16 | straight(places_.green) << 8 |
               straight(places_.blue);
    }

    void setPixel(int x, int y, Pixel pixel) override {
        std::uint8_t* const bytes = at(x, y);
        const std::uint32_t alpha = isPremultiplied_ ? pixel >> 24 : opaque;
        const auto stored = [&](int shift) {
            const std::uint32_t component = pixel >> shift & 0xFF;
            return static_cast<std::uint8_t>((component * alpha + opaque / 2) / opaque);
        };
        bytes[places_.red] = stored(16);
        bytes[places_.green] = stored(8);
        bytes[places_.blue] = stored(0);
        bytes[places_.alpha] = static_cast<std::uint8_t>(alpha);
    }

    std::uint32_t type() const override { return REALpictureCGBitmapContext; }
    void* data() const override { return context_; }

private:
    std::uint8_t* at(int x, int y) const {
        auto* const start = static_cast<std::uint8_t*>(CGBitmapContextGetData(context_));
        return start + static_cast<std::size_t>(y) * CGBitmapContextGetBytesPerRow(context_) +
               static_cast<std::size_t>(x) * 4;
    }

    CGContextRef context_;
    Places places_;
    bool isPremultiplied_;
};

/// The gd library, loaded when the first console Picture is made.
struct GDLibrary {
    gdImageStruct* (*createTrueColor)(int width, int height) = nullptr;
    void (*destroy)(gdImageStruct* image) = nullptr;

    static const GDLibrary& loaded() {
        static const GDLibrary library = load();
        return library;
    }

private:
    static GDLibrary load() {
        GDLibrary library;
        void* const handle = dlopen("libgd.so.3", RTLD_NOW | RTLD_LOCAL);
        if (!handle) return library;
        library.destroy = reinterpret_cast<decltype(destroy)>(dlsym(handle, "gdImageDestroy"));
        if (library.destroy)
            library.createTrueColor = reinterpret_cast<decltype(createTrueColor)>(
                dlsym(handle, "gdImageCreateTrueColor"));
        return library;
    }
};

class GDImage : public PixelStore {
public:
    explicit GDImage(gdImageStruct* image)
        : PixelStore(image->sx, image->sy)
        , image_(image) {}
    ~GDImage() override { GDLibrary::loaded().destroy(image_); }

    Pixel pixel(int x, int y) const override {
        return opaque << 24 | (static_cast<std::uint32_t>(image_->tpixels[y][x]) & 0xFFFFFF);
    }
    void setPixel(int x, int y, Pixel pixel) override {
        image_->tpixels[y][x] = static_cast<int>(pixel & 0xFFFFFF);
    }
    std::uint32_t type() const override { return REALpictureGDImage; }
    void* data() const override { return image_; }

private:
    gdImageStruct* image_;
};

} // namespace

std::unique_ptr<PixelStore> makeBitmapContext(int width, int height, CGImageAlphaInfo alphaInfo) {
    if (width < 1 || height < 1) return nullptr;
    CGColorSpaceRef const space = CGColorSpaceCreateDeviceRGB();
    CGContextRef const context =
        CGBitmapContextCreate(nullptr, static_cast<std::size_t>(width),
                              static_cast<std::size_t>(height), 8, 0, space, alphaInfo);
    CGColorSpaceRelease(space);
    if (!context) return nullptr;
    auto store = std::make_unique<BitmapContext>(context, alphaInfo);
    const bool startsTransparent =
        alphaInfo == kCGImageAlphaPremultipliedFirst || alphaInfo == kCGImageAlphaPremultipliedLast;
    // Opaque white is all ones in every layout.
    if (!startsTransparent)
        std::memset(CGBitmapContextGetData(context), opaque,
                    CGBitmapContextGetBytesPerRow(context) * static_cast<std::size_t>(height));
    return store;
}

std::unique_ptr<PixelStore> makeGDImage(int width, int height) {
    if (width < 1 || height < 1 || !GDLibrary::loaded().createTrueColor) return nullptr;
    gdImageStruct* const image = GDLibrary::loaded().createTrueColor(width, height);
    if (!image) return nullptr;
    for (int row = 0; row < height; ++row)
        std::fill_n(image->tpixels[row], width, static_cast<int>(white));
    return std::make_unique<GDImage>(image);
}

} // namespace host
