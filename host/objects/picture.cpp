#include "host/objects/picture.h"

#include "host/objects/graphics.h"
#include "host/objects/host_classes.h"
#include "host/objects/runtime.h"

namespace host {

namespace {

constexpr std::int64_t longestSide = 32767;
constexpr Pixel black = 0xFF000000;

Picture& pictureOf(REALobjectStruct* self) { return *stateOf<Picture>(self); }

/// What a plug-in finds in the Pictures of this host.
std::unique_ptr<PixelStore> makeStore(int width, int height, bool hasAlpha) {
    const Options& options = Runtime::current().options();
    if (options.console) return makeGDImage(width, height);
    const auto layout = hasAlpha ? kCGImageAlphaPremultipliedFirst : kCGImageAlphaNoneSkipFirst;
    return makeBitmapContext(
        width, height,
        options.pictureLayout ? static_cast<CGImageAlphaInfo>(options.pictureLayout) : layout);
}

void construct(REALobjectStruct* self, const Value& width, const Value& height, bool hasAlpha) {
    const std::int64_t sides[] = {width.toInt64(), height.toInt64()};
    for (const std::int64_t side : sides)
        if (side < 1 || side > longestSide)
            raise("OutOfBoundsException", "A Picture's sides are 1 to " +
                                              std::to_string(longestSide) + " pixels long, not " +
                                              std::to_string(side) + ".");
    auto store = makeStore(static_cast<int>(sides[0]), static_cast<int>(sides[1]), hasAlpha);
    if (!store) raise("OutOfMemoryException", "The Picture cannot be made.");
    Picture& picture = pictureOf(self);
    picture.setPixels(std::move(store));
    picture.hasAlpha = hasAlpha && !Runtime::current().options().console;
}

Value constructOfDepth(REALobjectStruct* self, std::span<Value> arguments) {
    constexpr std::int64_t onlyDepth = 32;
    if (arguments[2].toInt64() != onlyDepth)
        raise("UnsupportedOperationException", "Pictures have a depth of 32 bits.");
    construct(self, arguments[0], arguments[1], false);
    return {};
}

Value constructWithAlpha(REALobjectStruct* self, std::span<Value> arguments) {
    construct(self, arguments[0], arguments[1], true);
    return {};
}

} // namespace

Picture::~Picture() {
    if (locks > 0)
        Runtime::current().reportMisuse("a Picture was destroyed with its description locked");
    CGImageRelease(image_);
}

void Picture::setPixels(std::unique_ptr<PixelStore> pixels) {
    pixels_ = std::move(pixels);
    changed();
}

void Picture::changed() {
    CGImageRelease(image_);
    image_ = nullptr;
}

CGImageRef Picture::image() {
    if (!image_) image_ = render();
    return image_;
}

std::uint32_t alphaOf(const Picture& picture, int x, int y) {
    if (const auto* const mask = stateOf<Picture>(picture.mask);
        mask && x < mask->width() && y < mask->height())
        return 255 - (mask->pixels()->pixel(x, y) >> 16 & 0xFF);
    return picture.pixels()->pixel(x, y) >> 24;
}

CGImageRef Picture::render() const {
    if (!pixels_ || pixels_->type() != REALpictureCGBitmapContext) return nullptr;
    if (!mask) return CGBitmapContextCreateImage(static_cast<CGContextRef>(pixels_->data()));
    const auto rendering = makeBitmapContext(width(), height(), kCGImageAlphaPremultipliedLast);
    if (!rendering) return nullptr;
    for (int y = 0; y < height(); ++y)
        for (int x = 0; x < width(); ++x)
            rendering->setPixel(x, y,
                                (pixels_->pixel(x, y) & 0xFFFFFF) | alphaOf(*this, x, y) << 24);
    return CGBitmapContextCreateImage(static_cast<CGContextRef>(rendering->data()));
}

ObjectRef newPicture(int width, int height, bool hasAlpha) {
    if (width < 1 || height < 1 || width > longestSide || height > longestSide) return nullptr;
    auto store = makeStore(width, height, hasAlpha);
    if (!store) return nullptr;
    ObjectRef object = Runtime::current().newInstance("Picture");
    if (auto* const picture = stateOf<Picture>(object)) {
        picture->setPixels(std::move(store));
        picture->hasAlpha = hasAlpha && !Runtime::current().options().console;
    }
    return object;
}

ObjectRef maskOf(const ObjectRef& object, bool create) {
    Picture& picture = *stateOf<Picture>(object);
    if (picture.hasAlpha) return nullptr;
    if (!picture.mask && create) {
        picture.mask = newPicture(picture.width(), picture.height());
        if (const auto* const mask = stateOf<Picture>(picture.mask)) fill(*mask->pixels(), black);
        picture.changed();
    }
    return picture.mask;
}

void definePicture(Runtime& runtime) {
    Class& type = defineClass(runtime, "Picture");
    type.makeState = [] { return std::make_unique<Picture>(); };
    type.addMethod("Constructor(width As Integer, height As Integer, depth As Integer)",
                   constructOfDepth);
    type.addMethod("Constructor(width As Integer, height As Integer)", constructWithAlpha);
    type.addProperty("Width", Type::integer(),
                     [](REALobjectStruct* self) -> Value { return pictureOf(self).width(); });
    type.addProperty("Height", Type::integer(),
                     [](REALobjectStruct* self) -> Value { return pictureOf(self).height(); });
    type.addProperty("Depth", Type::integer(), [](REALobjectStruct*) -> Value { return 32; });
    type.addProperty("HasAlphaChannel", Kind::Boolean,
                     [](REALobjectStruct* self) -> Value { return pictureOf(self).hasAlpha; });
    type.addProperty("Graphics", Type::object("Graphics"), [](REALobjectStruct* self) -> Value {
        return newGraphics(ObjectRef::retain(self));
    });
    type.addProperty("RGBSurface", Type::object("RGBSurface"), [](REALobjectStruct* self) -> Value {
        return newRGBSurface(ObjectRef::retain(self));
    });
    type.addProperty("Mask", Type::object("Picture"), [](REALobjectStruct* self) -> Value {
        return maskOf(ObjectRef::retain(self), true);
    });
}

} // namespace host
