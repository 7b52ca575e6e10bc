#pragma once

/// Icons by handle.

#include <Carbon/Files.h>
#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

/// A counted handle of a registered icon. It is never looked into, so that any value may be passed:
/// one that is no icon answers invalidIconRefErr.
typedef struct OpaqueIconRef* IconRef;

enum { kOnSystemDisk = -32768, kSystemIconsCreator = 'macs' };

/// Registers an icon file (.icns) under a creator and a type, in the place of an earlier one.
/// `icon` has one reference, which the caller releases; the registration holds another.
/// noSuchIconErr when the file is no icon file.
CF_EXPORT OSStatus RegisterIconRefFromFSRef(OSType creator, OSType iconType, const FSRef* iconFile,
                                            IconRef* icon);
/// Ends a registration; handles that are held stay valid.
CF_EXPORT OSStatus UnregisterIconRef(OSType creator, OSType iconType);

/// A registered icon, with one reference for the caller; noSuchIconErr when there is none.
CF_EXPORT OSErr GetIconRef(SInt16 volume, OSType creator, OSType iconType, IconRef* icon);
CF_EXPORT OSErr AcquireIconRef(IconRef icon);
CF_EXPORT OSErr ReleaseIconRef(IconRef icon);
CF_EXPORT OSErr GetIconRefOwners(IconRef icon, UInt16* owners);
CF_EXPORT Boolean IsValidIconRef(IconRef icon);

CF_EXTERN_C_END
