#pragma once

/// The image record of the gd library, in its published layout up to the last field that is needed.
/// Console hosts keep their Pictures in such images.

struct gdImageStruct {
    static constexpr int colorCount = 256;

    unsigned char** pixels; ///< the rows of a palette image; null in a true-colour one
    int sx;                 ///< pixels in a row
    int sy;                 ///< rows
    int colorsTotal;
    int red[colorCount];
    int green[colorCount];
    int blue[colorCount];
    int open[colorCount];
    int transparent;
    int* polyInts;
    int polyAllocated;
    gdImageStruct* brush;
    gdImageStruct* tile;
    int brushColorMap[colorCount];
    int tileColorMap[colorCount];
    int styleLength;
    int stylePos;
    int* style;
    int interlace;
    int thick;
    int alpha[colorCount];
    int trueColor; ///< not 0 in a true-colour image
    int** tpixels; ///< the rows of a true-colour image
};
