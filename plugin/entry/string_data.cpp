#include "plugin/entry/host_services.h"
#include "plugin/entry/references.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

using LenBFunction = REALword (*)(REALstringStruct*);

/// The host language's own LenB; null when the host does not offer it.
LenBFunction load_LenB() {
    static LenBFunction function = nullptr;
    if (!function)
        function = reinterpret_cast<LenBFunction>(
            REALLoadFrameworkMethod(nullptr, "LenB( s as string ) as integer"));
    return function;
}

/// What reads a string's bytes on a host that does not copy them out itself.
struct ByteReader {
    decltype(REALservices::StringGetCString)::Function* bytes;
    LenBFunction length;

    /// A copy with four zero bytes behind it and room for at least `capacity` bytes.
    bool copy(REALstringStruct* string, std::size_t capacity, REALstringData& data) const {
        constexpr std::size_t terminatorSize = 4;
        const auto count = static_cast<std::size_t>(std::max<REALword>(length(string), 0));
        const char* const source = bytes(string);
        auto* const buffer =
            static_cast<char*>(std::malloc(std::max(capacity, count) + terminatorSize));
        if (!buffer || (!source && count > 0)) {
            std::free(buffer);
            return false;
        }
        if (count > 0) std::memcpy(buffer, source, count);
        std::memset(buffer + count, 0, terminatorSize);
        data.data = buffer;
        data.length = static_cast<std::uint32_t>(count);
        return true;
    }
};

bool copy_string_data(const ByteReader& reader, REALstringStruct* string, std::uint32_t encoding,
                      REALstringData& data) {
    if (encoding == REALtextEncodingNone) return reader.copy(string, data.length, data);
    if (encoding == REALGetStringEncoding(string)) return reader.copy(string, 0, data);
    const HostString converted = HostString::adopt(REALConvertString(string, encoding));
    return converted && reader.copy(converted.get(), 0, data);
}

} // namespace

bool REALGetStringData(REALstringStruct* string, std::uint32_t encoding, REALstringData* data) {
    static constinit HostService<REALservices::GetStringData> getStringData;
    static constinit HostService<REALservices::StringGetCString> getCString;

    if (auto* const copy = getStringData.resolve()) return copy(string, encoding, data) != 0;

    const ByteReader reader{getCString.resolve(), load_LenB()};
    if (!reader.bytes || !reader.length || !string) return false;
    if (!copy_string_data(reader, string, encoding, *data)) return false;
    data->encoding = encoding;
    return true;
}
