#pragma once

/// What the suites of Foundation, Core Foundation and Carbon share.

#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/retained.h"
#include "support/temporary_folder.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

/// Runs a test inside an autorelease pool.
class InPool : public testing::Test {
protected:
    InPool()
        : pool([[NSAutoreleasePool alloc] init]) {}
    ~InPool() override { [pool release]; }

private:
    NSAutoreleasePool* pool;
};

using String = cocoa::Retained<CFStringRef>;
using MutableString = cocoa::Retained<CFMutableStringRef>;
using URL = cocoa::Retained<CFURLRef>;

/// The name of the NSException that the work raises; empty when it raises none.
template <typename Work>
std::string raisedBy(Work work) {
    @try {
        work();
    } @catch (NSException* exception) {
        return [[exception name] UTF8String];
    }
    return {};
}

inline String string(std::string_view utf8) {
    return String::adopt(
        CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(utf8.data()),
                                static_cast<CFIndex>(utf8.size()), kCFStringEncodingUTF8, false));
}

inline String string16(std::u16string_view units) {
    return String::adopt(
        CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar*>(units.data()),
                                     static_cast<CFIndex>(units.size())));
}

/// UTF-8; "(null)" for none.
inline std::string text(CFStringRef string) {
    return string ? [(NSString*)string UTF8String] : "(null)";
}

inline std::string text(const String& string) { return text(string.get()); }

inline std::u16string units(CFStringRef string) {
    std::u16string result(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
    CFStringGetCharacters(string, CFRangeMake(0, CFStringGetLength(string)),
                          reinterpret_cast<UniChar*>(result.data()));
    return result;
}
