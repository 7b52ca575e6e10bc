#pragma once

/// URLs. CFURLRef is NSURL*.
///
/// Functions with Create or Copy in their names return an object that the caller owns, or null.

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFData.h>
#include <CoreFoundation/CFString.h>

struct FSRef;

CF_EXTERN_C_BEGIN

typedef CFIndex CFURLPathStyle;
enum { kCFURLPOSIXPathStyle = 0, kCFURLHFSPathStyle = 1, kCFURLWindowsPathStyle = 2 };

CF_EXPORT CFTypeID CFURLGetTypeID(void);

/// Null for an empty string without a base, and for a string with characters that no URL has.
CF_EXPORT CFURLRef CFURLCreateWithString(CFAllocatorRef allocator, CFStringRef string,
                                         CFURLRef baseURL);
/// Null for an empty path and for styles other than POSIX. A relative path is taken from the
/// current folder.
CF_EXPORT CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path,
                                                 CFURLPathStyle style, Boolean isDirectory);
/// The bytes of a path, which need not be UTF-8.
CF_EXPORT CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef allocator,
                                                           const UInt8* bytes, CFIndex length,
                                                           Boolean isDirectory);
/// Null when the reference is not one of an existing item.
CF_EXPORT CFURLRef CFURLCreateFromFSRef(CFAllocatorRef allocator, const struct FSRef* ref);
/// False unless the URL is a file URL of an existing item. A symbolic link is referred to itself.
CF_EXPORT Boolean CFURLGetFSRef(CFURLRef url, struct FSRef* ref);

CF_EXPORT CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef allocator, CFURLRef url,
                                                         CFStringRef component,
                                                         Boolean isDirectory);
/// The result ends with a slash. The parent of the root is "/../".
CF_EXPORT CFURLRef CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef allocator, CFURLRef url);
CF_EXPORT CFURLRef CFURLCreateCopyAppendingPathExtension(CFAllocatorRef allocator, CFURLRef url,
                                                         CFStringRef extension);
CF_EXPORT CFURLRef CFURLCreateCopyDeletingPathExtension(CFAllocatorRef allocator, CFURLRef url);
/// Without percent escapes. "/" for the root; empty when there is no path.
CF_EXPORT CFStringRef CFURLCopyLastPathComponent(CFURLRef url);
/// Null when the last component has no extension.
CF_EXPORT CFStringRef CFURLCopyPathExtension(CFURLRef url);

/// The string that the URL was made from, without its base.
CF_EXPORT CFStringRef CFURLGetString(CFURLRef url);
CF_EXPORT CFURLRef CFURLGetBaseURL(CFURLRef url);
CF_EXPORT CFURLRef CFURLCopyAbsoluteURL(CFURLRef url);
/// The path as a file system takes it, without percent escapes and without a trailing slash. Null
/// for styles other than POSIX, and when the path is not UTF-8.
CF_EXPORT CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style);
/// The path with its percent escapes.
CF_EXPORT CFStringRef CFURLCopyPath(CFURLRef url);
CF_EXPORT CFStringRef CFURLCopyScheme(CFURLRef url);
CF_EXPORT CFStringRef CFURLCopyHostName(CFURLRef url);
CF_EXPORT Boolean CFURLHasDirectoryPath(CFURLRef url);
/// False when the buffer is too small or the URL is not of a file. Never writes past `bufferSize`.
CF_EXPORT Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean resolveAgainstBase,
                                                   UInt8* buffer, CFIndex bufferSize);

CF_EXTERN_C_END
