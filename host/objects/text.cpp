#include "host/objects/text.h"

#include "host/objects/runtime.h"

#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <limits>

namespace host {

namespace {

bool isASCII(std::string_view bytes) {
    return std::ranges::all_of(bytes, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Encodings whose first 128 characters are those of ASCII, one byte each.
bool extendsASCII(std::uint32_t encoding) {
    return encoding == REALtextEncodingASCII || encoding == REALtextEncodingUTF8 ||
           encoding == REALtextEncodingMacRoman;
}

} // namespace

StringRef::StringRef(std::string_view utf8)
    : StringRef(utf8, REALtextEncodingUTF8) {}

StringRef::StringRef(std::string_view bytes, std::uint32_t encoding) {
    if (Runtime::isRunning()) string_ = Runtime::current().registry().makeString(bytes, encoding);
}

StringRef::StringRef(const StringRef& other)
    : string_(other.string_) {
    if (string_ && Runtime::isRunning()) Runtime::current().registry().retain(string_);
}

StringRef::~StringRef() {
    if (string_ && Runtime::isRunning()) Runtime::current().registry().release(string_);
}

StringRef StringRef::adopt(REALstringStruct* string) {
    StringRef reference;
    reference.string_ = string;
    return reference;
}

StringRef StringRef::retain(REALstringStruct* string) {
    if (string && Runtime::isRunning()) Runtime::current().registry().retain(string);
    return adopt(string);
}

std::string_view StringRef::bytes() const { return bytesOf(string_); }

std::uint32_t StringRef::encoding() const {
    return string_ ? string_->encoding : static_cast<std::uint32_t>(REALtextEncodingUTF8);
}

std::string StringRef::utf8() const {
    const std::string stored(bytes());
    const auto read = [&](std::uint32_t as) {
        return convertText(stored, as, REALtextEncodingUTF8).value_or(stored);
    };
    if (encoding() != REALtextEncodingNone) return read(encoding());
    const bool isUTF8 =
        convertText(stored, REALtextEncodingUTF8, REALtextEncodingUTF16).has_value();
    return isUTF8 ? stored : read(REALtextEncodingMacRoman);
}

std::string_view bytesOf(const REALstringStruct* string) {
    // A string that was released too often has lost its buffer.
    if (!string || !string->buffer) return {};
    return {string->buffer + 1, static_cast<std::size_t>(string->length)};
}

std::optional<std::string> convertText(std::string_view bytes, std::uint32_t from,
                                       std::uint32_t to) {
    if (from == to || bytes.empty() || (extendsASCII(from) && extendsASCII(to) && isASCII(bytes)))
        return std::string(bytes);
    if (bytes.size() > std::numeric_limits<std::int32_t>::max() / 8) return std::nullopt;
    const CFStringRef text =
        CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(bytes.data()),
                                static_cast<CFIndex>(bytes.size()), from, false);
    if (!text) return std::nullopt;
    const CFRange all = CFRangeMake(0, CFStringGetLength(text));
    CFIndex size = 0;
    std::optional<std::string> converted;
    if (CFStringGetBytes(text, all, to, 0, false, nullptr, 0, &size) == all.length) {
        converted.emplace(static_cast<std::size_t>(size), '\0');
        CFStringGetBytes(text, all, to, 0, false, reinterpret_cast<UInt8*>(converted->data()), size,
                         &size);
    }
    CFRelease(text);
    return converted;
}

} // namespace host
