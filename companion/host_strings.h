#pragma once

#include "companion/host_services.h"

#include <CoreFoundation/CoreFoundation.h>

/// A host string in UTF-8; none for null and for empty text, and when the host makes none. Half a
/// surrogate pair becomes a question mark.
HostString newHostString(CFStringRef text);

/// The text of an argument, autoreleased; empty for null and when the host does not tell it.
CFStringRef textOf(REALstringStruct* string);
