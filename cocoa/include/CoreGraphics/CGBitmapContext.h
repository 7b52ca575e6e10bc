#pragma once

/// Contexts that draw into memory. Row 0 of the memory is the top row.

#include <CoreGraphics/CGContext.h>

typedef void (*CGBitmapContextReleaseDataCallback)(void* releaseInfo, void* data);

/// `data` null: the context allocates zeroed memory of its own. `bytesPerRow` may then be 0, and is
/// chosen. Combinations of colour space, bits per component and alpha info that are drawn into:
///
/// - RGB, 8: premultiplied first or last, none skip first or last, in every byte order
/// - gray, 8: none, or alpha only
/// - no space, 8: alpha only
///
/// Null for every other one, for a width or height of 0, and for rows that are too short.
CG_EXTERN CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height,
                                             size_t bitsPerComponent, size_t bytesPerRow,
                                             CGColorSpaceRef space, CGBitmapInfo bitmapInfo);
/// `releaseCallback` (may be null) is called with `releaseInfo` and the memory when the context
/// goes.
CG_EXTERN CGContextRef CGBitmapContextCreateWithData(
    void* data, size_t width, size_t height, size_t bitsPerComponent, size_t bytesPerRow,
    CGColorSpaceRef space, CGBitmapInfo bitmapInfo,
    CGBitmapContextReleaseDataCallback releaseCallback, void* releaseInfo);

// Of a context that is no bitmap context: null and 0.
CG_EXTERN void* CGBitmapContextGetData(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetWidth(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetHeight(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetBitsPerComponent(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetBitsPerPixel(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetBytesPerRow(CGContextRef context);
/// Null for an alpha-only context.
CG_EXTERN CGColorSpaceRef CGBitmapContextGetColorSpace(CGContextRef context);
CG_EXTERN CGImageAlphaInfo CGBitmapContextGetAlphaInfo(CGContextRef context);
CG_EXTERN CGBitmapInfo CGBitmapContextGetBitmapInfo(CGContextRef context);

/// A copy of the pixels; later drawing does not change it.
CG_EXTERN CGImageRef CGBitmapContextCreateImage(CGContextRef context);
