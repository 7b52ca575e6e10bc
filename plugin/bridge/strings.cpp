#include "plugin/bridge/strings.h"

#include "plugin/bridge/string_layout.h"
#include "sdk/registration.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace {

std::uint32_t known_encoding(REALstringStruct* string) {
    const std::uint32_t encoding = REALGetStringEncoding(string);
    return encoding == REALtextEncodingNone ? REALtextEncodingMacRoman : encoding;
}

/// Copied first: the bytes of a host string lie at odd addresses.
CFStringRef string_of_utf16(const char* bytes, std::size_t count) {
    const std::unique_ptr<UniChar[]> units(new (std::nothrow) UniChar[count + 1]);
    if (!units) return nullptr;
    std::memcpy(units.get(), bytes, count * sizeof(UniChar));
    return CFStringCreateWithCharacters(nullptr, units.get(), static_cast<CFIndex>(count));
}

HostString build_utf8(const char* text) {
    const std::size_t length = std::strlen(text);
    if (length == 0) return {};
    HostString string = HostString::adopt(REALBuildString(text, static_cast<std::int32_t>(length)));
    if (string) REALSetStringEncoding(string.get(), REALtextEncodingUTF8);
    return string;
}

/// A null string when the text does not convert.
HostString build_from(CFStringRef string, char* buffer, CFIndex size) {
    if (!CFStringGetCString(string, buffer, size, kCFStringEncodingUTF8)) return {};
    return build_utf8(buffer);
}

} // namespace

StringBytes::StringBytes(REALstringStruct* string) {
    if (!string) return;
    if (rbversion > 2013.0) {
        if (!record_.fill(string, REALtextEncodingNone)) return;
        data_ = record_.bytes();
        size_ = record_.length();
    } else {
        locked_ = HostString::retain(string);
        const StoredText text = stored_text(string);
        data_ = text.data;
        size_ = text.size;
    }
}

CFStringRef RBString2CFString(REALstringStruct* string) {
    if (!string) return nullptr;
    if (rbversion >= 2012.0)
        if (CFStringRef const converted = REALCopyStringCFString(string, false)) return converted;
    if (CFStringRef const converted = REALGetStringCFString(string, false)) return converted;

    const std::uint32_t encoding = known_encoding(string);
    const StringBytes bytes(string);
    if (!bytes.data()) return nullptr;
    if (encoding == REALtextEncodingUTF16)
        return string_of_utf16(bytes.data(), bytes.size() / sizeof(UniChar));
    return CFStringCreateWithCString(nullptr, bytes.data(), encoding);
}

REALstringStruct* CFString2RBString(CFStringRef string) {
    // UTF-8 needs at most this many bytes for a UTF-16 unit in any encoding form ever defined.
    constexpr std::int64_t bytesPerUnit = 6;
    constexpr std::int64_t longestBuffer = 0x7FFFFFFF;

    const CFIndex length = string ? CFStringGetLength(string) : 0;
    if (length <= 0) return nullptr;
    if (length < 100) {
        char buffer[601] = {};
        return build_from(string, buffer, 600).leak();
    }
    const std::int64_t size = std::int64_t{length} * bytesPerUnit;
    if (size > longestBuffer) return nullptr;
    const std::unique_ptr<char[]> buffer(new (std::nothrow) char[static_cast<std::size_t>(size)]());
    return buffer ? build_from(string, buffer.get(), static_cast<CFIndex>(size)).leak() : nullptr;
}
