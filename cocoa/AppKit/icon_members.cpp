#include "cocoa/AppKit/icon_members.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace cocoa::appkit {
namespace {

using Bytes = std::span<const std::uint8_t>;
using Samples = std::vector<std::uint8_t>;

constexpr std::size_t headerSize = 8; // type and length, of the file and of each member

struct Member {
    std::string_view type;
    Bytes content;
};

/// Colours as bare runs, with what may tell their alpha.
struct ColorType {
    std::string_view type;
    int side;
    std::size_t skipped; ///< bytes before the runs
    std::string_view alphaType;
    std::string_view bitsType; ///< a picture of bits, then its mask
};

constexpr ColorType colorTypes[] = {
    {"is32", 16, 0, "s8mk", "ics#"},
    {"il32", 32, 0, "l8mk", "ICN#"},
    {"ih32", 48, 0, "h8mk", "ich#"},
    {"it32", 128, 4, "t8mk", ""},
};

/// Alpha and colours as runs, after the word "ARGB".
struct AlphaColorType {
    std::string_view type;
    int side;
};

constexpr AlphaColorType alphaColorTypes[] = {{"ic04", 16}, {"ic05", 32}, {"icsb", 18}};

constexpr std::string_view denseTypes[] = {"ic10", "ic11", "ic12", "ic13", "ic14"};

std::string_view text(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::uint32_t bigEndian(Bytes bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | bytes[3];
}

std::vector<Member> membersOf(Bytes file) {
    std::vector<Member> members;
    if (file.size() < headerSize || text(file.first(4)) != "icns") return members;
    Bytes rest = file.subspan(headerSize);
    while (rest.size() > headerSize) {
        const std::size_t length = bigEndian(rest.subspan(4));
        if (length < headerSize || length > rest.size()) break;
        members.push_back({text(rest.first(4)), rest.subspan(headerSize, length - headerSize)});
        rest = rest.subspan(length);
    }
    return members;
}

/// Nothing when there is none.
Bytes contentOf(const std::vector<Member>& members, std::string_view type) {
    for (const Member& member : members)
        if (member.type == type) return member.content;
    return {};
}

/// One plane of samples from the front of `runs`; nothing when they end early or overrun it.
std::optional<Samples> unpack(Bytes& runs, std::size_t count) {
    constexpr unsigned firstRepeat = 128;
    constexpr unsigned leastRepeat = 3;
    Samples plane;
    plane.reserve(count);
    while (plane.size() < count) {
        if (runs.size() < 2) return std::nullopt;
        const unsigned code = runs[0];
        const bool repeats = code >= firstRepeat;
        const std::size_t length = repeats ? code - firstRepeat + leastRepeat : code + 1;
        const std::size_t stored = repeats ? 1 : length;
        if (length > count - plane.size() || stored > runs.size() - 1) return std::nullopt;
        if (repeats)
            plane.insert(plane.end(), length, runs[1]);
        else
            plane.insert(plane.end(), runs.begin() + 1,
                         runs.begin() + 1 + static_cast<std::ptrdiff_t>(length));
        runs = runs.subspan(1 + stored);
    }
    return plane;
}

std::size_t pixelCount(int side) {
    return static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
}

/// Planes side by side.
Samples mesh(std::span<const Samples> planes) {
    Samples samples;
    samples.reserve(planes.size() * planes[0].size());
    for (std::size_t pixel = 0; pixel < planes[0].size(); ++pixel)
        for (const Samples& plane : planes)
            samples.push_back(plane[pixel]);
    return samples;
}

/// 255 where the mask that follows the picture of bits is set; nothing without one.
std::optional<Samples> alphaOfBits(Bytes bits, int side) {
    const std::size_t count = pixelCount(side);
    if (bits.size() < 2 * count / 8) return std::nullopt;
    const Bytes mask = bits.subspan(count / 8);
    Samples alpha(count);
    for (std::size_t pixel = 0; pixel < count; ++pixel)
        alpha[pixel] = mask[pixel / 8] >> (7 - pixel % 8) & 1 ? 255 : 0;
    return alpha;
}

std::optional<Samples> alphaFor(const ColorType& type, const std::vector<Member>& members) {
    const Bytes bytes = contentOf(members, type.alphaType);
    const std::size_t count = pixelCount(type.side);
    if (bytes.size() >= count)
        return Samples(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    if (type.bitsType.empty()) return std::nullopt;
    return alphaOfBits(contentOf(members, type.bitsType), type.side);
}

/// Red, green and blue planes. Where runs would not have been shorter, the colours stand as they
/// are, pixel by pixel after an unused byte.
std::optional<std::array<Samples, 3>> colorPlanes(Bytes bytes, std::size_t count) {
    std::array<Samples, 3> planes;
    const bool isBare = bytes.size() >= 4 * count;
    for (std::size_t channel = 0; channel < planes.size(); ++channel) {
        if (isBare) {
            for (std::size_t pixel = 0; pixel < count; ++pixel)
                planes[channel].push_back(bytes[4 * pixel + 1 + channel]);
            continue;
        }
        auto plane = unpack(bytes, count);
        if (!plane) return std::nullopt;
        planes[channel] = std::move(*plane);
    }
    return planes;
}

std::optional<IconPicture> colorPicture(const ColorType& type, Bytes content,
                                        const std::vector<Member>& members) {
    if (content.size() < type.skipped) return std::nullopt;
    auto colors = colorPlanes(content.subspan(type.skipped), pixelCount(type.side));
    if (!colors) return std::nullopt;
    IconPicture picture{.side = type.side};
    if (auto alpha = alphaFor(type, members)) {
        const Samples planes[] = {std::move((*colors)[0]), std::move((*colors)[1]),
                                  std::move((*colors)[2]), std::move(*alpha)};
        picture.hasAlpha = true;
        picture.samples = mesh(planes);
    } else {
        picture.samples = mesh(*colors);
    }
    return picture;
}

std::optional<IconPicture> alphaColorPicture(const AlphaColorType& type, Bytes content) {
    Bytes runs = content.subspan(4);
    std::array<Samples, 4> planes; // red, green, blue, alpha
    for (const std::size_t channel : {3, 0, 1, 2}) {
        auto plane = unpack(runs, pixelCount(type.side));
        if (!plane) return std::nullopt;
        planes[channel] = std::move(*plane);
    }
    return IconPicture{.side = type.side, .hasAlpha = true, .samples = mesh(planes)};
}

bool isEncoded(Bytes content) {
    constexpr std::string_view png = "\x89PNG\r\n\x1A\n";
    constexpr std::string_view jpeg = "\xFF\xD8\xFF";
    return text(content).starts_with(png) || text(content).starts_with(jpeg);
}

} // namespace

std::vector<IconPicture> iconPictures(Bytes file) {
    const std::vector<Member> members = membersOf(file);
    std::vector<IconPicture> pictures;
    std::vector<IconPicture> samples;
    for (const auto& [type, content] : members) {
        if (isEncoded(content)) {
            const bool isDense = std::ranges::find(denseTypes, type) != std::end(denseTypes);
            pictures.push_back({.scale = isDense ? 2 : 1, .encoded = content});
            continue;
        }
        std::optional<IconPicture> picture;
        for (const ColorType& known : colorTypes)
            if (known.type == type) picture = colorPicture(known, content, members);
        for (const AlphaColorType& known : alphaColorTypes)
            if (known.type == type && text(content).starts_with("ARGB"))
                picture = alphaColorPicture(known, content);
        if (picture) samples.push_back(std::move(*picture));
    }
    std::ranges::move(samples, std::back_inserter(pictures));
    return pictures;
}

} // namespace cocoa::appkit
