#include "plugin/bridge/dictionaries.h"

#include "plugin/bridge/nesting.h"
#include "plugin/bridge/variants.h"
#include "plugin/entry/references.h"

namespace {

using DictionarySetter = void (*)(REALobjectStruct* dictionary, REALobjectStruct* key,
                                  REALobjectStruct* value);
using DictionaryGetter = REALobjectStruct* (*)(REALobjectStruct* dictionary, REALobjectStruct* key);
using DictionaryKeyGetter = REALobjectStruct* (*)(REALobjectStruct* dictionary, REALword index);

// The methods of the dictionary that they were last loaded for.
REALobjectStruct* LastDictionary = nullptr;
DictionarySetter LastDictionarySetter = nullptr;
DictionaryGetter LastDictionaryGetter = nullptr;
DictionaryKeyGetter LastDictionaryKeyGetter = nullptr;

template <typename Method>
Method load(REALobjectStruct* dictionary, const char* declaration) {
    return reinterpret_cast<Method>(REALLoadObjectMethod(dictionary, declaration));
}

void load_methods(REALobjectStruct* dictionary) {
    if (dictionary == LastDictionary) return;
    LastDictionary = dictionary;
    LastDictionarySetter =
        load<DictionarySetter>(dictionary, "Value(key As Variant, Assigns _value As Variant)");
    LastDictionaryGetter = load<DictionaryGetter>(dictionary, "Value(key As Variant) As Variant");
    LastDictionaryKeyGetter =
        load<DictionaryKeyGetter>(dictionary, "Key(index As Integer) As Variant");
}

/// One conversion of a dictionary: the methods are forgotten at its end.
class Conversion : NestingLevel {
public:
    ~Conversion() { LastDictionary = nullptr; }
};

/// Since the last entry, the conversion of other dictionaries may have loaded their methods.
HostObject key_at(REALobjectStruct* dictionary, std::int32_t index) {
    load_methods(dictionary);
    return HostObject::adopt(LastDictionaryKeyGetter ? LastDictionaryKeyGetter(dictionary, index)
                                                     : nullptr);
}

/// The methods are those that the key was read with.
HostObject value_for(REALobjectStruct* dictionary, REALobjectStruct* key) {
    return HostObject::adopt(LastDictionaryGetter ? LastDictionaryGetter(dictionary, key)
                                                  : nullptr);
}

/// So may the conversion of the key and the value.
void set_value(REALobjectStruct* dictionary, REALobjectStruct* key, REALobjectStruct* value) {
    load_methods(dictionary);
    if (LastDictionarySetter) LastDictionarySetter(dictionary, key, value);
}

id object_or_NSNull(REALobjectStruct* value) {
    NSObject* const object = GetVariantAsNSObject(value);
    return object ? object : [NSNull null];
}

} // namespace

NSDictionary* NewNSDictionary(REALdictionaryStruct* dictionary) {
    if (!dictionary) return nil;
    std::int32_t count = 0;
    REALGetPropValueInt32(dictionary, "Count", &count);
    if (count < 1) return [NSDictionary dictionary];

    const Conversion conversion;
    NSMutableDictionary* const result =
        [NSMutableDictionary dictionaryWithCapacity:static_cast<NSUInteger>(count)];
    for (std::int32_t index = 0; result && index < count; ++index) {
        const HostObject key = key_at(dictionary, index);
        const HostObject value = value_for(dictionary, key.get());
        if (!key) continue;
        [result setObject:object_or_NSNull(value.get()) forKey:object_or_NSNull(key.get())];
    }
    return result;
}

REALdictionaryStruct* NSDictionaryRB(NSDictionary* dictionary) {
    if (!dictionary) return nullptr;
    HostObject result = HostObject::adopt(REALnewInstance("Dictionary"));
    if (!result) return nullptr;

    const Conversion conversion;
    NSArray* const keys = [dictionary allKeys];
    const NSUInteger count = [keys count];
    for (NSUInteger index = 0; index < count; ++index) {
        id const key = [keys objectAtIndex:index];
        const HostObject hostKey = HostObject::adopt(NewVariantFromNSObject(key));
        const HostObject hostValue =
            HostObject::adopt(NewVariantFromNSObject([dictionary objectForKey:key]));
        set_value(result.get(), hostKey.get(), hostValue.get());
    }
    return static_cast<REALdictionaryStruct*>(result.leak());
}
