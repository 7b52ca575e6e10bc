#include "companion/classes.h"
#include "companion/wrapping.h"
#include "sdk/tables.h"

using namespace REALtables;

namespace base_part {
namespace {

using Image = std::remove_pointer_t<CGImageRef>;

/// A number of the image; 0 without an image.
template <std::size_t (*measure)(CGImageRef)>
REALword number(REALobjectStruct* object, REALword) {
    return inFrame([&] {
        CGImageRef const image = wrappedBy<Image>(object);
        return image ? static_cast<REALword>(measure(image)) : 0;
    });
}

REALproperty properties[] = {
    property("Handle", "Integer", handle),
    property("width", "Integer", number<CGImageGetWidth>),
    property("height", "Integer", number<CGImageGetHeight>),
    property("bitsPerComponent", "Integer", number<CGImageGetBitsPerComponent>),
    property("bitsPerPixel", "Integer", number<CGImageGetBitsPerPixel>),
    property("bytesPerRow", "Integer", number<CGImageGetBytesPerRow>),
};

} // namespace

REALclassDefinition imageClass = class_definition({
    .name = "CGImageZNT",
    .instanceDataSize = sizeof(CGImageRef),
    .destructor = destroyWrapper,
    .properties = properties,
});

} // namespace base_part
