#pragma once

/// libjpeg's errors, without its messages on standard error and its exit().

#include <csetjmp>
#include <cstdio>

#include <jpeglib.h>

namespace cocoa::codecs {

/// `base` comes first, so that libjpeg's pointer to it is one to the whole.
struct JpegErrors {
    jpeg_error_mgr base{};
    std::jmp_buf escape{};
    bool invented = false; ///< libjpeg made up pixels that the data does not have

    /// The handlers to hang into a libjpeg object. `escape` must be set before libjpeg is called.
    jpeg_error_mgr* handlers();
};

} // namespace cocoa::codecs
