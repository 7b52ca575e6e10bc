#include "plugin/bridge/core_foundation.h"
#include "plugin/bridge/data.h"
#include "plugin/bridge/dates.h"
#include "plugin/bridge/dictionaries.h"
#include "plugin/bridge/geometry.h"
#include "plugin/bridge/nesting.h"
#include "plugin/bridge/strings.h"
#include "plugin/bridge/times.h"
#include "plugin/bridge/urls.h"
#include "plugin/bridge/variants.h"
#include "plugin/bridge/wrappers.h"
#include "plugin/entry/base_part.h"
#include "plugin/entry/instances.h"
#include "plugin/entry/references.h"

#include <cstring>

@interface NSObject (CoreFoundationType)
- (CFTypeID)_cfTypeID;
@end

namespace {

REALobjectStruct* variant_of_text(NSString* text) {
    return REALNewVariantString(HostString::adopt(CFString2RBString((CFStringRef)text)).get());
}

REALobjectStruct* array_of(NSArray* list) {
    const NestingLevel level;
    HostArray array = HostArray::adopt(REALCreateArray(REALarrayOfObjects, -1));
    if (!array) return nullptr;
    NSEnumerator* const elements = [list objectEnumerator];
    std::int32_t index = 0;
    while (NSObject* const element = [elements nextObject]) {
        const HostObject hostElement = HostObject::adopt(NewVariantFromNSObject(element));
        REALInsertArrayValueObject(array.get(), index++, hostElement.get());
    }
    return array.leak();
}

/// How a number of one Objective-C type becomes a Variant.
struct NumberType {
    const char* objCType;
    REALobjectStruct* (*newVariant)(NSNumber* number);
};

// clang-format off
constexpr NumberType numberTypes[] = {
    // Numbers made of Booleans have this type; those made of chars are taken for the same.
    {"c", [](NSNumber* number) { return REALNewVariantBoolean([number boolValue]); }},
    {"C", [](NSNumber* number) { return REALNewVariantInteger([number unsignedCharValue]); }},
    {"s", [](NSNumber* number) { return REALNewVariantInteger([number shortValue]); }},
    {"S", [](NSNumber* number) { return REALNewVariantInteger([number unsignedShortValue]); }},
    {"i", [](NSNumber* number) { return REALNewVariantInteger([number intValue]); }},
    {"I", [](NSNumber* number) { return REALNewVariantUInt32([number unsignedIntValue]); }},
    {"l", [](NSNumber* number) { return REALNewVariantInteger(static_cast<std::int32_t>([number longValue])); }},
    {"L", [](NSNumber* number) { return REALNewVariantUInt32(static_cast<std::uint32_t>([number unsignedLongValue])); }},
    {"q", [](NSNumber* number) { return REALNewVariantInt64([number longLongValue]); }},
    // Read as the 32 bits of an unsigned long by design: what lies above them is lost.
    {"Q", [](NSNumber* number) { return REALNewVariantUInt64(static_cast<std::uint32_t>([number unsignedLongValue])); }},
    {"f", [](NSNumber* number) { return REALNewVariantSingle([number floatValue]); }},
    {"d", [](NSNumber* number) { return REALNewVariantDouble([number doubleValue]); }},
};
// clang-format on

REALobjectStruct* variant_of_number(NSNumber* number) {
    const char* const objCType = [number objCType];
    for (const NumberType& type : numberTypes)
        if (std::strcmp(objCType, type.objCType) == 0) return type.newVariant(number);
    return REALNewVariantDouble([number doubleValue]);
}

/// Cocoa classes whose objects keep one host wrapper while it lives.
struct SharedClass {
    const char* cocoaClass;
    const char* hostClass;
};

/// Tested in this order; a system may lack some of them.
constexpr SharedClass sharedClasses[] = {
    {"NSCalendar", "NSCalendarZNT"},
    {"NSError", "NSErrorZNT"},
    {"NSRunningApplication", "NSRunningApplicationZNT"},
    {"NSFont", "NSFontZNT"},
    {"NSFileHandle", "NSFileHandleZNT"},
    {"NSCharacterSet", "NSCharacterSetZNT"},
    {"NSLocale", "NSLocaleZNT"},
    {"NSTimer", "NSTimerZNT"},
    {"NSTimeZone", "NSTimeZoneZNT"},
    {"NSParagraphStyle", "NSParagraphStyleZNT"},
};

const SharedClass* shared_class_of(NSObject* object) {
    for (const SharedClass& shared : sharedClasses) {
        Class const cocoaClass = objc_getClass(shared.cocoaClass);
        if (cocoaClass && [object isKindOfClass:cocoaClass]) return &shared;
    }
    return nullptr;
}

REALobjectStruct* variant_of_url(NSURL* url) {
    if (REALfolderItemStruct* const item = NSURLRBFile(url)) return item;
    return variant_of_text([url absoluteString]);
}

/// How an NSValue of one Objective-C type becomes a host object.
struct ValueType {
    const char* objCType;
    REALobjectStruct* (*newObject)(NSValue* value);
};

constexpr ValueType valueTypes[] = {
    {@encode(NSRect), [](NSValue* value) { return NewNSRectZNT([value rectValue]); }},
    {@encode(NSSize), [](NSValue* value) { return NewNSSizeZNT([value sizeValue]); }},
    {@encode(NSRange), [](NSValue* value) { return NewNSRangeZNT([value rangeValue]); }},
    {@encode(NSPoint), [](NSValue* value) { return NewNSPointZNT([value pointValue]); }},
    {"{?=qll}", NewQTTime},
    {"{?={?=qll}{?=qll}}", NewQTTimeRange},
    {"{?=qiIq}", NewCMTime},
    {"{?={?=qiIq}{?=qiIq}}", NewCMTimeRange},
    {"{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}", NewCMTimeMapping},
};

const ValueType* type_of_value(NSObject* object) {
    if (![object isKindOfClass:[NSValue class]]) return nullptr;
    const char* const objCType = [(NSValue*)object objCType];
    for (const ValueType& type : valueTypes)
        if (std::strcmp(objCType, type.objCType) == 0) return &type;
    return nullptr;
}

bool is_core_foundation(NSObject* object) {
    return [object respondsToSelector:@selector(_cfTypeID)] && [object _cfTypeID] > 0;
}

/// What the work answers; null when it raises an NSException.
template <typename Work>
REALobjectStruct* guarded(Work work) {
    @try {
        return work();
    } @catch (NSException*) {
        return nullptr;
    }
}

} // namespace

REALobjectStruct* NewVariantFromNSObject(NSObject* object) {
    if (!object || object == [NSNull null]) return nullptr;
    if (REALobjectStruct* const wrapper = find_instance(object))
        return HostObject::retain(wrapper).leak();

    const auto is = [&](Class cocoaClass) -> bool { return [object isKindOfClass:cocoaClass]; };
    if (is([NSArray class])) return array_of((NSArray*)object);
    if (is([NSSet class])) return array_of([(NSSet*)object allObjects]);
    if (is([NSString class])) return variant_of_text((NSString*)object);
    if (is([NSData class])) return NSDataRB((NSData*)object);
    if (is([NSNumber class])) return variant_of_number((NSNumber*)object);
    if (is([NSDate class])) return NSDateRB((NSDate*)object);
    if (is([NSDictionary class])) return NSDictionaryRB((NSDictionary*)object);
    if (is([NSAttributedString class])) return NewNSObjectZNT(object, [NSAttributedString class]);
    if (const SharedClass* const shared = shared_class_of(object))
        return NewSharedWrapper(object, shared->hostClass);
    if (is([NSURL class])) return variant_of_url((NSURL*)object);
    if (Class const wrapperClass = object_wrapper_class(); wrapperClass && is(wrapperClass))
        return [(id<ZNTREALobjectWrapping>)object unwrap];
    if (const ValueType* const type = type_of_value(object))
        return guarded([&] { return type->newObject((NSValue*)object); });
    if (is_core_foundation(object)) return guarded([&] { return NewCFObjectZNT(object); });
    return NewNSObjectZNT(object, [object class]);
}
