#pragma once

/// Encoded images as other programs read them, not our own codecs: libpng, libjpeg, netpbm.
/// Failures fail the test.

#include "plugin/classes/support/images.h"

/// Row by row from the top; colours are straight, as the file has them.
std::vector<Pixel> decoded_png(const std::string& data);
std::vector<Pixel> decoded_jpeg(const std::string& data);
std::vector<Pixel> decoded_bmp(const std::string& data);
/// The first frame; a pixel is opaque or not.
std::vector<Pixel> decoded_gif(const std::string& data);

/// A grey JPEG made by libjpeg, with an EXIF orientation (1 to 8).
std::string oriented_jpeg(unsigned width, unsigned height, int orientation);

/// The same with an EXIF exposure time of 1/8 second.
std::string exposed_jpeg();

/// The compression field of a TIFF file's first page.
unsigned long tiff_compression(const std::string& data);
