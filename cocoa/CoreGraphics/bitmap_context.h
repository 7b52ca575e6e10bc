#pragma once

/// What AppKit needs beyond the public interface.

#include <CoreGraphics/CGBitmapContext.h>

#include <cstddef>

namespace cocoa::cg {

/// Like CGBitmapContextCreateWithData, also for the pixels of bitmap representations that the
/// public function refuses: RGB of 24 bits or 32 bits without alpha, and premultiplied gray and
/// alpha of 16 bits a pixel, alpha first or last.
__attribute__((visibility("default"))) CGContextRef
createBitmapContext(void* data, std::size_t width, std::size_t height, std::size_t bitsPerComponent,
                    std::size_t bitsPerPixel, std::size_t bytesPerRow, CGColorSpaceRef space,
                    CGBitmapInfo bitmapInfo, CGBitmapContextReleaseDataCallback releaseCallback,
                    void* releaseInfo);

} // namespace cocoa::cg
