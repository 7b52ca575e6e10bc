#include "plugin/bridge/wrappers.h"
#include "plugin/entry/frames.h"
#include "plugin/entry/references.h"
#include "sdk/tables.h"
#include "tests/plugin/probe/probe.h"

#include <string>

using namespace REALtables;

namespace {

/// The generic wrapper of a Cocoa object, given as its address; 0 for nil.
REALobjectStruct* wrap_object(REALword object, REALstringStruct* requiredName) {
    const std::string name =
        requiredName ? std::string(requiredName->buffer + 1, requiredName->length) : "";
    return FullFrame(
        [&] { return NewNSObjectZNT(reinterpret_cast<id>(object), objc_getClass(name.c_str())); });
}

/// The wrapper that the typed maker of the kind ("Image", "PDF", "Bitmap") makes of an object.
REALobjectStruct* wrap_typed(REALstringStruct* kind, REALword handle) {
    const id object = reinterpret_cast<id>(handle);
    return FullFrame([&]() -> REALobjectStruct* {
        const std::string name(kind->buffer + 1, kind->length);
        if (name == "Image") return NewNSImageZNT(object);
        if (name == "PDF") return NewNSPDFImageRepZNT(object);
        return NewNSBitmapImageRepZNT(object);
    });
}

REALmethod sharedMethods[] = {
    shared_method("WrapObject(object as Integer, requiredName as String) as Object", wrap_object),
    shared_method("WrapTyped(kind as String, object as Integer) as Object", wrap_typed),
};

} // namespace

REALclassDefinition WrapperProbe =
    class_definition({.name = "WrapperProbe", .sharedMethods = sharedMethods});
