#pragma once

/// One Picture drawn into another, without scaling. The places in both (`x`, `y`, `sx`, `sy`) are
/// the upper left corners: every caller passes 0.

#include "sdk/types.h"

/// Draws the upper left `sw` x `sh` pixels into as much of `w` x `h` through a Graphics object;
/// false, with nothing drawn, when it cannot draw Pictures.
bool draw_picture(REALobjectStruct* graphics, REALpictureStruct* source, int w, int h, int sw,
                  int sh);

/// Copies the rows of one gd image into another of the same size; false when they are not.
bool OwnCopy(REALpictureStruct* dest, REALpictureStruct* source, int x, int y, int w, int h, int sx,
             int sy, int sw, int sh);

/// Draws through the Graphics object of `dest`, or else copies.
bool GraphicsDrawPicture(REALpictureStruct* dest, REALpictureStruct* source, int x, int y, int w,
                         int h, int sx, int sy, int sw, int sh);
