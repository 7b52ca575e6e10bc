#include "plugin/bridge/strings.h"
#include "plugin/bridge/variants.h"
#include "plugin/entry/frames.h"
#include "plugin/entry/references.h"
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

/// A host string of any bytes and any encoding.
REALstringStruct* tagged(REALmemoryBlockStruct* bytes, REALword encoding) {
    REALstringStruct* const string = REALBuildString(
        static_cast<const char*>(REALMemoryBlockGetPtr(bytes)), REALMemoryBlockGetSize(bytes));
    REALSetStringEncoding(string, static_cast<std::uint32_t>(encoding));
    return string;
}

REALword encoding_of(REALstringStruct* string) {
    return static_cast<REALword>(REALGetStringEncoding(string));
}

/// The value of the number that is made of the 64 bits by way of an Objective-C type.
REALobjectStruct* value_of_number(REALstringStruct* objCType, std::int64_t bits) {
    return FullFrame([&] {
        const char* const type = [NewNSString(objCType) UTF8String];
        return NewVariantFromNSObject([[[NSNumber alloc] initWithBytes:&bits
                                                              objCType:type] autorelease]);
    });
}

/// The value of as many collections within each other, of which the innermost is empty.
REALobjectStruct* value_of_nested(REALword levels, bool areArrays) {
    return FullFrame([&] {
        NSObject* inner = nil;
        for (REALword level = 0; level < levels; ++level) {
            if (areArrays)
                inner = [NSArray arrayWithObjects:inner, nil];
            else
                inner = [NSDictionary dictionaryWithObjectsAndKeys:inner, @"inner", nil];
        }
        return NewVariantFromNSObject(inner);
    });
}

/// The value of an array whose element holds the array.
REALobjectStruct* value_of_endless() {
    return FullFrame([&] {
        NSMutableArray* const inner = [NSMutableArray array];
        NSArray* const outer = [NSArray arrayWithObject:inner];
        [inner addObject:outer];
        @try {
            return NewVariantFromNSObject(outer);
        } @finally {
            [inner removeAllObjects];
        }
    });
}

REALmethod sharedMethods[] = {
    shared_method("RoundTrip(value as Variant) as Variant", round_trip),
    shared_method("RetainedObjectOf(value as Variant) as Integer", retained_object_of),
    shared_method("ValueOf(object as Integer) as Variant", value_of),
    shared_method("IsKindOf(value as Variant, className as String) as Boolean", is_kind_of),
    shared_method("ObjCTypeOf(value as Variant) as String", objc_type_of),
    shared_method("DescriptionOf(value as Variant) as String", description_of),
    shared_method("Tagged(bytes as MemoryBlock, encoding as Integer) as String", tagged),
    shared_method("EncodingOf(text as String) as Integer", encoding_of),
    shared_method("ValueOfNumber(objCType as String, bits as Int64) as Variant", value_of_number),
    shared_method("ValueOfNested(levels as Integer, areArrays as Boolean) as Variant",
                  value_of_nested),
    shared_method("ValueOfEndless as Variant", value_of_endless),
};

} // namespace

REALclassDefinition ValueProbe =
    class_definition({.name = "ValueProbe", .sharedMethods = sharedMethods});
