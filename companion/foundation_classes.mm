#include "companion/classes.h"
#include "companion/host_strings.h"
#include "companion/wrapping.h"
#include "sdk/tables.h"

using namespace REALtables;

namespace base_part {
namespace {

REALstringStruct* hostText(NSString* text) { return newHostString((CFStringRef)text).leak(); }

NSString* textArgument(REALstringStruct* string) { return (NSString*)textOf(string); }

// clang-format off
REALproperty objectProperties[] = {
    property("Handle", "Integer", handle),
    property("ClassName", "String", getter([](NSObject* object) { return hostText(NSStringFromClass([object class])); })),
    property("Description", "String", getter([](NSObject* object) { return hostText([object description]); })),
};

REALproperty attributedStringProperties[] = {
    property("text", "String", getter([](NSAttributedString* string) { return hostText([string string]); })),
    property("length", "Integer", getter([](NSAttributedString* string) { return static_cast<REALword>([string length]); })),
};
REALmethod attributedStringSharedMethods[] = {
    shared_method("attributedStringWithString(text as string) as NSAttributedStringZNT",
                  maker([](REALstringStruct* text) -> NSAttributedString* {
                      return [[[NSAttributedString alloc] initWithString:textArgument(text)] autorelease];
                  })),
};

/// Characters are Unicode scalar values.
REALmethod characterSetMethods[] = {
    method("characterIsMember(character as Integer) as Boolean",
           member([](NSCharacterSet* set, REALword character) -> bool {
               return character >= 0 && character <= 0x10FFFF && [set longCharacterIsMember:static_cast<UTF32Char>(character)];
           })),
    method("invertedSet as NSCharacterSetZNT", member([](NSCharacterSet* set) -> NSCharacterSet* { return [set invertedSet]; })),
};
REALmethod characterSetSharedMethods[] = {
    shared_method("characterSetWithCharactersInString(text as string) as NSCharacterSetZNT",
                  maker([](REALstringStruct* text) -> NSCharacterSet* { return [NSCharacterSet characterSetWithCharactersInString:textArgument(text)]; })),
    shared_method("decimalDigitCharacterSet as NSCharacterSetZNT", maker([]() -> NSCharacterSet* { return [NSCharacterSet decimalDigitCharacterSet]; })),
    shared_method("letterCharacterSet as NSCharacterSetZNT", maker([]() -> NSCharacterSet* { return [NSCharacterSet letterCharacterSet]; })),
};

REALproperty errorProperties[] = {
    property("domain", "String", getter([](NSError* error) { return hostText([error domain]); })),
    property("code", "Integer", getter([](NSError* error) { return static_cast<REALword>([error code]); })),
    property("localizedDescription", "String", getter([](NSError* error) { return hostText([error localizedDescription]); })),
};
REALmethod errorSharedMethods[] = {
    shared_method("errorWithDomain(domain as string, code as Integer) as NSErrorZNT",
                  maker([](REALstringStruct* domain, REALword code) -> NSError* {
                      return [NSError errorWithDomain:textArgument(domain) code:code userInfo:nil];
                  })),
};

REALproperty localeProperties[] = {
    property("localeIdentifier", "String", getter([](NSLocale* locale) { return hostText([locale localeIdentifier]); })),
};
REALmethod localeSharedMethods[] = {
    shared_method("currentLocale as NSLocaleZNT", maker([]() -> NSLocale* { return [NSLocale currentLocale]; })),
    shared_method("localeWithIdentifier(identifier as string) as NSLocaleZNT",
                  maker([](REALstringStruct* identifier) -> NSLocale* {
                      return [[[NSLocale alloc] initWithLocaleIdentifier:textArgument(identifier)] autorelease];
                  })),
};

REALproperty timeZoneProperties[] = {
    property("name", "String", getter([](NSTimeZone* zone) { return hostText([zone name]); })),
    property("secondsFromGMT", "Integer", getter([](NSTimeZone* zone) { return static_cast<REALword>([zone secondsFromGMT]); })),
};
REALmethod timeZoneSharedMethods[] = {
    shared_method("localTimeZone as NSTimeZoneZNT", maker([]() -> NSTimeZone* { return [NSTimeZone localTimeZone]; })),
    shared_method("timeZoneWithName(name as string) as NSTimeZoneZNT",
                  maker([](REALstringStruct* name) -> NSTimeZone* { return [NSTimeZone timeZoneWithName:textArgument(name)]; })),
    shared_method("timeZoneForSecondsFromGMT(seconds as Integer) as NSTimeZoneZNT",
                  maker([](REALword seconds) -> NSTimeZone* { return [NSTimeZone timeZoneForSecondsFromGMT:seconds]; })),
};
// clang-format on

} // namespace

REALclassDefinition objectClass = class_definition({
    .name = "NSObjectZNT",
    .instanceDataSize = sizeof(NSObject*),
    .destructor = destroyWrapper,
    .properties = objectProperties,
});

REALclassDefinition attributedStringClass = class_definition({
    .name = "NSAttributedStringZNT",
    .superclass = "NSObjectZNT",
    .properties = attributedStringProperties,
    .sharedMethods = attributedStringSharedMethods,
});

REALclassDefinition characterSetClass = class_definition({
    .name = "NSCharacterSetZNT",
    .superclass = "NSObjectZNT",
    .methods = characterSetMethods,
    .sharedMethods = characterSetSharedMethods,
});

REALclassDefinition errorClass = class_definition({
    .name = "NSErrorZNT",
    .superclass = "NSObjectZNT",
    .properties = errorProperties,
    .sharedMethods = errorSharedMethods,
});

REALclassDefinition localeClass = class_definition({
    .name = "NSLocaleZNT",
    .superclass = "NSObjectZNT",
    .properties = localeProperties,
    .sharedMethods = localeSharedMethods,
});

REALclassDefinition timeZoneClass = class_definition({
    .name = "NSTimeZoneZNT",
    .superclass = "NSObjectZNT",
    .properties = timeZoneProperties,
    .sharedMethods = timeZoneSharedMethods,
});

} // namespace base_part
