#pragma once

/// Dates: the host's are wall-clock times to the second, in the local time zone.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// Autoreleased, in the local time zone; nil for null and when a part of the date cannot be read.
NSCalendarDate* NewNSDate(REALdateStruct* date);

/// A new host date for the caller, of the date's wall-clock time in the default time zone;
/// fractions of a second are dropped. Null for nil and when the host makes none.
REALdateStruct* NSDateRB(NSDate* date);
