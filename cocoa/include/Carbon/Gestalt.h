#pragma once

/// What the system is.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

enum {
    gestaltSystemVersion = 'sysv',      ///< binary-coded decimal: 0x1068 for 10.6.8
    gestaltSystemVersionMajor = 'sys1', ///< 10
    gestaltSystemVersionMinor = 'sys2', ///< 6
    gestaltSystemVersionBugFix = 'sys3' ///< 8
};

/// Answers about the system. The version that it reports is 10.9.5, unless the environment variable
/// COCOA_SYSTEM_VERSION holds another one ("10.6", "10.6.8") at the time of the call.
/// gestaltUndefSelectorErr, with nothing written, for an unknown selector; paramErr for a null
/// response.
CF_EXPORT OSErr Gestalt(OSType selector, SInt32* response);

CF_EXTERN_C_END
