#include "cocoa/codecs/formats.h"

#include <array>

namespace cocoa::codecs {

constinit const Codec png{"PNG", "public.png", "png", false, sniff_png, open_png, encode_png};
constinit const Codec jpeg{"JPEG",     "public.jpeg", "jpg jpeg jpe jfif", true,
                           sniff_jpeg, open_jpeg,     encode_jpeg};
constinit const Codec tiff{"TIFF",     "public.tiff", "tiff tif", false,
                           sniff_tiff, open_tiff,     encode_tiff};
constinit const Codec gif{"GIF",     "com.compuserve.gif", "gif", false, sniff_gif, open_gif,
                          encode_gif};
constinit const Codec bmp{"BMP",    "com.microsoft.bmp", "bmp dib", true, sniff_bmp,
                          open_bmp, encode_bmp};

std::span<const Codec* const> all_codecs() {
    static constexpr std::array<const Codec*, 5> codecs{&png, &jpeg, &tiff, &gif, &bmp};
    return codecs;
}

Opened open(Bytes data) {
    for (const Codec* codec : all_codecs()) {
        if (!codec->sniff(data)) continue;
        if (auto reader = codec->open(data)) return {codec, std::move(reader)};
    }
    return {};
}

} // namespace cocoa::codecs
