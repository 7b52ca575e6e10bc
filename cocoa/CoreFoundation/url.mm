#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/pool.h"
#include "cocoa/CoreFoundation/retained.h"
#include "cocoa/CoreFoundation/type_ids.h"
#include "cocoa/CoreFoundation/url_text.h"

#include <Carbon/Files.h>
#include <CoreFoundation/CFURL.h>

#include <climits>
#include <cstring>
#include <unistd.h>
#include <vector>

using cocoa::Pool;
using cocoa::Retained;
using cocoa::URLParts;

namespace {

NSURL* urlOf(CFURLRef url) { return (NSURL*)url; }

std::string bytesOf(NSString* string) {
    const char* const characters = [string UTF8String];
    return characters ? characters : "";
}

/// Null when the bytes are not UTF-8.
CFStringRef newString(std::string_view bytes) {
    return CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(bytes.data()),
                                   static_cast<CFIndex>(bytes.size()), kCFStringEncodingUTF8,
                                   false);
}

/// Null unless the text is one of a URL.
CFURLRef newURL(const std::string& text, NSURL* base) {
    if (!cocoa::isURLText(text)) return nullptr;
    const auto string = Retained<CFStringRef>::adopt(newString(text));
    return (CFURLRef)[[NSURL alloc] initWithString:(NSString*)string.get() relativeToURL:base];
}

CFURLRef newFileURL(std::string path, bool isDirectory) {
    if (path.empty() || path.find('\0') != std::string::npos) return nullptr;
    if (path[0] != '/') {
        char folder[PATH_MAX];
        if (!getcwd(folder, sizeof folder)) return nullptr;
        path = std::string(folder) + "/" + path;
    }
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    if (isDirectory && path != "/") path.push_back('/');
    return newURL("file://" + cocoa::escapePath(path), nil);
}

/// The URL's own text with another path.
CFURLRef newURLWithPath(CFURLRef url, const URLParts& parts, const std::string& path) {
    return newURL(std::string(parts.beforePath) + path + std::string(parts.afterPath),
                  [urlOf(url) baseURL]);
}

std::string textOf(CFURLRef url) { return bytesOf([urlOf(url) relativeString]); }

/// The bytes of a file URL's path without a trailing slash; empty when there is none.
std::string filePathOf(CFURLRef url) {
    if (![urlOf(url) isFileURL]) return {};
    const std::string text = bytesOf([urlOf(url) absoluteString]);
    std::string path = cocoa::unescape(cocoa::splitURL(text).path).value_or("");
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

/// Where the extension starts in a component, at its dot; the component's end when it has none.
std::size_t extensionStart(std::string_view component) {
    const std::size_t dot = component.rfind('.');
    const bool isExtension =
        dot != std::string_view::npos && dot != 0 && dot + 1 < component.size();
    return isExtension ? dot : component.size();
}

} // namespace

CFTypeID CFURLGetTypeID(void) { return cocoa::typeOfURL; }

CFURLRef CFURLCreateWithString(CFAllocatorRef, CFStringRef string, CFURLRef baseURL) {
    if (!string || (!baseURL && CFStringGetLength(string) == 0)) return nullptr;
    const std::string text = bytesOf((NSString*)string);
    // A NUL in the middle would cut the text off.
    if (static_cast<CFIndex>(text.size()) < CFStringGetLength(string)) return nullptr;
    return newURL(text, urlOf(baseURL));
}

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle style,
                                       Boolean isDirectory) {
    if (!path || style != kCFURLPOSIXPathStyle) return nullptr;
    std::vector<char> bytes(
        static_cast<std::size_t>(CFStringGetMaximumSizeOfFileSystemRepresentation(path)));
    if (!CFStringGetFileSystemRepresentation(path, bytes.data(),
                                             static_cast<CFIndex>(bytes.size())))
        return nullptr;
    return newFileURL(bytes.data(), isDirectory);
}

CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef, const UInt8* bytes, CFIndex length,
                                                 Boolean isDirectory) {
    if (!bytes || length < 1) return nullptr;
    return newFileURL({reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)},
                      isDirectory);
}

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef* ref) {
    UInt8 path[PATH_MAX];
    FSCatalogInfo info;
    if (FSRefMakePath(ref, path, sizeof path) != noErr) return nullptr;
    if (FSGetCatalogInfo(ref, kFSCatInfoNodeFlags, &info, nullptr, nullptr, nullptr) != noErr)
        return nullptr;
    return newFileURL(reinterpret_cast<const char*>(path),
                      (info.nodeFlags & kFSNodeIsDirectoryMask) != 0);
}

Boolean CFURLGetFSRef(CFURLRef url, FSRef* ref) {
    if (!url || !ref) return false;
    const std::string path = filePathOf(url);
    return !path.empty() &&
           FSPathMakeRefWithOptions(reinterpret_cast<const UInt8*>(path.c_str()),
                                    kFSPathMakeRefDoNotFollowLeafSymlink, ref, nullptr) == noErr;
}

CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef url, CFStringRef component,
                                               Boolean isDirectory) {
    if (!url || !component) return nullptr;
    const std::string text = textOf(url);
    const URLParts parts = cocoa::splitURL(text);
    std::string path(parts.path);
    if (!path.ends_with('/')) path.push_back('/');
    path += cocoa::escapePath(bytesOf((NSString*)component));
    if (isDirectory && !path.ends_with('/')) path.push_back('/');
    return newURLWithPath(url, parts, path);
}

CFURLRef CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef, CFURLRef url) {
    if (!url) return nullptr;
    const std::string text = textOf(url);
    const URLParts parts = cocoa::splitURL(text);
    if (parts.path.empty()) return nullptr;
    std::string path(parts.path);
    const std::string_view last = cocoa::lastPathComponent(path);
    if (path == "/" || last == "..") {
        if (!path.ends_with('/')) path.push_back('/');
        path += "../";
    } else {
        path.erase(static_cast<std::size_t>(last.data() - path.data()));
        if (path.empty()) path = "./";
    }
    return newURLWithPath(url, parts, path);
}

CFURLRef CFURLCreateCopyAppendingPathExtension(CFAllocatorRef, CFURLRef url,
                                               CFStringRef extension) {
    if (!url || !extension) return nullptr;
    const std::string text = textOf(url);
    const URLParts parts = cocoa::splitURL(text);
    std::string path(parts.path);
    const bool endsWithSlash = path.size() > 1 && path.ends_with('/');
    if (endsWithSlash) path.pop_back();
    if (path.empty() || path == "/") return nullptr;
    path += "." + cocoa::escapePathComponent(bytesOf((NSString*)extension));
    if (endsWithSlash) path.push_back('/');
    return newURLWithPath(url, parts, path);
}

CFURLRef CFURLCreateCopyDeletingPathExtension(CFAllocatorRef, CFURLRef url) {
    if (!url) return nullptr;
    const std::string text = textOf(url);
    const URLParts parts = cocoa::splitURL(text);
    std::string path(parts.path);
    const std::string_view last = cocoa::lastPathComponent(path);
    const auto start = static_cast<std::size_t>(last.data() - path.data());
    const std::size_t cut = extensionStart(last);
    path.erase(start + cut, last.size() - cut);
    return newURLWithPath(url, parts, path);
}

CFStringRef CFURLCopyLastPathComponent(CFURLRef url) {
    if (!url) return nullptr;
    const std::string text = bytesOf([urlOf(url) absoluteString]);
    const auto bytes = cocoa::unescape(cocoa::lastPathComponent(cocoa::splitURL(text).path));
    return bytes ? newString(*bytes) : nullptr;
}

CFStringRef CFURLCopyPathExtension(CFURLRef url) {
    const auto last = Retained<CFStringRef>::adopt(CFURLCopyLastPathComponent(url));
    const std::string component = bytesOf((NSString*)last.get());
    const std::size_t start = extensionStart(component);
    return start < component.size() ? newString(std::string_view(component).substr(start + 1))
                                    : nullptr;
}

CFStringRef CFURLGetString(CFURLRef url) { return (CFStringRef)[urlOf(url) relativeString]; }

CFURLRef CFURLGetBaseURL(CFURLRef url) { return (CFURLRef)[urlOf(url) baseURL]; }

CFURLRef CFURLCopyAbsoluteURL(CFURLRef url) { return (CFURLRef)[[urlOf(url) absoluteURL] retain]; }

CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style) {
    if (!url || style != kCFURLPOSIXPathStyle) return nullptr;
    const std::string text = textOf(url);
    std::optional<std::string> path = cocoa::unescape(cocoa::splitURL(text).path);
    if (!path) return nullptr;
    while (path->size() > 1 && path->back() == '/')
        path->pop_back();
    return newString(*path);
}

CFStringRef CFURLCopyPath(CFURLRef url) {
    if (!url) return nullptr;
    const std::string text = textOf(url);
    return newString(cocoa::splitURL(text).path);
}

CFStringRef CFURLCopyScheme(CFURLRef url) { return (CFStringRef)[[urlOf(url) scheme] copy]; }

CFStringRef CFURLCopyHostName(CFURLRef url) {
    NSString* const host = [urlOf(url) host];
    return [host length] ? (CFStringRef)[host copy] : nullptr;
}

Boolean CFURLHasDirectoryPath(CFURLRef url) {
    const std::string text = textOf(url);
    const std::string_view path = cocoa::splitURL(text).path;
    const std::string_view last = cocoa::lastPathComponent(path);
    return path.ends_with('/') || last == "." || last == "..";
}

Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean resolveAgainstBase, UInt8* buffer,
                                         CFIndex bufferSize) {
    if (!url || !buffer || bufferSize < 1) return false;
    const Pool pool;
    std::string path;
    if (resolveAgainstBase || ![urlOf(url) baseURL]) {
        path = filePathOf(url);
    } else {
        const std::string text = textOf(url);
        path = cocoa::unescape(cocoa::splitURL(text).path).value_or("");
    }
    if (path.empty() || static_cast<CFIndex>(path.size()) >= bufferSize) return false;
    std::memcpy(buffer, path.c_str(), path.size() + 1);
    return true;
}
