#pragma once

#include <Carbon/Carbon.h>

/// Unlocks a pixel map with QuickDraw's function of that name, which is looked up in the system;
/// nothing happens where there is no QuickDraw.
void UnlockPixels(PixMapHandle pixMap);
