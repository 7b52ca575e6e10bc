#include "plugin/bridge/data.h"
#include "plugin/bridge/geometry.h"
#include "plugin/bridge/strings.h"
#include "plugin/bridge/urls.h"
#include "plugin/bridge/wrappers.h"
#include "plugin/classes/nsimage/members.h"
#include "plugin/entry/cocoa_references.h"
#include "plugin/entry/exceptions.h"
#include "plugin/entry/frames.h"
#include "plugin/threading/image_work.h"
#include "plugin/threading/run_threaded.h"

namespace nsimage {

namespace {

/// The wrapper of the image that `makeImage` returns with one retain; null for nil, which is what
/// anything unreadable gives.
template <typename MakeImage>
REALobjectStruct* new_wrapped_image(MakeImage makeImage) {
    return FullFrame([&] {
        const auto image = CocoaReference<NSImage*>::adopt(makeImage());
        return NewNSImageZNT(image.get());
    });
}

/// The same of what `makeSource` returns, loaded in the background. `field` is where the request
/// for it has its place.
template <typename Source, typename MakeSource>
REALobjectStruct* new_image_from_background(Source ImageLoadRequest::*field,
                                            MakeSource makeSource) {
    return new_wrapped_image([&] {
        const auto source = CocoaReference<Source>::retain(makeSource());
        ImageLoadRequest request = {};
        request.*field = source.get();
        RunThreaded(&request, DoWork, nullptr);
        return request.result;
    });
}

/// Checks what a factory is given: null raises and gives false.
bool is_given(const void* argument, const char* message) {
    if (!argument) RaiseException("NilObjectException", message);
    return argument != nullptr;
}

/// The bytes as they are, whatever their encoding.
NSData* data_of(REALstringStruct* string) {
    const StringBytes bytes(string);
    return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

CGImageRef image_in_wrapper(REALobjectStruct* wrapper) {
    return *static_cast<CGImageRef*>(REALfirstClassData(wrapper));
}

bool is_cg_image(REALobjectStruct* object) {
    const REALclassRef type = REALGetClassRef("CGImageZNT");
    return type && REALObjectIsA(object, type);
}

} // namespace

// The messages of a factory and of its twin in the background differ here and there; programs may
// compare them.

REALobjectStruct* imageWithDataOfString(REALstringStruct* string) {
    if (!is_given(string, "String is empty")) return nullptr;
    return new_wrapped_image(
        [&]() -> NSImage* { return [[NSImage alloc] initWithData:data_of(string)]; });
}

REALobjectStruct* imageWithDataOfBlock(REALmemoryBlockStruct* block) {
    if (!is_given(block, "Memoryblock is nil")) return nullptr;
    return new_wrapped_image(
        [&]() -> NSImage* { return [[NSImage alloc] initWithData:NewNSData(block)]; });
}

REALobjectStruct* imageWithContentsOfFile(REALfolderItemStruct* file) {
    if (!is_given(file, "folderitem is nil")) return nullptr;
    return new_wrapped_image(
        [&]() -> NSImage* { return [[NSImage alloc] initWithContentsOfURL:NewNSURLfile(file)]; });
}

REALobjectStruct* imageWithContentsOfPath(REALstringStruct* path) {
    if (!is_given(path, "Path is empty")) return nullptr;
    return new_wrapped_image(
        [&]() -> NSImage* { return [[NSImage alloc] initWithContentsOfFile:NewNSString(path)]; });
}

REALobjectStruct* imageWithContentsOfURL(REALstringStruct* url) {
    if (!is_given(url, "URL is empty")) return nullptr;
    return new_wrapped_image(
        [&]() -> NSImage* { return [[NSImage alloc] initWithContentsOfURL:NewNSURL(url)]; });
}

REALobjectStruct* imageWithDataOfStringMT(REALstringStruct* string) {
    if (!is_given(string, "Data is empty")) return nullptr;
    return new_image_from_background(&ImageLoadRequest::data, [&] { return data_of(string); });
}

REALobjectStruct* imageWithDataOfBlockMT(REALmemoryBlockStruct* block) {
    if (!is_given(block, "Memoryblock is nil")) return nullptr;
    return new_image_from_background(&ImageLoadRequest::data, [&] { return NewNSData(block); });
}

REALobjectStruct* imageWithContentsOfFileMT(REALfolderItemStruct* file) {
    if (!is_given(file, "Folderitem is nil")) return nullptr;
    return new_image_from_background(&ImageLoadRequest::url, [&] { return NewNSURLfile(file); });
}

REALobjectStruct* imageWithContentsOfPathMT(REALstringStruct* path) {
    if (!is_given(path, "Path is empty")) return nullptr;
    return new_image_from_background(&ImageLoadRequest::path, [&] { return NewNSString(path); });
}

REALobjectStruct* imageWithContentsOfURLMT(REALstringStruct* url) {
    if (!is_given(url, "URL is empty")) return nullptr;
    return new_image_from_background(&ImageLoadRequest::url, [&] { return NewNSURL(url); });
}

/// Each side that is not above 0 is the image's own, in pixels.
REALobjectStruct* imageWithCGImage(REALobjectStruct* wrapper, double width, double height) {
    if (!is_given(wrapper, "Image is nil")) return nullptr;
    return new_wrapped_image([&]() -> NSImage* {
        if (!is_cg_image(wrapper)) {
            RaiseException("IllegalCastException", "CGImage must be a CGImageZNT!");
            return nil;
        }
        CGImageRef const image = image_in_wrapper(wrapper);
        if (!is_given(image, "Image is nil")) return nil;
        if (!(width > 0)) width = static_cast<double>(CGImageGetWidth(image));
        if (!(height > 0)) height = static_cast<double>(CGImageGetHeight(image));
        return [[NSImage alloc] initWithCGImage:image size:narrowed_size(width, height)];
    });
}

/// Null for a name that no image bears; the empty name is one.
REALobjectStruct* imageNamed(REALstringStruct* name) {
    return FullFrame([&] { return NewNSImageZNT([NSImage imageNamed:NewNSString(name)]); });
}

} // namespace nsimage
