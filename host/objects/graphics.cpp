#include "host/objects/graphics.h"

#include "host/objects/host_classes.h"
#include "host/objects/picture.h"
#include "host/objects/runtime.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace host {

namespace {

constexpr std::uint32_t opaque = 0xFF;
/// The default of an extent in DrawPicture: all there is.
constexpr std::int64_t whole = -10000;

struct GraphicsState : State {
    ObjectRef picture;
};

struct RGBSurfaceState : State {
    ObjectRef picture;
};

/// The Picture behind a Graphics or an RGBSurface, which is about to change; null when it was never
/// made.
template <typename Drawing>
Picture* pictureOf(REALobjectStruct* self) {
    auto* const picture = stateOf<Picture>(stateOf<Drawing>(self)->picture);
    if (!picture || !picture->pixels()) return nullptr;
    picture->changed();
    return picture;
}

/// A pixel of an alpha channel is drawn over, so that colours stay what they are without one.
Pixel over(Pixel below, std::uint32_t rgb, std::uint32_t alpha) {
    if (alpha == opaque) return opaque << 24 | rgb;
    const std::uint32_t belowAlpha = below >> 24;
    const std::uint32_t kept = belowAlpha * (opaque - alpha);
    const std::uint32_t total = alpha * opaque + kept; // of 255 * 255
    if (total == 0) return 0;
    const auto mixed = [&](int shift) {
        const std::uint32_t upper = rgb >> shift & 0xFF;
        const std::uint32_t lower = below >> shift & 0xFF;
        return (upper * alpha * opaque + lower * kept + total / 2) / total << shift;
    };
    return (total + opaque / 2) / opaque << 24 | mixed(16) | mixed(8) | mixed(0);
}

bool contains(const PixelStore& store, std::int64_t x, std::int64_t y) {
    return x >= 0 && y >= 0 && x < store.width() && y < store.height();
}

void plot(PixelStore& store, std::int64_t x, std::int64_t y, std::uint32_t rgb) {
    if (contains(store, x, y))
        store.setPixel(static_cast<int>(x), static_cast<int>(y), opaque << 24 | rgb);
}

/// Sides are cut to what a Picture can have, far outside of it.
std::int64_t coordinate(const Value& value) {
    constexpr std::int64_t farthest = 1 << 20;
    return std::clamp(value.toInt64(), -farthest, farthest);
}

void fillRect(PixelStore& store, std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h,
              std::uint32_t rgb) {
    const std::int64_t right = std::min<std::int64_t>(x + w, store.width());
    const std::int64_t bottom = std::min<std::int64_t>(y + h, store.height());
    for (std::int64_t row = std::max<std::int64_t>(y, 0); row < bottom; ++row)
        for (std::int64_t column = std::max<std::int64_t>(x, 0); column < right; ++column)
            plot(store, column, row, rgb);
}

void drawLine(PixelStore& store, std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2,
              std::uint32_t rgb) {
    const std::int64_t dx = std::abs(x2 - x1);
    const std::int64_t dy = -std::abs(y2 - y1);
    const int stepX = x1 < x2 ? 1 : -1;
    const int stepY = y1 < y2 ? 1 : -1;
    for (std::int64_t error = dx + dy;;) {
        plot(store, x1, y1, rgb);
        if (x1 == x2 && y1 == y2) return;
        const std::int64_t doubled = 2 * error;
        if (doubled >= dy) {
            error += dy;
            x1 += stepX;
        }
        if (doubled <= dx) {
            error += dx;
            y1 += stepY;
        }
    }
}

/// The pixels whose centres lie within the ellipse.
void fillOval(PixelStore& store, std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h,
              std::uint32_t rgb) {
    if (w < 1 || h < 1) return;
    const double middleX = static_cast<double>(x) + static_cast<double>(w) / 2;
    const double middleY = static_cast<double>(y) + static_cast<double>(h) / 2;
    const std::int64_t bottom = std::min<std::int64_t>(y + h, store.height());
    const std::int64_t right = std::min<std::int64_t>(x + w, store.width());
    for (std::int64_t row = std::max<std::int64_t>(y, 0); row < bottom; ++row)
        for (std::int64_t column = std::max<std::int64_t>(x, 0); column < right; ++column) {
            const double across =
                2 * (static_cast<double>(column) + 0.5 - middleX) / static_cast<double>(w);
            const double down =
                2 * (static_cast<double>(row) + 0.5 - middleY) / static_cast<double>(h);
            if (across * across + down * down <= 1) plot(store, column, row, rgb);
        }
}

struct Rect {
    std::int64_t x, y, w, h;
};

/// The mean of the source's pixels within a cell, at least one of them; colours weigh as much as
/// they show.
Pixel sample(const Picture& source, const Rect& cell) {
    std::uint64_t alpha = 0, red = 0, green = 0, blue = 0;
    const std::int64_t count = cell.w * cell.h;
    for (std::int64_t y = cell.y; y < cell.y + cell.h; ++y)
        for (std::int64_t x = cell.x; x < cell.x + cell.w; ++x) {
            const auto column = static_cast<int>(x);
            const auto row = static_cast<int>(y);
            const Pixel pixel = source.pixels()->pixel(column, row);
            const std::uint64_t weight = alphaOf(source, column, row);
            alpha += weight;
            red += weight * (pixel >> 16 & 0xFF);
            green += weight * (pixel >> 8 & 0xFF);
            blue += weight * (pixel & 0xFF);
        }
    if (alpha == 0) return 0;
    const auto mean = [&](std::uint64_t sum) {
        return static_cast<std::uint32_t>((sum + alpha / 2) / alpha);
    };
    const auto total = static_cast<std::uint64_t>(count);
    return static_cast<std::uint32_t>((alpha + total / 2) / total) << 24 | mean(red) << 16 |
           mean(green) << 8 | mean(blue);
}

/// The source's pixels that a target pixel covers, along one side.
std::pair<std::int64_t, std::int64_t> covered(std::int64_t index, std::int64_t targetLength,
                                              std::int64_t sourceStart, std::int64_t sourceLength) {
    const std::int64_t start = sourceStart + index * sourceLength / targetLength;
    const std::int64_t end = sourceStart + (index + 1) * sourceLength / targetLength;
    return {start, std::max<std::int64_t>(end - start, 1)};
}

void drawPicture(PixelStore& target, const Picture& source, const Rect& to, const Rect& from) {
    if (to.w < 1 || to.h < 1 || from.w < 1 || from.h < 1) return;
    const std::int64_t lastRow = std::min(to.h, target.height() - to.y);
    const std::int64_t lastColumn = std::min(to.w, target.width() - to.x);
    for (std::int64_t row = std::max<std::int64_t>(0, -to.y); row < lastRow; ++row)
        for (std::int64_t column = std::max<std::int64_t>(0, -to.x); column < lastColumn;
             ++column) {
            const auto [x, w] = covered(column, to.w, from.x, from.w);
            const auto [y, h] = covered(row, to.h, from.y, from.h);
            if (!contains(*source.pixels(), x, y) ||
                !contains(*source.pixels(), x + w - 1, y + h - 1))
                continue;
            const Pixel pixel = sample(source, {x, y, w, h});
            const auto targetX = static_cast<int>(to.x + column);
            const auto targetY = static_cast<int>(to.y + row);
            target.setPixel(targetX, targetY,
                            over(target.pixel(targetX, targetY), pixel & 0xFFFFFF, pixel >> 24));
        }
}

// Members

Value drawPictureMember(REALobjectStruct* self, std::span<Value> arguments) {
    Picture* const target = pictureOf<GraphicsState>(self);
    const auto* const source = stateOf<Picture>(arguments[0].object());
    if (!source) raise("NilObjectException", "There is no Picture to draw.");
    if (!target || !source->pixels()) return {};
    const auto extent = [&](std::size_t index, std::int64_t all) {
        const std::int64_t given = arguments[index].toInt64();
        return given == whole ? all : coordinate(arguments[index]);
    };
    const Rect from{coordinate(arguments[5]), coordinate(arguments[6]), extent(7, source->width()),
                    extent(8, source->height())};
    const Rect to{coordinate(arguments[1]), coordinate(arguments[2]), extent(3, from.w),
                  extent(4, from.h)};
    drawPicture(*target->pixels(), *source, to, from);
    return {};
}

/// A member of four integers that draws in the foreground colour.
using Draw = void (*)(PixelStore& store, std::int64_t a, std::int64_t b, std::int64_t c,
                      std::int64_t d, std::uint32_t rgb);

template <Draw draw>
Value drawMember(REALobjectStruct* self, std::span<Value> arguments) {
    if (Picture* const picture = pictureOf<GraphicsState>(self))
        draw(*picture->pixels(), coordinate(arguments[0]), coordinate(arguments[1]),
             coordinate(arguments[2]), coordinate(arguments[3]), picture->foreColor);
    return {};
}

void drawRect(PixelStore& store, std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h,
              std::uint32_t rgb) {
    if (w < 1 || h < 1) return;
    fillRect(store, x, y, w, 1, rgb);
    fillRect(store, x, y + h - 1, w, 1, rgb);
    fillRect(store, x, y, 1, h, rgb);
    fillRect(store, x + w - 1, y, 1, h, rgb);
}

template <typename Drawing>
Value getPixel(REALobjectStruct* self, std::span<Value> arguments) {
    const auto* const picture = stateOf<Picture>(stateOf<Drawing>(self)->picture);
    const std::int64_t x = coordinate(arguments[0]);
    const std::int64_t y = coordinate(arguments[1]);
    if (!picture || !picture->pixels() || !contains(*picture->pixels(), x, y)) return Color{};
    return Color{picture->pixels()->pixel(static_cast<int>(x), static_cast<int>(y)) & 0xFFFFFF};
}

template <typename Drawing>
Value setPixel(REALobjectStruct* self, std::span<Value> arguments) {
    if (Picture* const picture = pictureOf<Drawing>(self))
        plot(*picture->pixels(), coordinate(arguments[0]), coordinate(arguments[1]),
             arguments[2].get<Color>()->rgb);
    return {};
}

template <typename Drawing>
void addPixelMembers(Class& type) {
    type.addMethod("Pixel(x As Integer, y As Integer) As Color", getPixel<Drawing>);
    type.addMethod("Pixel(x As Integer, y As Integer, Assigns value As Color)", setPixel<Drawing>);
}

template <typename Drawing>
ObjectRef newDrawing(std::string_view className, ObjectRef picture) {
    ObjectRef object = Runtime::current().newInstance(className);
    if (auto* const drawing = stateOf<Drawing>(object)) drawing->picture = std::move(picture);
    return object;
}

} // namespace

ObjectRef newGraphics(ObjectRef picture) {
    return newDrawing<GraphicsState>("Graphics", std::move(picture));
}

ObjectRef newRGBSurface(ObjectRef picture) {
    return newDrawing<RGBSurfaceState>("RGBSurface", std::move(picture));
}

void fill(PixelStore& store, Pixel pixel) {
    for (int y = 0; y < store.height(); ++y)
        for (int x = 0; x < store.width(); ++x)
            store.setPixel(x, y, pixel);
}

void defineGraphics(Runtime& runtime) {
    Class& graphics = defineClass(runtime, "Graphics");
    graphics.makeState = [] { return std::make_unique<GraphicsState>(); };
    graphics.addProperty(
        "ForeColor", Kind::Color,
        [](REALobjectStruct* self) -> Value {
            const auto* const picture = stateOf<Picture>(stateOf<GraphicsState>(self)->picture);
            return Color{picture ? picture->foreColor : 0};
        },
        [](REALobjectStruct* self, const Value& color) {
            if (auto* const picture = stateOf<Picture>(stateOf<GraphicsState>(self)->picture))
                picture->foreColor = color.get<Color>()->rgb;
        });
    const auto extent = [](int (Picture::*side)() const) {
        return [side](REALobjectStruct* self) -> Value {
            const auto* const picture = stateOf<Picture>(stateOf<GraphicsState>(self)->picture);
            return picture ? (picture->*side)() : 0;
        };
    };
    graphics.addProperty("Width", Type::integer(), extent(&Picture::width));
    graphics.addProperty("Height", Type::integer(), extent(&Picture::height));
    graphics.addMethod("FillRect(x As Integer, y As Integer, w As Integer, h As Integer)",
                       drawMember<fillRect>);
    graphics.addMethod("DrawRect(x As Integer, y As Integer, w As Integer, h As Integer)",
                       drawMember<drawRect>);
    graphics.addMethod("DrawLine(x1 As Integer, y1 As Integer, x2 As Integer, y2 As Integer)",
                       drawMember<drawLine>);
    graphics.addMethod("FillOval(x As Integer, y As Integer, w As Integer, h As Integer)",
                       drawMember<fillOval>);
    graphics.addMethod(
        "DrawPicture(Image As Picture, x As Integer, y As Integer, w As Integer = -10000, "
        "h As Integer = -10000, sx As Integer = 0, sy As Integer = 0, sw As Integer = -10000, "
        "sh As Integer = -10000)",
        drawPictureMember);
    addPixelMembers<GraphicsState>(graphics);

    Class& surface = defineClass(runtime, "RGBSurface");
    surface.makeState = [] { return std::make_unique<RGBSurfaceState>(); };
    addPixelMembers<RGBSurfaceState>(surface);
}

} // namespace host
