#include "companion/classes.h"
#include "companion/core_foundation_wrapping.h"
#include "companion/host_strings.h"
#include "sdk/tables.h"

using namespace REALtables;

namespace base_part {
namespace {

CFTypeRef objectIn(REALobjectStruct* wrapper) { return wrappedBy<const void>(wrapper); }

REALword typeID(REALobjectStruct* wrapper, REALword) {
    return inFrame([&] {
        return objectIn(wrapper) ? static_cast<REALword>(CFGetTypeID(objectIn(wrapper))) : 0;
    });
}

REALstringStruct* description(REALobjectStruct* wrapper, REALword) {
    return inFrame([&]() -> REALstringStruct* {
        if (!objectIn(wrapper)) return nullptr;
        NSString* const text = [(NSString*)CFCopyDescription(objectIn(wrapper)) autorelease];
        return newHostString((CFStringRef)text).leak();
    });
}

bool equal(REALobjectStruct* wrapper, REALobjectStruct* other) {
    return inFrame([&]() -> bool { return other && CFEqual(objectIn(wrapper), objectIn(other)); });
}

REALobjectStruct* newUUIDWrapper(CFUUIDRef owned) {
    return newCoreFoundationWrapper([(id)owned autorelease], "CFUUIDZNT");
}

REALobjectStruct* createUUID() {
    return inFrame([] { return newUUIDWrapper(CFUUIDCreate(nullptr)); });
}

REALobjectStruct* createUUIDWithText(REALstringStruct* text) {
    return inFrame([&] { return newUUIDWrapper(CFUUIDCreateFromString(nullptr, textOf(text))); });
}

REALobjectStruct* createError(REALstringStruct* domain, REALword code) {
    return inFrame([&] {
        CFErrorRef const error = CFErrorCreate(nullptr, textOf(domain), code, nullptr);
        return newCoreFoundationWrapper([(id)error autorelease], "CFErrorZNT");
    });
}

// clang-format off
REALproperty objectProperties[] = {
    property("Handle", "Integer", handle),
    property("TypeID", "Integer", typeID),
    property("Description", "String", description),
};
REALmethod objectMethods[] = {
    method("Equal(other as CFObjectZNT) as Boolean", equal),
};

REALproperty errorProperties[] = {
    property("Domain", "String", coreFoundationGetter<CFErrorRef, CFErrorGetTypeID>([](CFErrorRef error) {
        return newHostString(CFErrorGetDomain(error)).leak();
    })),
    property("Code", "Integer", coreFoundationGetter<CFErrorRef, CFErrorGetTypeID>([](CFErrorRef error) -> REALword {
        return CFErrorGetCode(error);
    })),
};
REALmethod errorSharedMethods[] = {
    shared_method("Create(domain as string, code as Integer) as CFErrorZNT", createError),
};

/// Text as in "68753A44-4D6F-1226-9C60-0050E4C00067".
REALproperty uuidProperties[] = {
    property("Text", "String", coreFoundationGetter<CFUUIDRef, CFUUIDGetTypeID>([](CFUUIDRef uuid) {
        NSString* const text = [(NSString*)CFUUIDCreateString(nullptr, uuid) autorelease];
        return newHostString((CFStringRef)text).leak();
    })),
};
REALmethod uuidSharedMethods[] = {
    shared_method("Create as CFUUIDZNT", createUUID),
    shared_method("CreateWithText(text as string) as CFUUIDZNT", createUUIDWithText),
};
// clang-format on

} // namespace

REALclassDefinition cfObjectClass = class_definition({
    .name = "CFObjectZNT",
    .instanceDataSize = sizeof(CoreFoundationData),
    .constructor = tagWrapper,
    .destructor = destroyWrapper,
    .properties = objectProperties,
    .methods = objectMethods,
});

REALclassDefinition cfErrorClass = class_definition({
    .name = "CFErrorZNT",
    .superclass = "CFObjectZNT",
    .properties = errorProperties,
    .sharedMethods = errorSharedMethods,
});

REALclassDefinition cfUUIDClass = class_definition({
    .name = "CFUUIDZNT",
    .superclass = "CFObjectZNT",
    .properties = uuidProperties,
    .sharedMethods = uuidSharedMethods,
});

} // namespace base_part
