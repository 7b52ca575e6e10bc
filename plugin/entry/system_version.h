#pragma once

/// The version of the system that the plug-in runs on.

#include <Carbon/Carbon.h>

/// Whether it is Mac OS X 10.`minor` or later; false when the system does not tell.
inline bool system_is_at_least_10(SInt32 minor) {
    SInt32 reportedMajor = 0;
    SInt32 reportedMinor = 0;
    return Gestalt(gestaltSystemVersionMajor, &reportedMajor) == noErr &&
           Gestalt(gestaltSystemVersionMinor, &reportedMinor) == noErr && reportedMajor >= 10 &&
           reportedMinor >= minor;
}
