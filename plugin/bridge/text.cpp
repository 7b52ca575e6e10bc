#include "plugin/bridge/text.h"

#include "plugin/bridge/string_layout.h"
#include "sdk/registration.h"

#include <cstring>
#include <new>

namespace {

constexpr double firstHostWithStringData = 2012.0;

} // namespace

const char* rbText::GetUTF8() {
    if (!isComputed_) {
        isComputed_ = true;
        if (source_) view_ = view_of_source();
    }
    return view_.text;
}

rbText::View rbText::view_of_source() {
    if (!isUTF8_)
        return terminated(rbversion < firstHostWithStringData
                              ? converted_by_host()
                              : copied_by_host(REALtextEncodingUTF8));
    if (rbversion >= firstHostWithStringData) return copied_by_host(REALtextEncodingNone);
    const StoredText stored = stored_text(source_.get());
    return stored.data ? View{stored.data, stored.size} : empty;
}

rbText::View rbText::converted_by_host() {
    converted_ = HostString::adopt(REALConvertString(source_.get(), REALtextEncodingUTF8));
    const StoredText stored = converted_ ? stored_text(converted_.get()) : StoredText{nullptr, 0};
    if (stored.data) return {stored.data, stored.size};
    conversionFailed_ = true;
    return empty;
}

rbText::View rbText::copied_by_host(std::uint32_t encoding) {
    if (record_.fill(source_.get(), encoding) && record_.bytes())
        return {record_.bytes(), record_.length()};
    conversionFailed_ = true;
    return empty;
}

rbText::View rbText::terminated(View view) {
    if (view.text[view.length] == 0) return view;
    constexpr std::size_t terminatorSize = 4;
    constexpr std::size_t longestCopy = 0x7FFFFFFF;
    const std::size_t size = view.length + terminatorSize;
    if (size <= longestCopy) terminatedCopy_.reset(new (std::nothrow) char[size]());
    if (!terminatedCopy_) return empty;
    std::memcpy(terminatedCopy_.get(), view.text, view.length);
    return {terminatedCopy_.get(), view.length};
}
