#pragma once

#include "plugin/entry/references.h"

#include <memory>

/// A host string's text as NUL-terminated UTF-8, converted when it is first asked for.
class rbText {
public:
    /// Keeps a reference to `source`, which may be null. `isUTF8` spares the conversion of text
    /// that is known to be UTF-8.
    explicit rbText(REALstringStruct* source, bool isUTF8 = false)
        : source_(HostString::retain(source))
        , isUTF8_(isUTF8) {}

    /// Never null; an empty text when there is none or it could not be converted. Valid as long as
    /// this holder lives.
    const char* GetUTF8();

    bool conversion_failed() const { return conversionFailed_; }

private:
    struct View {
        const char* text;
        std::size_t length; ///< bytes
    };

    View view_of_source();
    View converted_by_host();
    View copied_by_host(std::uint32_t encoding);
    View terminated(View view);

    HostString source_;
    bool isUTF8_;
    bool conversionFailed_ = false;
    bool isComputed_ = false;
    View view_ = empty;

    // What the view points into.
    HostString converted_;
    StringData record_;
    std::unique_ptr<char[]> terminatedCopy_;

    static constexpr View empty{"", 0};
};
