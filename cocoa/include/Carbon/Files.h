#pragma once

/// References to files and folders.
///
/// All of the file system is one volume, whose root folder has the node ID 2. Names are exchanged
/// as UTF-16 in normalisation form D and meet file names of any form. As on a Mac, a "/" in such a
/// name is a ":" in a path and the other way round.

#include <Carbon/MacErrors.h>
#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

/// An item that exists. Plain bytes: it may be copied, and needs no release. The bytes mean nothing
/// outside of the process. A reference to a path longer than its bytes can hold is kept in a table
/// of the latest few thousand of such paths; one that has dropped out, like any bytes that are no
/// reference, answers errFSBadFSRef.
struct FSRef {
    UInt8 hidden[80];
};
typedef struct FSRef FSRef;
typedef FSRef* FSRefPtr;

/// A name of an item, of at most 255 UTF-16 units.
struct HFSUniStr255 {
    UInt16 length;
    UniChar unicode[255];
};
typedef struct HFSUniStr255 HFSUniStr255;
typedef const HFSUniStr255* ConstHFSUniStr255Param;

typedef SInt16 FSVolumeRefNum;
typedef Str63 StrFileName;

#pragma pack(push, 2)

/// An item by its folder's ID and its name in Mac Roman. A name that does not fit is shortened and
/// ends with the item's ID ("Long na#1A2B.png").
struct FSSpec {
    FSVolumeRefNum vRefNum;
    SInt32 parID;
    StrFileName name;
};
typedef struct FSSpec FSSpec;

typedef struct UTCDateTime {
    UInt16 highSeconds;
    UInt32 lowSeconds;
    UInt16 fraction;
} UTCDateTime;

struct FSPermissionInfo {
    UInt32 userID;
    UInt32 groupID;
    UInt8 reserved1;
    UInt8 userAccess;
    UInt16 mode;
    UInt32 fileSec;
};
typedef struct FSPermissionInfo FSPermissionInfo;

typedef struct FSCatalogInfo {
    UInt16 nodeFlags; ///< kFSNodeIsDirectoryMask
    FSVolumeRefNum volume;
    UInt32 parentDirID; ///< 1 for the root folder
    UInt32 nodeID;      ///< 2 for the root folder
    UInt8 sharingFlags;
    UInt8 userPrivileges;
    UInt8 reserved1;
    UInt8 reserved2;
    UTCDateTime createDate; ///< seconds since 1904-01-01 00:00 UTC
    UTCDateTime contentModDate;
    UTCDateTime attributeModDate;
    UTCDateTime accessDate;
    UTCDateTime backupDate;
    FSPermissionInfo permissions;
    UInt8 finderInfo[16];
    UInt8 extFinderInfo[16];
    UInt64 dataLogicalSize; ///< bytes
    UInt64 dataPhysicalSize;
    UInt64 rsrcLogicalSize;
    UInt64 rsrcPhysicalSize;
    UInt32 valence; ///< items in a folder
    UInt32 textEncodingHint;
} FSCatalogInfo;

#pragma pack(pop)

enum { fsRtParID = 1, fsRtDirID = 2 };

enum { kFSNodeIsDirectoryMask = 0x0010 };

/// What FSGetCatalogInfo is asked for.
enum {
    kFSCatInfoNone = 0x00000000,
    kFSCatInfoTextEncoding = 0x00000001,
    kFSCatInfoNodeFlags = 0x00000002,
    kFSCatInfoVolume = 0x00000004,
    kFSCatInfoParentDirID = 0x00000008,
    kFSCatInfoNodeID = 0x00000010,
    kFSCatInfoCreateDate = 0x00000020,
    kFSCatInfoContentMod = 0x00000040,
    kFSCatInfoAttrMod = 0x00000080,
    kFSCatInfoAccessDate = 0x00000100,
    kFSCatInfoBackupDate = 0x00000200,
    kFSCatInfoPermissions = 0x00000400,
    kFSCatInfoFinderInfo = 0x00000800,
    kFSCatInfoFinderXInfo = 0x00001000,
    kFSCatInfoValence = 0x00002000,
    kFSCatInfoDataSizes = 0x00004000,
    kFSCatInfoRsrcSizes = 0x00008000,
    kFSCatInfoGettableInfo = 0x0003FFFF
};
typedef UInt32 FSCatalogInfoBitmap;

/// Path in UTF-8. fnfErr when there is no such item. A symbolic link at the end is followed.
/// `isDirectory` may be null.
CF_EXPORT OSStatus FSPathMakeRef(const UInt8* path, FSRef* ref, Boolean* isDirectory);

enum { kFSPathMakeRefDefaultOptions = 0, kFSPathMakeRefDoNotFollowLeafSymlink = 1 };
CF_EXPORT OSStatus FSPathMakeRefWithOptions(const UInt8* path, OptionBits options, FSRef* ref,
                                            Boolean* isDirectory);

/// The path with its terminator. pathTooLongErr when it does not fit; fnfErr when the item is gone.
CF_EXPORT OSStatus FSRefMakePath(const FSRef* ref, UInt8* path, UInt32 maximumPathSize);

/// Tells what is asked for; every pointer but the first may be null. The parent of the root folder
/// is a reference of zeros, which refers to nothing.
CF_EXPORT OSErr FSGetCatalogInfo(const FSRef* ref, FSCatalogInfoBitmap whichInfo,
                                 FSCatalogInfo* catalogInfo, HFSUniStr255* outName, FSSpec* fsSpec,
                                 FSRef* parentRef);

/// An existing item of a folder. `textEncodingHint` is not needed here.
CF_EXPORT OSErr FSMakeFSRefUnicode(const FSRef* parentRef, UniCharCount nameLength,
                                   const UniChar* name, UInt32 textEncodingHint, FSRef* newRef);
/// noErr when both refer to the same item, errFSRefsDifferent when not.
CF_EXPORT OSErr FSCompareFSRefs(const FSRef* first, const FSRef* second);

/// The reference of the item that an FSSpec names; fnfErr when there is none.
CF_EXPORT OSErr FSpMakeFSRef(const FSSpec* source, FSRef* newRef);

CF_EXTERN_C_END
