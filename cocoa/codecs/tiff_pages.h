#pragma once

/// What the directories of a TIFF say of their images, and how each is decoded.

#include "cocoa/codecs/tiff_memory.h"
#include "cocoa/codecs/tiff_samples.h"

#include <array>
#include <optional>

namespace cocoa::codecs {

struct TiffPage {
    enum class Route : std::uint8_t {
        Strips,
        Tiles,
        Rendered, ///< by libtiff's own conversion to 8-bit RGBA: CIE L*a*b*, subsampled YCbCr, ...
    };

    PageInfo info;
    tdir_t directory = 0;
    Route route = Route::Strips;
    SampleConversion conversion;
    bool separatePlanes = false;
    bool decodeAsRGB = false;          ///< YCbCr that the JPEG codec turns to RGB
    int fileSamples = 1;               ///< a pixel
    std::array<int, 5> fileSampleOf{}; ///< for every sample of the layout
    bool sameSamples = false;          ///< file rows are rows of the layout

    int layout_samples() const {
        return conversion.kind == SampleConversion::Kind::Palette ? 1
                                                                  : info.layout.samplesPerPixel();
    }
};

/// Describes the current directory of a file; nothing when it is no image that can be decoded.
std::optional<TiffPage> describe_page(TIFF* tiff, Bytes file);

/// Sets up the codec of the current directory in the way that the page was described for.
void prepare_page(TIFF* tiff, const TiffPage& page);

/// Whether the current directory's strips or tiles lie in the file and can hold the image.
bool has_all_data(TIFF* tiff, std::uint64_t fileSize);

} // namespace cocoa::codecs
