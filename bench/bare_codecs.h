#pragma once

/// The image libraries by their own calls, as a program would use them that does nothing else. The
/// settings are those of our encoders.

#include <cstdint>
#include <vector>

namespace bench {

using Bytes = std::vector<std::uint8_t>;

struct Picture {
    int width;
    int height;
    int samples; ///< a pixel: 1 grey, 3 RGB
    Bytes pixels;
};

bool decodeJPEG(const Bytes& file);
bool decodePNG(const Bytes& file);
bool decodeTIFF(const Bytes& file);
bool decodeGIF(const Bytes& file);
bool decodeBMP(const Bytes& file); ///< rows turned and bytes swapped by plain loops

/// Nothing on failure.
Bytes encodeJPEG(const Picture& picture); ///< of quality 80
Bytes encodeProgressiveJPEG(const Picture& picture);
Bytes encodePNG(const Picture& picture);
Bytes encodeTIFF(const Picture& picture);
Bytes encodeTIFFLZW(const Picture& picture);
Bytes encodeGrayGIF(const Picture& picture);
Bytes encodeBMP(const Picture& picture);

} // namespace bench
