#pragma once

/// The system's own folders.

#include <Carbon/Files.h>

CF_EXTERN_C_BEGIN

enum { kSystemDomain = -32766 };

enum { kFrameworksFolderType = 'fram' };

/// The folder of the kind: for the system's frameworks /System/Library/Frameworks, unless the
/// environment variable COCOA_FRAMEWORKS_FOLDER names another one. fnfErr when it is not there (it
/// is never made, whatever `createFolder` says) and for kinds that do not exist here; paramErr for
/// a null reference.
CF_EXPORT OSErr FSFindFolder(FSVolumeRefNum volume, OSType folderType, Boolean createFolder,
                             FSRef* foundRef);

CF_EXTERN_C_END
