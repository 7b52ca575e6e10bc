#include "plugin/bridge/strings.h"
#include "plugin/bridge/variants.h"
#include "plugin/entry/frames.h"
#include "sdk/tables.h"
#include "tests/plugin/probe/probe.h"

using namespace REALtables;

namespace {

/// Into Cocoa and out again.
REALobjectStruct* round_trip(REALobjectStruct* value) {
    return FullFrame([&] { return NewVariantFromNSObject(GetVariantAsNSObject(value)); });
}

/// The Cocoa object of a value, retained for the caller, as its address; 0 for nil.
REALword retained_object_of(REALobjectStruct* value) {
    return FullFrame(
        [&] { return reinterpret_cast<REALword>([GetVariantAsNSObject(value) retain]); });
}

/// The value of a Cocoa object, given as its address.
REALobjectStruct* value_of(REALword object) {
    return FullFrame([&] { return NewVariantFromNSObject(reinterpret_cast<id>(object)); });
}

/// Whether a value becomes a Cocoa object of the class.
bool is_kind_of(REALobjectStruct* value, REALstringStruct* className) {
    return FullFrame([&]() -> bool {
        Class const cocoaClass = NSClassFromString(NewNSString(className));
        return [GetVariantAsNSObject(value) isKindOfClass:cocoaClass];
    });
}

/// The Objective-C type of the NSValue or NSNumber that a value becomes; nothing for other objects.
REALstringStruct* objc_type_of(REALobjectStruct* value) {
    return FullFrame([&]() -> REALstringStruct* {
        NSObject* const object = GetVariantAsNSObject(value);
        if (![object isKindOfClass:[NSValue class]]) return nullptr;
        NSString* const type = [NSString stringWithUTF8String:[(NSValue*)object objCType]];
        return CFString2RBString((CFStringRef)type);
    });
}

/// What a value's Cocoa object says of itself.
REALstringStruct* description_of(REALobjectStruct* value) {
    return FullFrame(
        [&] { return CFString2RBString((CFStringRef)[GetVariantAsNSObject(value) description]); });
}

REALmethod sharedMethods[] = {
    shared_method("RoundTrip(value as Variant) as Variant", round_trip),
    shared_method("RetainedObjectOf(value as Variant) as Integer", retained_object_of),
    shared_method("ValueOf(object as Integer) as Variant", value_of),
    shared_method("IsKindOf(value as Variant, className as String) as Boolean", is_kind_of),
    shared_method("ObjCTypeOf(value as Variant) as String", objc_type_of),
    shared_method("DescriptionOf(value as Variant) as String", description_of),
};

} // namespace

REALclassDefinition ValueProbe =
    class_definition({.name = "ValueProbe", .sharedMethods = sharedMethods});
