#include "plugin/threading/image_work.h"

#include "plugin/threading/thread_name.h"

/// What the plug-in's category adds to NSImage, as far as it is sent here.
@interface NSImage (EncodersZNT)
- (NSData*)GIFRepresentationZNT;
- (NSData*)BMPRepresentationZNT;
- (NSData*)PNGRepresentationZNT;
- (NSData*)JPEGRepresentationZNT;
- (NSData*)JPEGRepresentationWithCompressionFactorZNT:(float)factor;
@end

namespace {

template <typename Work>
void run_on_worker(const char* threadName, Work work) {
    name_current_thread(threadName);
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    @try {
        work();
    } @catch (NSException* exception) {
        NSLog(@"%@\n", exception);
    }
    [pool release];
}

/// The caller sees to it that a request is its own to write into.
template <typename Request>
Request& writable(const void* request) {
    return *static_cast<Request*>(const_cast<void*>(request));
}

NSData* encoded(const ImageEncodeRequest& request) {
    NSImage* const image = request.image;
    const auto factor = static_cast<float>(request.factor);
    switch (request.operation) {
    case ImageEncodeGIF:
        return [image GIFRepresentationZNT];
    case ImageEncodeBMP:
        return [image BMPRepresentationZNT];
    case ImageEncodePNG:
        return [image PNGRepresentationZNT];
    case ImageEncodeJPEGWithFactor:
        return [image JPEGRepresentationWithCompressionFactorZNT:factor];
    case ImageEncodeJPEG:
        return [image JPEGRepresentationZNT];
    case ImageEncodeTIFF:
        return [image TIFFRepresentation];
    case ImageEncodeTIFFWithCompression:
        return [image
            TIFFRepresentationUsingCompression:static_cast<NSTIFFCompression>(request.compression)
                                        factor:factor];
    default:
        return nil;
    }
}

} // namespace

void DoWork(const void* request) {
    auto& load = writable<ImageLoadRequest>(request);
    run_on_worker("NSImageLoad", [&] {
        if (load.data) load.result = [[NSImage alloc] initWithData:load.data];
        if (load.url) load.result = [[NSImage alloc] initWithContentsOfURL:load.url];
        if (load.path) load.result = [[NSImage alloc] initWithContentsOfFile:load.path];
    });
}

void DoImageWork(const void* request) {
    auto& encode = writable<ImageEncodeRequest>(request);
    run_on_worker("NSImageCompression", [&] {
        if (NSData* const data = encoded(encode)) encode.result = [data retain];
    });
}
