/// Members that make another image, or encoded data, of the image. Without an image they give null.

#include "plugin/bridge/data.h"
#include "plugin/bridge/geometry.h"
#include "plugin/bridge/wrappers.h"
#include "plugin/classes/handle.h"
#include "plugin/classes/nsimage/ImageAdditionsZNT.h"
#include "plugin/classes/nsimage/members.h"
#include "plugin/entry/cocoa_references.h"
#include "plugin/entry/frames.h"
#include "plugin/threading/image_work.h"
#include "plugin/threading/run_threaded.h"

namespace nsimage {

namespace {

/// The wrapper of the image that `message` returns.
template <typename Message>
REALobjectStruct* image_result(REALobjectStruct* object, Message message) {
    return FullFrame([&] { return NewNSImageZNT(message(image_of(object))); });
}

/// A memory block of the data that `message` returns.
template <typename Message>
REALmemoryBlockStruct* data_result(REALobjectStruct* object, Message message) {
    return FullFrame([&] { return NSDataRB(message(image_of(object))); });
}

/// The same, encoded in the background. The object and its image stay while the host goes on.
REALmemoryBlockStruct* data_from_background(REALobjectStruct* object,
                                            ImageEncodeOperation operation, double factor = 0,
                                            REALword compression = 0) {
    return FullFrame([&] {
        ImageEncodeRequest request = {};
        request.factor = factor;
        request.operation = operation;
        request.compression = static_cast<std::int32_t>(compression);
        {
            const HostObject keptObject = HostObject::retain(object);
            const auto keptImage = CocoaReference<NSImage*>::retain(image_of(object));
            request.image = keptImage.get();
            RunThreaded(&request, DoImageWork, nullptr);
        }
        const auto data = CocoaReference<NSData*>::adopt(request.result);
        return NSDataRB(data.get());
    });
}

} // namespace

REALobjectStruct* imageByScalingToSize(REALobjectStruct* object, double width, double height) {
    return image_result(object, [&](NSImage* image) {
        return [image imageByScalingToSizeZNT:narrowed_size(width, height)];
    });
}

REALobjectStruct* imageByScalingToSizeWithFraction(REALobjectStruct* object, double width,
                                                   double height, double fraction) {
    return image_result(object, [&](NSImage* image) {
        return [image imageByScalingToSizeZNT:narrowed_size(width, height)
                                     fraction:static_cast<float>(fraction)];
    });
}

REALobjectStruct* imageByScalingToSizeInFull(REALobjectStruct* object, double width, double height,
                                             double fraction, bool flip, bool proportionally) {
    return image_result(object, [&](NSImage* image) {
        return [image imageByScalingToSizeZNT:narrowed_size(width, height)
                                     fraction:static_cast<float>(fraction)
                                    flipImage:flip
                               proportionally:proportionally];
    });
}

REALobjectStruct* imageByFadingToFraction(REALobjectStruct* object, double fraction) {
    return image_result(object, [&](NSImage* image) {
        return [image imageByFadingToFraction:static_cast<float>(fraction)];
    });
}

REALmemoryBlockStruct* GIFRepresentation(REALobjectStruct* object) {
    return data_result(object, [](NSImage* image) { return [image GIFRepresentationZNT]; });
}

REALmemoryBlockStruct* BMPRepresentation(REALobjectStruct* object) {
    return data_result(object, [](NSImage* image) { return [image BMPRepresentationZNT]; });
}

REALmemoryBlockStruct* PNGRepresentation(REALobjectStruct* object) {
    return data_result(object, [](NSImage* image) { return [image PNGRepresentationZNT]; });
}

REALmemoryBlockStruct* JPEGRepresentation(REALobjectStruct* object) {
    return data_result(object, [](NSImage* image) { return [image JPEGRepresentationZNT]; });
}

REALmemoryBlockStruct* JPEGRepresentationWithCompressionFactor(REALobjectStruct* object,
                                                               double factor) {
    return data_result(object, [&](NSImage* image) {
        return [image JPEGRepresentationWithCompressionFactorZNT:static_cast<float>(factor)];
    });
}

REALmemoryBlockStruct* TIFFRepresentation(REALobjectStruct* object) {
    return data_result(object, [](NSImage* image) { return [image TIFFRepresentation]; });
}

REALmemoryBlockStruct* TIFFRepresentationUsingCompression(REALobjectStruct* object,
                                                          REALword compression, double factor) {
    return data_result(object, [&](NSImage* image) {
        return [image TIFFRepresentationUsingCompression:static_cast<NSTIFFCompression>(compression)
                                                  factor:static_cast<float>(factor)];
    });
}

REALmemoryBlockStruct* GIFRepresentationMT(REALobjectStruct* object) {
    return data_from_background(object, ImageEncodeGIF);
}

REALmemoryBlockStruct* BMPRepresentationMT(REALobjectStruct* object) {
    return data_from_background(object, ImageEncodeBMP);
}

REALmemoryBlockStruct* PNGRepresentationMT(REALobjectStruct* object) {
    return data_from_background(object, ImageEncodePNG);
}

REALmemoryBlockStruct* JPEGRepresentationWithCompressionFactorMT(REALobjectStruct* object,
                                                                 double factor) {
    return data_from_background(object, ImageEncodeJPEGWithFactor, factor);
}

REALmemoryBlockStruct* JPEGRepresentationMT(REALobjectStruct* object) {
    return data_from_background(object, ImageEncodeJPEG);
}

REALmemoryBlockStruct* TIFFRepresentationMT(REALobjectStruct* object) {
    return data_from_background(object, ImageEncodeTIFF);
}

REALmemoryBlockStruct* TIFFRepresentationUsingCompressionMT(REALobjectStruct* object,
                                                            REALword compression, double factor) {
    return data_from_background(object, ImageEncodeTIFFWithCompression, factor, compression);
}

} // namespace nsimage
