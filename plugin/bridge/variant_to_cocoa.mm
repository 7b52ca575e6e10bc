#include "plugin/bridge/dates.h"
#include "plugin/bridge/host_objects.h"
#include "plugin/bridge/nesting.h"
#include "plugin/bridge/strings.h"
#include "plugin/bridge/variants.h"
#include "plugin/entry/references.h"

namespace {

/// The host's VarType codes.
enum Kind : std::int32_t {
    kindInt32 = 2,
    kindInt64 = 3,
    kindSingle = 4,
    kindDouble = 5,
    kindCurrency = 6,
    kindDate = 7,
    kindString = 8,
    kindObject = 9,
    kindBoolean = 11,
    kindColor = 16,
    kindCString = 18,
    kindWString = 19,
    kindPString = 20,
    kindCFString = 21,
    kindText = 23,
    kindArray = 0x1000, ///< added to the kind of the elements
};

std::int32_t kind_of(REALobjectStruct* value) {
    using VarType = std::int32_t (*)(REALobjectStruct * value);
    static VarType varType = nullptr;
    if (!varType)
        varType = reinterpret_cast<VarType>(
            REALLoadFrameworkMethod(nullptr, "VarType(value As Variant) As Int32"));
    if (varType) return varType(value);
    std::int32_t type = 0;
    REALGetPropValueInt32(value, "Type", &type);
    return type;
}

/// What the host's conversion makes of a Variant or, where the host has none, what the property of
/// the Variant holds.
template <typename Result, typename Conversion, typename Getter>
Result read(REALobjectStruct* value, Conversion& conversion, Getter& getter,
            const char* propertyName) {
    if (auto* const convert = conversion.resolve()) return convert(value);
    Result result{};
    getter(value, propertyName, &result);
    return result;
}

std::int32_t int32_of(REALobjectStruct* value) {
    return read<std::int32_t>(value, REALVariantToInt32, REALGetPropValueInt32, "Int32Value");
}

HostString string_of(REALobjectStruct* value) {
    return HostString::adopt(
        read<REALstringStruct*>(value, REALVariantToString, REALGetPropValueString, "StringValue"));
}

NSString* text_of(const HostString& string) {
    NSString* const text = NewNSString(string.get());
    return text ? text : @"";
}

NSCalendarDate* date_of(REALobjectStruct* value) {
    REALobjectStruct* date = nullptr;
    REALGetPropValueObject(value, "DateValue", &date);
    const HostObject owned = HostObject::adopt(date);
    return NewNSDate(static_cast<REALdateStruct*>(date));
}

// Elements that carry a reference are kept until what is borrowed from them has been added.
template <typename Number>
Number owned(Number element) {
    return element;
}
HostString owned(REALstringStruct* element) { return HostString::adopt(element); }
HostObject owned(REALobjectStruct* element) { return HostObject::adopt(element); }

/// The elements of an array; nil when the host does not show them.
template <typename Element, typename Convert>
NSMutableArray* elements_of(REALobjectStruct* value, Convert convert) {
    auto* const array = static_cast<REALarrayStruct*>(value);
    NSMutableArray* const list = [NSMutableArray array];
    if (!REALGetArrayUBound.resolve()) return nil;
    const std::int32_t upperBound = REALGetArrayUBound(array);
    if (upperBound < 0) return list;
    const auto get = REALGetArrayGetter<Element>(array);
    if (!get) return nil;
    for (std::int32_t index = 0;; ++index) {
        const auto element = owned(get(array, index));
        [list addObject:convert(element)];
        if (index == upperBound) return list;
    }
}

NSMutableArray* objects_of(REALobjectStruct* value) {
    const NestingLevel level;
    return elements_of<REALobjectStruct*>(
        value, [](const HostObject& element) { return GetVariantAsNSObject(element.get()); });
}

} // namespace

NSObject* GetVariantAsNSObject(REALobjectStruct* value) {
    if (!value) return nil;
    switch (kind_of(value)) {
    case kindInt32:
    case kindColor:
        return [NSNumber numberWithLong:int32_of(value)];
    case kindInt64:
        return [NSNumber numberWithLongLong:read<std::int64_t>(value, REALVariantToInt64,
                                                               REALGetPropValueInt64, "LongValue")];
    case kindSingle:
        return [NSNumber numberWithFloat:read<float>(value, REALVariantToSingle,
                                                     REALGetPropValueSingle, "SingleValue")];
    case kindDouble:
    case kindCurrency:
        return [NSNumber numberWithDouble:read<double>(value, REALVariantToDouble,
                                                       REALGetPropValueDouble, "DoubleValue")];
    case kindBoolean:
        return [NSNumber numberWithBool:static_cast<std::uint8_t>(int32_of(value))];
    case kindString:
    case kindCString:
    case kindWString:
    case kindPString:
    case kindCFString:
    case kindText:
        return text_of(string_of(value));
    case kindDate:
        return date_of(value);
    case kindObject:
        return NSObjectOfHostObject(value);

    case kindArray + kindInt32:
        return elements_of<std::int32_t>(
            value, [](std::int32_t element) { return [NSNumber numberWithLong:element]; });
    case kindArray + kindInt64:
        return elements_of<std::int64_t>(
            value, [](std::int64_t element) { return [NSNumber numberWithLongLong:element]; });
    case kindArray + kindSingle:
        return elements_of<float>(value,
                                  [](float element) { return [NSNumber numberWithFloat:element]; });
    case kindArray + kindDouble:
        return elements_of<double>(
            value, [](double element) { return [NSNumber numberWithDouble:element]; });
    case kindArray + kindBoolean:
        return elements_of<bool>(value,
                                 [](bool element) { return [NSNumber numberWithBool:element]; });
    case kindArray + kindDate:
        return elements_of<REALobjectStruct*>(value, [](const HostObject& date) {
            return NewNSDate(static_cast<REALdateStruct*>(date.get()));
        });
    case kindArray + kindString:
        return elements_of<REALstringStruct*>(value, text_of);
    case kindArray + kindObject:
        return objects_of(value);
    default:
        return nil;
    }
}
