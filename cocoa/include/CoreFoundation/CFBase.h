#pragma once

/// The types that every Core Foundation header builds on. C, C++ and Objective-C.

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
#define CF_EXTERN_C_BEGIN extern "C" {
#define CF_EXTERN_C_END }
#else
#define CF_EXTERN_C_BEGIN
#define CF_EXTERN_C_END
#endif

/// What the frameworks export. Everything else in the library is hidden.
#define CF_EXPORT extern __attribute__((visibility("default")))

#ifdef __OBJC__
#define CF_OBJC_CLASS __attribute__((visibility("default")))
#endif

CF_EXTERN_C_BEGIN

typedef uint8_t UInt8;
typedef int8_t SInt8;
typedef uint16_t UInt16;
typedef int16_t SInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef uint64_t UInt64;
typedef int64_t SInt64;
typedef float Float32;
typedef double Float64;
typedef unsigned char Boolean;
typedef UInt16 UniChar;
typedef unsigned long UniCharCount;
typedef UInt32 UTF32Char;
typedef SInt16 OSErr;
typedef SInt32 OSStatus;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef UInt32 OptionBits;
typedef unsigned char* StringPtr;
typedef const unsigned char* ConstStringPtr;
typedef unsigned char Str255[256];
typedef unsigned char Str63[64];

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

// Foundation defines the same type under the same guard.
#if !defined(CGFLOAT_DEFINED)
#if defined(__LP64__) && __LP64__
typedef double CGFloat;
#define CGFLOAT_IS_DBL 1
#define CGFLOAT_MIN __DBL_MIN__
#define CGFLOAT_MAX __DBL_MAX__
#else
typedef float CGFloat;
#define CGFLOAT_IS_DBL 0
#define CGFLOAT_MIN __FLT_MIN__
#define CGFLOAT_MAX __FLT_MAX__
#endif
#define CGFLOAT_DEFINED 1
#endif

/// Counts and positions are signed, as wide as a pointer.
typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFHashCode;
typedef unsigned long CFOptionFlags;

/// Any Core Foundation object. Every one of them is an Objective-C object too, so that it can be
/// sent messages, and the toll-free types are the Foundation classes themselves.
typedef const void* CFTypeRef;

typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef struct __CFString* CFMutableStringRef;
typedef const struct __CFData* CFDataRef;
typedef struct __CFData* CFMutableDataRef;
typedef const struct __CFArray* CFArrayRef;
typedef struct __CFArray* CFMutableArrayRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef struct __CFDictionary* CFMutableDictionaryRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFBoolean* CFBooleanRef;
typedef const struct __CFDate* CFDateRef;
typedef const struct __CFURL* CFURLRef;
typedef const struct __CFNull* CFNullRef;

typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

static inline CFRange CFRangeMake(CFIndex location, CFIndex length) {
    CFRange range = {location, length};
    return range;
}

enum { kCFNotFound = -1 };

typedef enum {
    kCFCompareLessThan = -1,
    kCFCompareEqualTo = 0,
    kCFCompareGreaterThan = 1
} CFComparisonResult;

/// Tokens that say where memory comes from, not objects: never retained nor released. Objects are
/// always allocated by the Objective-C runtime; an allocator matters where a function takes over a
/// buffer ("NoCopy"): kCFAllocatorNull leaves the buffer to the caller, every other one frees it
/// with `free` when the object goes.
CF_EXPORT const CFAllocatorRef kCFAllocatorDefault;
CF_EXPORT const CFAllocatorRef kCFAllocatorSystemDefault;
CF_EXPORT const CFAllocatorRef kCFAllocatorMalloc;
CF_EXPORT const CFAllocatorRef kCFAllocatorNull;

/// Adds a reference and returns the object. The object must not be null.
CF_EXPORT CFTypeRef CFRetain(CFTypeRef object);
/// Gives a reference back. The object must not be null.
CF_EXPORT void CFRelease(CFTypeRef object);
CF_EXPORT CFIndex CFGetRetainCount(CFTypeRef object);

/// Value equality. Null equals only null.
CF_EXPORT Boolean CFEqual(CFTypeRef first, CFTypeRef second);
CF_EXPORT CFHashCode CFHash(CFTypeRef object);

/// The type of an object; 0 for an Objective-C object of no Core Foundation type.
CF_EXPORT CFTypeID CFGetTypeID(CFTypeRef object);

/// A description for people. The caller owns the string.
CF_EXPORT CFStringRef CFCopyDescription(CFTypeRef object);

/// The null object, which stands for nothing in a collection.
#define kCFNull (CFNullGetSharedInstance())
CF_EXPORT CFNullRef CFNullGetSharedInstance(void);
CF_EXPORT CFTypeID CFNullGetTypeID(void);

CF_EXTERN_C_END
