#include "plugin/bridge/wrappers.h"

#include "plugin/entry/instances.h"
#include "plugin/entry/references.h"

#include <cstdio>
#include <cstring>

namespace {

void store(REALobjectStruct* wrapper, NSObject* object) {
    *static_cast<NSObject**>(REALfirstClassData(wrapper)) = [object retain];
}

/// An instance of the host class named after a Cocoa class, if there is one.
REALobjectStruct* new_instance_for(Class cocoaClass) {
    constexpr std::size_t longestName = 199;
    const char* const name = class_getName(cocoaClass);
    if (!name || std::strlen(name) > longestName) return nullptr;
    char hostName[longestName + sizeof "ZNT"];
    std::snprintf(hostName, sizeof hostName, "%sZNT", name);
    return REALnewInstance(hostName);
}

} // namespace

REALobjectStruct* NewSharedWrapper(id object, const char* hostClass) {
    if (!object) return nullptr;
    if (REALobjectStruct* const existing = find_instance(object))
        return HostObject::retain(existing).leak();
    REALobjectStruct* const wrapper = REALnewInstance(hostClass);
    if (!wrapper) return nullptr;
    store(wrapper, object);
    register_instance(object, wrapper);
    return wrapper;
}

REALobjectStruct* NewNSImageZNT(NSImage* image) { return NewSharedWrapper(image, "NSImageZNT"); }

REALobjectStruct* NewNSPDFImageRepZNT(NSPDFImageRep* representation) {
    return NewSharedWrapper(representation, "NSPDFImageRepZNT");
}

REALobjectStruct* NewNSBitmapImageRepZNT(NSBitmapImageRep* representation) {
    return NewSharedWrapper(representation, "NSBitmapImageRepZNT");
}

REALobjectStruct* NewNSColorZNT(NSColor* color) { return NewSharedWrapper(color, "NSColorZNT"); }

REALobjectStruct* NewNSObjectZNT(NSObject* object, Class required) {
    if (!object || !required) return nullptr;
    for (Class ancestor = [object class]; ancestor; ancestor = [ancestor superclass]) {
        REALobjectStruct* const wrapper = new_instance_for(ancestor);
        // An instance made for an object of the wrong class is left to the host as it is.
        if (!wrapper || ![object isKindOfClass:required]) continue;
        store(wrapper, object);
        return wrapper;
    }
    return nullptr;
}
