#include "plugin/classes/imagerep/members.h"

#include "plugin/bridge/data.h"
#include "plugin/bridge/geometry.h"
#include "plugin/classes/handle.h"
#include "plugin/entry/frames.h"
#include "plugin/entry/instances.h"

namespace imagerep {

/// A factory or a constructor with arguments brings the representation.
void NSImageRepConstructor(REALobjectStruct*) { CocoaInit(); }

void NSImageRepDestructor(REALobjectStruct* object) {
    CocoaInit();
    LightFrame([&] {
        NSImageRep*& representation = representation_of(object);
        if (!representation) return;
        unregister_instance(representation);
        NSImageRep* const released = representation;
        representation = nil;
        [released release];
    });
}

void construct_empty(REALobjectStruct*) {}

/// A new host object at every reading; of 0 by 0 without a representation.
REALobjectStruct* size(REALobjectStruct* object, REALword) {
    return LightFrame([&] { return NewNSSizeZNT([representation_of(object) size]); });
}

/// A null size is 0 by 0.
void setSize(REALobjectStruct* object, REALword, REALobjectStruct* hostSize) {
    LightFrame([&] { [representation_of(object) setSize:size_of(hostSize)]; });
}

void setSizeOfNumbers(REALobjectStruct* object, double width, double height) {
    LightFrame([&] { [representation_of(object) setSize:narrowed_size(width, height)]; });
}

double width(REALobjectStruct* object, REALword) {
    NSImageRep* const representation = representation_of(object);
    if (!representation) return 0.0;
    return LightFrame([&]() -> double { return static_cast<float>([representation size].width); });
}

double height(REALobjectStruct* object, REALword) {
    NSImageRep* const representation = representation_of(object);
    if (!representation) return 0.0;
    return LightFrame([&]() -> double { return static_cast<float>([representation size].height); });
}

/// A null block asks about nil.
bool canInitWithData(REALmemoryBlockStruct* block) {
    return FullFrame([&]() -> bool { return [NSImageRep canInitWithData:NewNSData(block)]; });
}

} // namespace imagerep
