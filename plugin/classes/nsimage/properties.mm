#include "plugin/bridge/geometry.h"
#include "plugin/bridge/strings.h"
#include "plugin/bridge/wrappers.h"
#include "plugin/classes/handle.h"
#include "plugin/classes/nsimage/members.h"
#include "plugin/entry/frames.h"

namespace nsimage {

/// A new host object at every reading; null without an image.
REALobjectStruct* size(REALobjectStruct* object, REALword) {
    NSImage* const image = image_of(object);
    if (!image) return nullptr;
    return LightFrame([&] { return NewNSSizeZNT([image size]); });
}

/// A null size is 0 by 0.
void setSize(REALobjectStruct* object, REALword, REALobjectStruct* hostSize) {
    if (NSImage* const image = image_of(object))
        LightFrame([&] { [image setSize:size_of(hostSize)]; });
}

void setSizeOfNumbers(REALobjectStruct* object, double width, double height) {
    if (NSImage* const image = image_of(object))
        LightFrame([&] { [image setSize:narrowed_size(width, height)]; });
}

double width(REALobjectStruct* object, REALword) {
    NSImage* const image = image_of(object);
    return image ? LightFrame([&]() -> double { return static_cast<float>([image size].width); })
                 : 0.0;
}

double height(REALobjectStruct* object, REALword) {
    NSImage* const image = image_of(object);
    return image ? LightFrame([&]() -> double { return static_cast<float>([image size].height); })
                 : 0.0;
}

/// An empty name takes the image's name away. False without an image.
bool setName(REALobjectStruct* object, REALstringStruct* name) {
    NSImage* const image = image_of(object);
    return image && LightFrame([&]() -> bool { return [image setName:NewNSString(name)]; });
}

/// One host object as long as it lives.
REALobjectStruct* backgroundColor(REALobjectStruct* object, REALword) {
    return LightFrame([&] { return NewNSColorZNT([image_of(object) backgroundColor]); });
}

void setBackgroundColor(REALobjectStruct* object, REALword, REALobjectStruct* color) {
    LightFrame([&] { [image_of(object) setBackgroundColor:wrapped_object<NSColor>(color)]; });
}

} // namespace nsimage
