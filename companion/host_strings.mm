#include "companion/host_strings.h"

#import <Foundation/Foundation.h>

#include <limits>
#include <string>

HostString newHostString(CFStringRef text) {
    if (!text) return {};
    const CFRange whole = CFRangeMake(0, CFStringGetLength(text));
    const auto convert = [&](UInt8* buffer, CFIndex size) {
        CFIndex used = 0;
        CFStringGetBytes(text, whole, kCFStringEncodingUTF8, '?', false, buffer, size, &used);
        return used;
    };
    const CFIndex size = convert(nullptr, 0);
    if (size < 1 || size > std::numeric_limits<std::int32_t>::max()) return {};
    std::string bytes(static_cast<std::size_t>(size), '\0');
    convert(reinterpret_cast<UInt8*>(bytes.data()), size);
    HostString string =
        HostString::adopt(buildString(bytes.data(), static_cast<std::int32_t>(size)));
    if (string) setStringEncoding(string.get(), REALtextEncodingUTF8);
    return string;
}

CFStringRef textOf(REALstringStruct* string) {
    CFStringRef const text = string ? copyCFString(string, 0) : nullptr;
    return text ? (CFStringRef)[(NSString*)text autorelease] : CFSTR("");
}
