/// What Cocoa can read.

#include "plugin/bridge/string_array.h"
#include "plugin/classes/nsimage/members.h"
#include "plugin/entry/frames.h"
#include "plugin/entry/references.h"

namespace nsimage {

namespace {

/// A host array of what `list` returns. The array is made first and returned in any case, as far as
/// it was filled.
template <typename List>
REALarrayStruct* string_array_of(List list) {
    HostArray array = HostArray::adopt(REALCreateArray(REALarrayOfStrings, -1));
    LightFrame([&] { FillStringArray(array.get(), list()); });
    return array.leak();
}

} // namespace

bool canInitWithPasteboard() {
    return FullFrame(
        []() -> bool { return [NSImage canInitWithPasteboard:[NSPasteboard generalPasteboard]]; });
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
