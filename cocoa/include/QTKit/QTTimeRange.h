#pragma once

#include <QTKit/QTTime.h>

typedef struct {
    QTTime time;
    QTTime duration;
} QTTimeRange;
