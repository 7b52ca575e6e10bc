#include "host/objects/runtime.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"
#include "host/services/services.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstdlib>

namespace host::exports {

namespace {

Registry& registry() { return Runtime::current().registry(); }

} // namespace

REALstringStruct* buildString(const char* bytes, std::int32_t count) {
    if (count < 0) {
        Runtime::current().reportMisuse("argument 2: a negative count");
        return nullptr;
    }
    if (count == 0 || !arguments::isGiven(1, bytes)) return nullptr;
    return registry().makeString({bytes, static_cast<std::size_t>(count)}, REALtextEncodingNone);
}

void lockString(REALstringStruct* string) {
    if (string && arguments::isString(1, string)) registry().retain(string);
}

void unlockString(REALstringStruct* string) {
    if (string && arguments::isString(1, string)) registry().release(string);
}

std::uint32_t getStringEncoding(REALstringStruct* string) {
    if (!string || !arguments::isString(1, string)) return REALtextEncodingNone;
    return string->encoding;
}

void setStringEncoding(REALstringStruct* string, std::uint32_t encoding) {
    if (string && arguments::isString(1, string)) string->encoding = encoding;
}

REALstringStruct* convertString(REALstringStruct* string, std::uint32_t encoding) {
    if (!string || !arguments::isString(1, string)) return nullptr;
    // Bytes of no known encoding cannot be converted; they take on what the caller says they are.
    const bool retagged =
        string->encoding == REALtextEncodingNone || encoding == REALtextEncodingNone;
    const auto converted =
        convertText(bytesOf(string), retagged ? encoding : string->encoding, encoding);
    return converted ? registry().makeString(*converted, encoding) : nullptr;
}

CFStringRef getStringCFString(REALstringStruct* string, std::uint8_t) {
    if (!string || !arguments::isString(1, string)) return nullptr;
    const std::uint32_t encoding = string->encoding == REALtextEncodingNone
                                       ? static_cast<std::uint32_t>(REALtextEncodingMacRoman)
                                       : string->encoding;
    return CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(string->buffer + 1),
                                   string->length, encoding, false);
}

std::uint8_t getStringData(REALstringStruct* string, std::uint32_t encoding, REALstringData* data) {
    if (!arguments::isText(1, string) || !arguments::isGiven(3, data)) return 0;
    const bool asItIs = encoding == REALtextEncodingNone;
    const std::uint32_t own = getStringEncoding(string);
    const bool convertible = !asItIs && own != REALtextEncodingNone;
    const auto bytes = convertText(bytesOf(string), convertible ? own : encoding, encoding);
    if (!bytes) return 0;
    void* const buffer =
        registry().makeBuffer(*bytes, Services::isOffered(REALservices::DisposeStringData.name));
    if (!buffer) return 0;
    *data = {buffer, static_cast<std::uint32_t>(bytes->size()), asItIs ? own : encoding};
    return 1;
}

void disposeStringData(REALstringData* data) {
    if (!arguments::isGiven(1, data)) return;
    if (registry().freeBuffer(data->data)) {
        *data = {};
    } else if (!Services::isOffered(REALservices::GetStringData.name)) {
        // A plug-in that is handed no copies makes them itself, by malloc.
        std::free(data->data);
        *data = {};
    } else {
        Runtime::current().reportMisuse("argument 1: data that this host did not hand out");
    }
}

const char* stringGetCString(REALstringStruct* string) {
    if (!string || !arguments::isString(1, string)) return "";
    return string->buffer + 1;
}

} // namespace host::exports
