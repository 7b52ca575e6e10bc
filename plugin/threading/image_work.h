#pragma once

/// The work of the members that load or encode an image in the background. Requests are filled by
/// the host thread, which keeps their objects retained until it has what it asked for. An
/// NSException on the worker is logged and leaves the result as it is, nil; anything else that is
/// thrown passes.

#include <Cocoa/Cocoa.h>

#include <cstddef>
#include <cstdint>

/// One of the three sources is set.
struct ImageLoadRequest {
    NSData* data;
    NSURL* url;
    NSString* path;
    NSImage* result; ///< nil before, and when there was no image; else retained for the caller
};

enum ImageEncodeOperation : std::int32_t {
    ImageEncodeGIF = 1,
    ImageEncodeBMP = 2,
    ImageEncodePNG = 3,
    ImageEncodeJPEGWithFactor = 4,
    ImageEncodeJPEG = 5,
    ImageEncodeTIFF = 6,
    ImageEncodeTIFFWithCompression = 7,
};

/// Any other operation does nothing.
struct ImageEncodeRequest {
    NSData* result; ///< nil before and on failure; else retained for the caller
    NSImage* image;
    double factor; ///< of the operations that have one, 0 to 1; Cocoa takes it in single precision
    std::int32_t operation;   ///< an ImageEncodeOperation
    std::int32_t compression; ///< an NSTIFFCompression, for the last operation
};

#if defined(__i386__)
static_assert(offsetof(ImageLoadRequest, url) == 4 && offsetof(ImageLoadRequest, path) == 8 &&
              offsetof(ImageLoadRequest, result) == 12 && sizeof(ImageLoadRequest) == 16);
static_assert(offsetof(ImageEncodeRequest, image) == 4 &&
              offsetof(ImageEncodeRequest, factor) == 8 &&
              offsetof(ImageEncodeRequest, operation) == 16 &&
              offsetof(ImageEncodeRequest, compression) == 20 && sizeof(ImageEncodeRequest) == 24);
#endif

/// Work functions for RunThreaded, of an ImageLoadRequest and of an ImageEncodeRequest.
void DoWork(const void* request);
void DoImageWork(const void* request);
