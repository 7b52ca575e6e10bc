#include "plugin/bridge/strings.h"
#include "plugin/bridge/string_array.h"
#include "plugin/bridge/text.h"
#include "sdk/tables.h"
#include "tests/plugin/probe/probe.h"

#include <cstring>
#include <malloc.h>

using namespace REALtables;

namespace {

REALmemoryBlockStruct* block_of(const void* bytes, std::size_t size) {
    REALmemoryBlockStruct* const block = REALNewMemoryBlockOriginal(static_cast<int>(size));
    if (block && size > 0) std::memcpy(REALMemoryBlockGetPtr(block), bytes, size);
    return block;
}

/// The UTF-16 units that a host string becomes in Cocoa; nil for no string.
REALmemoryBlockStruct* units_of(REALstringStruct* string) {
    const auto converted = CFReference<CFStringRef>::adopt(RBString2CFString(string));
    if (!converted) return nullptr;
    const CFIndex length = CFStringGetLength(converted.get());
    NSMutableData* const units =
        [NSMutableData dataWithLength:static_cast<NSUInteger>(length) * sizeof(UniChar)];
    CFStringGetCharacters(converted.get(), CFRangeMake(0, length),
                          static_cast<UniChar*>([units mutableBytes]));
    return block_of([units bytes], [units length]);
}

/// The host string that these UTF-16 units become; a null block is a null string.
REALstringStruct* string_of(REALmemoryBlockStruct* block) {
    if (!block) return CFString2RBString(nullptr);
    const auto string = CFReference<CFStringRef>::adopt(CFStringCreateWithCharacters(
        nullptr, static_cast<const UniChar*>(REALMemoryBlockGetPtr(block)),
        REALMemoryBlockGetSize(block) / static_cast<CFIndex>(sizeof(UniChar))));
    return CFString2RBString(string.get());
}

/// The text with its terminator; asked for twice, which must not differ.
REALmemoryBlockStruct* utf8_of(rbText text) {
    const char* const first = text.GetUTF8();
    return text.GetUTF8() == first ? block_of(first, std::strlen(first) + 1) : nullptr;
}
REALmemoryBlockStruct* utf8(REALstringStruct* string) { return utf8_of(rbText(string)); }
REALmemoryBlockStruct* known_utf8(REALstringStruct* string) {
    return utf8_of(rbText(string, true));
}
bool conversion_fails(REALstringStruct* string, bool isUTF8) {
    rbText text(string, isUTF8);
    text.GetUTF8();
    return text.conversion_failed();
}

REALstringData lastData;
std::size_t lastCapacity = 0;

/// The bytes with the four behind them; nil when there are none. The record's fields, which start
/// as marks, stay for the getters below.
REALmemoryBlockStruct* data_of(REALstringStruct* string, REALword encoding, REALword length) {
    lastData = {nullptr, static_cast<std::uint32_t>(length), 4711};
    lastCapacity = 0;
    if (!REALGetStringData(string, static_cast<std::uint32_t>(encoding), &lastData)) return nullptr;
    lastCapacity = malloc_usable_size(lastData.data);
    REALmemoryBlockStruct* const block = block_of(lastData.data, lastData.length + 4);
    REALstringData disposed = lastData;
    if (REALDisposeStringData.resolve())
        REALDisposeStringData(&disposed);
    else
        std::free(disposed.data);
    return block;
}
REALword data_length() { return lastData.length; }
REALword data_encoding() { return lastData.encoding; }
REALword data_capacity() { return static_cast<REALword>(lastCapacity); }

/// "text 0", "", "text 2", ...
REALarrayStruct* strings(REALword count) {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    NSMutableArray* const list = [NSMutableArray array];
    for (REALword i = 0; i < count; ++i)
        [list addObject:i == 1 ? @"" : [NSString stringWithFormat:@"text %d", static_cast<int>(i)]];
    REALarrayStruct* const array = REALCreateArray(REALarrayOfStrings, -1);
    FillStringArray(array, list);
    FillStringArray(array, nil);
    FillStringArray(nullptr, list);
    [pool release];
    return array;
}

REALmethod sharedMethods[] = {
    shared_method("UnitsOf(text as String) as MemoryBlock", units_of),
    shared_method("StringOf(units as MemoryBlock) as String", string_of),
    shared_method("UTF8(text as String) as MemoryBlock", utf8),
    shared_method("KnownUTF8(text as String) as MemoryBlock", known_utf8),
    shared_method("ConversionFails(text as String, isUTF8 as Boolean) as Boolean",
                  conversion_fails),
    shared_method("DataOf(text as String, encoding as Integer, lengthOnEntry as Integer) "
                  "as MemoryBlock",
                  data_of),
    shared_method("DataLength as Integer", data_length),
    shared_method("DataEncoding as Integer", data_encoding),
    shared_method("DataCapacity as Integer", data_capacity),
    shared_method("Strings(count as Integer) as String()", strings),
};

} // namespace

REALclassDefinition StringProbe =
    class_definition({.name = "StringProbe", .sharedMethods = sharedMethods});
