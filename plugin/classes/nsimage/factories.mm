#include "plugin/bridge/data.h"
#include "plugin/bridge/string_array.h"
#include "plugin/bridge/strings.h"
#include "plugin/bridge/urls.h"
#include "plugin/bridge/wrappers.h"
#include "plugin/classes/nsimage/members.h"
#include "plugin/entry/cocoa_references.h"
#include "plugin/entry/exceptions.h"
#include "plugin/entry/frames.h"

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

/// Checks what a factory is given: null raises and gives false.
bool is_given(const void* argument, const char* message) {
    if (!argument) RaiseException("NilObjectException", message);
    return argument != nullptr;
}

/// A host array of what `list` returns. The array is made first and returned in any case, as far as
/// it was filled.
template <typename List>
REALarrayStruct* string_array_of(List list) {
    HostArray array = HostArray::adopt(REALCreateArray(REALarrayOfStrings, -1));
    LightFrame([&] { FillStringArray(array.get(), list()); });
    return array.leak();
}

} // namespace

REALobjectStruct* imageWithDataOfString(REALstringStruct* string) {
    if (!is_given(string, "String is empty")) return nullptr;
    return new_wrapped_image([&]() -> NSImage* {
        const StringBytes bytes(string);
        return [[NSImage alloc] initWithData:[NSData dataWithBytes:bytes.data()
                                                            length:bytes.size()]];
    });
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

REALarrayStruct* imageUnfilteredFileTypes() {
    return string_array_of([] { return [NSImage imageUnfilteredFileTypes]; });
}

REALarrayStruct* imageUnfilteredPasteboardTypes() {
    return string_array_of([] { return [NSImage imageUnfilteredPasteboardTypes]; });
}

REALarrayStruct* imageFileTypes() {
    return string_array_of([] { return [NSImage imageFileTypes]; });
}

REALarrayStruct* imagePasteboardTypes() {
    return string_array_of([] { return [NSImage imagePasteboardTypes]; });
}

REALarrayStruct* imageTypes() {
    return string_array_of([] { return [NSImage imageTypes]; });
}

REALarrayStruct* imageUnfilteredTypes() {
    return string_array_of([] { return [NSImage imageUnfilteredTypes]; });
}

} // namespace nsimage
