#pragma once

/// Points in time of a movie, as an NSValue or another program's structure holds them.

typedef struct {
    long long timeValue;
    long timeScale; ///< units of timeValue in a second
    long flags;
} QTTime;
