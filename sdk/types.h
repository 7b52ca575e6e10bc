#pragma once

/// The host's value types as a plug-in sees them.
///
/// A host record is measured in machine words: 32 bits on the i386 hosts that the interface was
/// made for, 64 bits on a 64-bit host. What is fixed in bits (counts, sizes, encodings) has a
/// fixed-width type here.

#include <cstddef>
#include <cstdint>

/// The host's `Integer`, and the unit of every host record.
using REALword = std::intptr_t;

/// The head of every host object. Only the host reads it; the class data of the object's root class
/// follows it at once, those of its subclasses behind that.
struct REALobjectStruct {
    REALword hostWords[4];
};

/// Host types that are objects: reference-counted with REALLockObject and REALUnlockObject.
struct REALpictureStruct : REALobjectStruct {};
struct REALgraphicsStruct : REALobjectStruct {};
struct REALmemoryBlockStruct : REALobjectStruct {};
struct REALfolderItemStruct : REALobjectStruct {};
struct REALdictionaryStruct : REALobjectStruct {};
struct REALdateStruct : REALobjectStruct {};

/// A one-dimensional array. On hosts up to version 2013.9 an array may carry its element getter, a
/// function of the same shape as the one of RuntimeArrayDirectGetGetProc, or else null; on later
/// hosts the word means nothing to a plug-in.
struct REALarrayStruct : REALobjectStruct {
    void* elementGetter;
};

/// A reference to a host class, as the host looks it up by name. Never owned.
struct REALclassStruct;
using REALclassRef = const REALclassStruct*;

/// A host string, reference-counted with REALLockString and REALUnlockString. The empty string is a
/// null pointer. Hosts older than 2013.0 are read in place: the text starts one byte after `buffer`
/// (the first byte is a length byte of no use), is `length` bytes long and ends with a NUL.
struct REALstringStruct {
    REALword useCount;
    char* buffer;
    REALword bufferSize;
    std::int32_t length;
    std::uint32_t encoding;
};

/// A string's bytes as PluginGetStringData hands them out: followed by four zero bytes, owned by
/// whoever holds the record, given back with PluginDisposeStringData. The bytes come from `malloc`:
/// where a host lacks that service, `free` gives them back.
struct REALstringData {
    void* data;
    std::uint32_t length;
    std::uint32_t encoding;
};

/// A Picture's pixels while its description is locked. `type` says what `data` is.
struct REALpictureDescription {
    std::uint32_t type;
    void* data;
    std::int32_t width;
    std::int32_t height;
    REALword hostFields[6];
};

enum REALpictureType : std::uint32_t {
    REALpictureCGBitmapContext = 8, ///< `data` is a CGContextRef
    REALpictureGDImage = 10,        ///< `data` is a gd image
};

/// The host's text encodings, numbered as Core Foundation numbers them.
enum REALtextEncoding : std::uint32_t {
    REALtextEncodingMacRoman = 0,
    REALtextEncodingUTF16 = 0x00000100,
    REALtextEncodingASCII = 0x00000600,
    REALtextEncodingUTF8 = 0x08000100,
    /// As a string's encoding: bytes of no known encoding. As a request: the bytes as they are.
    REALtextEncodingNone = 0xFFFF,
};

/// Element kinds of RuntimeArrayCreateSingleDimBoundedArray.
enum REALarrayElementType : std::int32_t {
    REALarrayOfStrings = 3,
    REALarrayOfObjects = 4,
};

/// What RuntimeArrayDirectGetInsertProc returns for arrays of strings and of objects. The array
/// takes a reference of its own to the element.
using REALarrayInsertString = void (*)(REALarrayStruct* array, std::int32_t index,
                                       REALstringStruct* element);
using REALarrayInsertObject = void (*)(REALarrayStruct* array, std::int32_t index,
                                       REALobjectStruct* element);

/// What RuntimeArrayDirectGetGetProc returns. Elements pass as the kind that the array's VarType
/// names, unsigned integers as std::int64_t. A string or an object carries a reference for the
/// caller.
template <typename Element>
using REALarrayGet = Element (*)(REALarrayStruct* array, std::int32_t index);

/// The class data of an object whose class has no superclass; sibling plug-in parts reach each
/// other's data this way.
inline void* REALfirstClassData(REALobjectStruct* object) { return object + 1; }
