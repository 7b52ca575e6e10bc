#pragma once

/// The host objects of times, which keep the time itself in their class data.

#include "sdk/types.h"

#include <CoreMedia/CMTimeRange.h>
#include <QTKit/QTTimeRange.h>

namespace base_part {

// A new host object holding the time, owned by the caller; null when the host makes none.
REALobjectStruct* newTimeObject(const QTTime& time);
REALobjectStruct* newTimeObject(const QTTimeRange& range);
REALobjectStruct* newTimeObject(const CMTime& time);
REALobjectStruct* newTimeObject(const CMTimeRange& range);
REALobjectStruct* newTimeObject(const CMTimeMapping& mapping);

} // namespace base_part
