#pragma once

#include <CoreMedia/CMTime.h>

typedef struct {
    CMTime start;
    CMTime duration;
} CMTimeRange;

/// Which part of one timeline a part of another is mapped to.
typedef struct {
    CMTimeRange source;
    CMTimeRange target;
} CMTimeMapping;
