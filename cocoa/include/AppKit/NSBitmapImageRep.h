#pragma once

#include <AppKit/NSImageRep.h>

@class NSColor, NSColorSpace;

enum {
    NSTIFFCompressionNone = 1,
    NSTIFFCompressionCCITTFAX3 = 3, ///< for 1 bit a pixel only
    NSTIFFCompressionCCITTFAX4 = 4, ///< for 1 bit a pixel only
    NSTIFFCompressionLZW = 5,
    NSTIFFCompressionJPEG = 6,     ///< for 8 bits a sample without alpha only
    NSTIFFCompressionNEXT = 32766, ///< not written
    NSTIFFCompressionPackBits = 32773,
    NSTIFFCompressionOldJPEG = 32865, ///< not written
};
typedef NSUInteger NSTIFFCompression;

enum {
    NSTIFFFileType = 0,
    NSBMPFileType = 1,
    NSGIFFileType = 2,
    NSJPEGFileType = 3,
    NSPNGFileType = 4,
    NSJPEG2000FileType = 5,
};
typedef NSUInteger NSBitmapImageFileType;

enum {
    NSImageRepLoadStatusUnknownType = -1,
    NSImageRepLoadStatusReadingHeader = -2,
    NSImageRepLoadStatusWillNeedAllData = -3,
    NSImageRepLoadStatusInvalidData = -4,
    NSImageRepLoadStatusUnexpectedEOF = -5,
    NSImageRepLoadStatusCompleted = -6,
};
typedef NSInteger NSImageRepLoadStatus;

enum {
    NSAlphaFirstBitmapFormat = 1 << 0,            ///< alpha before the colours, else after
    NSAlphaNonpremultipliedBitmapFormat = 1 << 1, ///< colours not multiplied by alpha
    NSFloatingPointSamplesBitmapFormat = 1 << 2,  ///< 32-bit floats
};
typedef NSUInteger NSBitmapFormat;

/// Keys of the properties of a bitmap and of its encoders.
APPKIT_EXTERN NSString* const NSImageCompressionMethod;       ///< NSNumber, an NSTIFFCompression
APPKIT_EXTERN NSString* const NSImageCompressionFactor;       ///< NSNumber, 0 to 1
APPKIT_EXTERN NSString* const NSImageDitherTransparency;      ///< NSNumber, a boolean; GIF
APPKIT_EXTERN NSString* const NSImageRGBColorTable;           ///< NSData: red, green, blue; GIF
APPKIT_EXTERN NSString* const NSImageInterlaced;              ///< NSNumber, a boolean; PNG, GIF
APPKIT_EXTERN NSString* const NSImageColorSyncProfileData;    ///< NSData, an ICC profile
APPKIT_EXTERN NSString* const NSImageFrameCount;              ///< NSNumber; moving GIF
APPKIT_EXTERN NSString* const NSImageCurrentFrame;            ///< NSNumber, from 0
APPKIT_EXTERN NSString* const NSImageCurrentFrameDuration;    ///< NSNumber, seconds
APPKIT_EXTERN NSString* const NSImageLoopCount;               ///< NSNumber, 0 for ever
APPKIT_EXTERN NSString* const NSImageGamma;                   ///< NSNumber; PNG
APPKIT_EXTERN NSString* const NSImageProgressive;             ///< NSNumber, a boolean; JPEG
APPKIT_EXTERN NSString* const NSImageEXIFData;                ///< NSDictionary
APPKIT_EXTERN NSString* const NSImageFallbackBackgroundColor; ///< NSColor; JPEG, BMP, else white

APPKIT_EXTERN NSString* const NSTIFFException;
APPKIT_EXTERN NSString* const NSBadBitmapParametersException;

/// Pixels in memory. Row 0 is the top row. Samples of 1, 2, 4, 8 or 16 bits, or 32-bit floats, side
/// by side in a pixel (meshed) or each kind in a plane of its own (planar); 16-bit ones in the
/// machine's byte order. Colours are premultiplied unless `bitmapFormat` says not.
///
/// Data that turns out not to be a whole, valid image gives nil, never part of a picture.
@interface NSBitmapImageRep : NSImageRep {
@private
    struct NSBitmapState* _bitmap;
}

/// `planes` holds one pointer (meshed) or one a sample (planar, up to 5). The memory is used in
/// place and stays the caller's; where `planes` or its first pointer is null, zeroed memory is
/// allocated. `rowBytes` and `pixelBits` may be 0: as many as needed. Nil when the numbers do not
/// go together.
- (id)initWithBitmapDataPlanes:(unsigned char**)planes
                    pixelsWide:(NSInteger)width
                    pixelsHigh:(NSInteger)height
                 bitsPerSample:(NSInteger)bps
               samplesPerPixel:(NSInteger)spp
                      hasAlpha:(BOOL)alpha
                      isPlanar:(BOOL)isPlanar
                colorSpaceName:(NSString*)colorSpaceName
                   bytesPerRow:(NSInteger)rowBytes
                  bitsPerPixel:(NSInteger)pixelBits;
- (id)initWithBitmapDataPlanes:(unsigned char**)planes
                    pixelsWide:(NSInteger)width
                    pixelsHigh:(NSInteger)height
                 bitsPerSample:(NSInteger)bps
               samplesPerPixel:(NSInteger)spp
                      hasAlpha:(BOOL)alpha
                      isPlanar:(BOOL)isPlanar
                colorSpaceName:(NSString*)colorSpaceName
                  bitmapFormat:(NSBitmapFormat)bitmapFormat
                   bytesPerRow:(NSInteger)rowBytes
                  bitsPerPixel:(NSInteger)pixelBits;

/// The pixels, to read or to change. Valid as long as the receiver lives. After the pixels were
/// changed, `CGImage` shows the change once `bitmapData` or `getBitmapDataPlanes:` has been sent
/// again.
- (unsigned char*)bitmapData;
/// Fills five pointers; those not in use are set to null.
- (void)getBitmapDataPlanes:(unsigned char**)data;
- (BOOL)isPlanar;
- (NSInteger)samplesPerPixel;
- (NSInteger)bitsPerPixel;
- (NSInteger)bytesPerRow;
- (NSInteger)bytesPerPlane;
- (NSInteger)numberOfPlanes;
- (NSBitmapFormat)bitmapFormat;
- (NSColorSpace*)colorSpace;

@end

@interface NSBitmapImageRep (NSBitmapProperties)

/// What the encoded data states of itself (EXIF, frames, gamma, profile), and what callers keep
/// with the bitmap; a nil value removes one. Setting NSImageCurrentFrame of a moving picture shows
/// that frame in the pixels; a number of no frame, or of a broken one, changes nothing.
- (void)setProperty:(NSString*)property withValue:(id)value;
- (id)valueForProperty:(NSString*)property;

@end

@interface NSBitmapImageRep (NSBitmapDecoding)

/// One for each page of a TIFF, one for all frames of a GIF; nil when it is no image.
+ (NSArray*)imageRepsWithData:(NSData*)data;
+ (id)imageRepWithData:(NSData*)data; ///< the first page
- (id)initWithData:(NSData*)data;

@end

@interface NSBitmapImageRep (NSBitmapEncoding)

/// The size in points is written as the resolution, a profile of the bitmap's own model is kept
/// (neither in GIF, no profile in BMP). PNG has straight alpha, TIFF alpha as the bitmap has it,
/// GIF pixels that are clear or opaque; in JPEG and BMP the picture lies over the fallback
/// background. GIF has up to 256 colours: exactly those of the bitmap where it has no more.

/// Where `compression` cannot be used for one of the bitmaps, none is. `factor` bears on JPEG: from
/// 0, the best quality, to 255, the smallest data.
- (NSData*)TIFFRepresentation;
- (NSData*)TIFFRepresentationUsingCompression:(NSTIFFCompression)compression factor:(float)factor;
+ (NSData*)TIFFRepresentationOfImageRepsInArray:(NSArray*)array;
+ (NSData*)TIFFRepresentationOfImageRepsInArray:(NSArray*)array
                               usingCompression:(NSTIFFCompression)compression
                                         factor:(float)factor;
/// Encoded data; nil for a type that is not written.
+ (NSData*)representationOfImageRepsInArray:(NSArray*)imageReps
                                  usingType:(NSBitmapImageFileType)storageType
                                 properties:(NSDictionary*)properties;
- (NSData*)representationUsingType:(NSBitmapImageFileType)storageType
                        properties:(NSDictionary*)properties;

/// `*list` points to memory of the class.
+ (void)getTIFFCompressionTypes:(const NSTIFFCompression**)list count:(NSInteger*)numTypes;
+ (NSString*)localizedNameForTIFFCompressionType:(NSTIFFCompression)compression; ///< nil: unknown
- (BOOL)canBeCompressedUsing:(NSTIFFCompression)compression;
/// What TIFFRepresentation will use. Any pointer may be null.
- (void)getCompression:(NSTIFFCompression*)compression factor:(float*)factor;
- (void)setCompression:(NSTIFFCompression)compression factor:(float)factor;

@end

@interface NSBitmapImageRep (NSBitmapPixels)

/// x counts from the left, y from the top. Out of bounds: nil, nothing.
- (void)getPixel:(NSUInteger[])p atX:(NSInteger)x y:(NSInteger)y; ///< raw samples
- (void)setPixel:(NSUInteger[])p atX:(NSInteger)x y:(NSInteger)y;
- (NSColor*)colorAtX:(NSInteger)x y:(NSInteger)y; ///< not premultiplied
- (void)setColor:(NSColor*)color atX:(NSInteger)x y:(NSInteger)y;

@end

@interface NSBitmapImageRep (NSBitmapCGImage)

/// A bitmap of what the focused image shows in `rect`, of the current context's coordinates. Nil
/// without a focus or when no pixel lies in `rect`.
- (id)initWithFocusedViewRect:(NSRect)rect;

/// The image's own layout where a bitmap can have it, else 8-bit premultiplied RGBA.
- (id)initWithCGImage:(CGImageRef)cgImage;

/// A picture of the pixels as they are now; the same one until they change. Owned by the receiver.
- (CGImageRef)CGImage;

@end
