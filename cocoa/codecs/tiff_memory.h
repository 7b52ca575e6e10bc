#pragma once

/// libtiff over bytes in memory, silent and with its memory limited.

#include "cocoa/codecs/output.h"

#include <tiffio.h>

namespace cocoa::codecs {

struct CloseTiff {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffHandle = std::unique_ptr<TIFF, CloseTiff>;

/// The bytes that libtiff reads, and what it complained of. Must outlive the handle and stay where
/// it is.
struct TiffInput {
    Bytes data;
    std::uint64_t position = 0;
    bool complained = false; ///< an error, or a warning that pixels were made up

    explicit TiffInput(Bytes bytes)
        : data(bytes) {}
    TiffInput(const TiffInput&) = delete;
    TiffInput& operator=(const TiffInput&) = delete;
};

/// Opens the first directory; null when it is broken.
TiffHandle open_tiff_input(TiffInput& input);

struct TiffOutput {
    Output bytes;
    std::uint64_t position = 0;

    TiffOutput() = default;
    TiffOutput(const TiffOutput&) = delete;
    TiffOutput& operator=(const TiffOutput&) = delete;
};
TiffHandle open_tiff_output(TiffOutput& output);

} // namespace cocoa::codecs
