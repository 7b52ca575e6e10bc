#pragma once

/// Host strings and Core Foundation strings. Null is the host's empty string. Every string given to
/// the host is UTF-8 and tagged so. A host string of no known encoding is read as Mac Roman.
/// Nothing here raises.

#include "plugin/entry/references.h"

#ifdef __OBJC__
#include <Cocoa/Cocoa.h>
#endif

/// A new string for the caller; null for a null host string, or when nothing could be made.
CFStringRef RBString2CFString(REALstringStruct* string);

/// A new host string for the caller; null for a null, empty or unconvertible string. Text behind an
/// embedded NUL is dropped.
REALstringStruct* CFString2RBString(CFStringRef string);

#ifdef __OBJC__
/// As RBString2CFString, autoreleased.
inline NSString* NewNSString(REALstringStruct* string) {
    return [(NSString*)RBString2CFString(string) autorelease];
}
#endif

/// The bytes of a host string as they are stored, for as long as this lives. Newer hosts copy them
/// out; in older ones the string is locked and read in place.
class StringBytes {
public:
    explicit StringBytes(REALstringStruct* string);

    /// NUL-terminated; null when the host could not tell.
    const char* data() const { return data_; }
    std::size_t size() const { return size_; }

private:
    StringData record_;
    HostString locked_;
    const char* data_ = nullptr;
    std::size_t size_ = 0;
};
