#pragma once

/// Encoded images as libpng and libjpeg read them, not our own codecs. Failures fail the test.

#include "plugin/classes/support/images.h"

/// Row by row from the top; colours are straight, as the file has them.
std::vector<Pixel> decoded_png(const std::string& data);
std::vector<Pixel> decoded_jpeg(const std::string& data);

/// A grey JPEG made by libjpeg, with an EXIF orientation (1 to 8).
std::string oriented_jpeg(unsigned width, unsigned height, int orientation);

/// The compression field of a TIFF file's first page.
unsigned long tiff_compression(const std::string& data);
