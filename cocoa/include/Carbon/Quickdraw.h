#pragma once

/// The types that old interfaces name; there is no QuickDraw behind them.

typedef struct PixMap PixMap;
typedef PixMap* PixMapPtr;
typedef PixMapPtr* PixMapHandle;
