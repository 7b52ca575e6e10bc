#pragma once

#include "companion/host_services.h"

#include <CoreFoundation/CoreFoundation.h>

/// A host string in UTF-8; none for null and for empty text, and when the host makes none. Half a
/// surrogate pair becomes a question mark.
HostString newHostString(CFStringRef text);
