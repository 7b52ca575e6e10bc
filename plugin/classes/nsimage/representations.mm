#include "plugin/bridge/wrappers.h"
#include "plugin/classes/handle.h"
#include "plugin/classes/nsimage/members.h"
#include "plugin/entry/exceptions.h"
#include "plugin/entry/frames.h"
#include "plugin/entry/references.h"

namespace nsimage {

namespace {

/// Nil for null.
NSImageRep* representation_or_nil(REALobjectStruct* object) {
    return object ? representation_of(object) : nil;
}

/// The representation at an index; nil, with an exception, when there is none.
NSImageRep* representation_at(NSImage* image, REALword index, const char* methodName) {
    NSArray* const all = [image representations];
    const auto count = static_cast<std::int64_t>([all count]);
    if (index >= 0 && index < count) return [all objectAtIndex:static_cast<NSUInteger>(index)];
    RaiseOutOfBoundsException(index, 0, count, "index", methodName);
    return nil;
}

} // namespace

void addRepresentation(REALobjectStruct* object, REALobjectStruct* representation) {
    LightFrame([&] { [image_of(object) addRepresentation:representation_or_nil(representation)]; });
}

void removeRepresentation(REALobjectStruct* object, REALobjectStruct* representation) {
    LightFrame(
        [&] { [image_of(object) removeRepresentation:representation_or_nil(representation)]; });
}

REALword RepresentationWidth(REALobjectStruct* object, REALword index) {
    NSImage* const image = image_of(object);
    if (!image) return 0;
    return LightFrame([&]() -> REALword {
        return [representation_at(image, index, "RepresentationWidth") pixelsWide];
    });
}

REALword RepresentationHeight(REALobjectStruct* object, REALword index) {
    NSImage* const image = image_of(object);
    if (!image) return 0;
    return LightFrame([&]() -> REALword {
        return [representation_at(image, index, "RepresentationHeight") pixelsHigh];
    });
}

/// New wrappers, each of the host class that fits its representation best. The array is made first,
/// so that an image without representations gives an empty one.
REALarrayStruct* representations(REALobjectStruct* object) {
    HostArray array = HostArray::adopt(REALCreateArray(REALarrayOfObjects, -1));
    if (!array) return nullptr;
    FullFrame([&] {
        NSEnumerator* const elements = [[image_of(object) representations] objectEnumerator];
        std::int32_t index = 0;
        while (NSImageRep* const representation = [elements nextObject]) {
            const HostObject wrapper =
                HostObject::adopt(NewNSObjectZNT(representation, objc_getClass("NSImageRep")));
            REALInsertArrayValueObject(array.get(), index++, wrapper.get());
        }
    });
    return array.leak();
}

} // namespace nsimage
