#pragma once

/// Points in time of media, as an NSValue or another program's structure holds them.

#include <stdint.h>

#pragma pack(push, 4)
typedef struct {
    int64_t value;
    int32_t timescale; ///< units of value in a second
    uint32_t flags;
    int64_t epoch;
} CMTime;
#pragma pack(pop)
