#pragma once

/// Immutable pictures and masks. Row 0 is the top row. An image keeps its provider's bytes as they
/// are and converts them when it is drawn.

#include <CoreGraphics/CGColorSpace.h>
#include <CoreGraphics/CGDataProvider.h>
#include <CoreGraphics/CGGeometry.h>

typedef struct CGImage* CGImageRef;

typedef enum CGImageAlphaInfo : uint32_t {
    kCGImageAlphaNone,               ///< RGB
    kCGImageAlphaPremultipliedLast,  ///< RGBA, colours multiplied with alpha
    kCGImageAlphaPremultipliedFirst, ///< ARGB, colours multiplied with alpha
    kCGImageAlphaLast,               ///< RGBA
    kCGImageAlphaFirst,              ///< ARGB
    kCGImageAlphaNoneSkipLast,       ///< RGBx
    kCGImageAlphaNoneSkipFirst,      ///< xRGB
    kCGImageAlphaOnly                ///< A
} CGImageAlphaInfo;

enum {
    kCGBitmapAlphaInfoMask = 0x1F,
    kCGBitmapFloatComponents = 1 << 8,

    kCGBitmapByteOrderMask = 0x7000,
    kCGBitmapByteOrderDefault = 0 << 12, ///< bytes lie in the order that the alpha info names
    kCGBitmapByteOrder16Little = 1 << 12,
    kCGBitmapByteOrder32Little = 2 << 12,
    kCGBitmapByteOrder16Big = 3 << 12,
    kCGBitmapByteOrder32Big = 4 << 12
};
typedef uint32_t CGBitmapInfo;

#ifdef __BIG_ENDIAN__
#define kCGBitmapByteOrder16Host kCGBitmapByteOrder16Big
#define kCGBitmapByteOrder32Host kCGBitmapByteOrder32Big
#else
#define kCGBitmapByteOrder16Host kCGBitmapByteOrder16Little
#define kCGBitmapByteOrder32Host kCGBitmapByteOrder32Little
#endif

CG_EXTERN CFTypeID CGImageGetTypeID(void);

/// Components of 1 to 16 bits, or of 32 bits with kCGBitmapFloatComponents. Samples may be packed
/// as tightly as bits; a pixel of 16 bits with 5 a component is x1 5 5 5. The alpha info may be
/// kCGImageAlphaOnly only without a space. `decode` gives for each colour component the values that
/// its smallest and its largest sample stand for, and may be null (0 and 1). The space and the
/// provider are retained. Null when the numbers do not fit together, or when the provider has less
/// than height - 1 rows and the pixels of the last one.
CG_EXTERN CGImageRef CGImageCreate(size_t width, size_t height, size_t bitsPerComponent,
                                   size_t bitsPerPixel, size_t bytesPerRow, CGColorSpaceRef space,
                                   CGBitmapInfo bitmapInfo, CGDataProviderRef provider,
                                   const CGFloat decode[], bool shouldInterpolate,
                                   CGColorRenderingIntent intent);
/// An image mask: sample 0 lets the fill colour through, the largest sample keeps it out (the other
/// way round with a decode of 1 and 0). Samples of 1, 2, 4 or 8 bits.
CG_EXTERN CGImageRef CGImageMaskCreate(size_t width, size_t height, size_t bitsPerComponent,
                                       size_t bitsPerPixel, size_t bytesPerRow,
                                       CGDataProviderRef provider, const CGFloat decode[],
                                       bool shouldInterpolate);
/// The same image with its alpha multiplied by a mask: an image mask (its largest sample hides), or
/// an image of a gray space without alpha (black hides). The mask is stretched over the image. Null
/// for another kind of mask, and when `image` itself is an image mask.
CG_EXTERN CGImageRef CGImageCreateWithMask(CGImageRef image, CGImageRef mask);
/// The part within a rectangle of pixels, y counted down from the top row. The rectangle is made
/// integral and cut to the image; null when nothing is left. Pixels are shared.
CG_EXTERN CGImageRef CGImageCreateWithImageInRect(CGImageRef image, CGRect rect);
CG_EXTERN CGImageRef CGImageCreateCopy(CGImageRef image);
/// The same samples taken for colours of another space with as many components; null for a space of
/// another number of components and for an image mask.
CG_EXTERN CGImageRef CGImageCreateCopyWithColorSpace(CGImageRef image, CGColorSpaceRef space);

CG_EXTERN CGImageRef CGImageRetain(CGImageRef image);
CG_EXTERN void CGImageRelease(CGImageRef image);

CG_EXTERN bool CGImageIsMask(CGImageRef image);
CG_EXTERN size_t CGImageGetWidth(CGImageRef image);
CG_EXTERN size_t CGImageGetHeight(CGImageRef image);
CG_EXTERN size_t CGImageGetBitsPerComponent(CGImageRef image);
CG_EXTERN size_t CGImageGetBitsPerPixel(CGImageRef image);
CG_EXTERN size_t CGImageGetBytesPerRow(CGImageRef image);
/// Null for an image mask.
CG_EXTERN CGColorSpaceRef CGImageGetColorSpace(CGImageRef image);
CG_EXTERN CGImageAlphaInfo CGImageGetAlphaInfo(CGImageRef image);
CG_EXTERN CGBitmapInfo CGImageGetBitmapInfo(CGImageRef image);
/// The rows of this very image: of a part of another image, its own rows only.
CG_EXTERN CGDataProviderRef CGImageGetDataProvider(CGImageRef image);
/// Null when the image was made without.
CG_EXTERN const CGFloat* CGImageGetDecode(CGImageRef image);
CG_EXTERN bool CGImageGetShouldInterpolate(CGImageRef image);
CG_EXTERN CGColorRenderingIntent CGImageGetRenderingIntent(CGImageRef image);
