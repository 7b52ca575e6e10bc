#include "plugin/classes/support/images.h"

/// A bitmap's own samples are read: 8 bits, alpha last where there is one.
std::vector<Pixel> pixels_of(NSImage* image) {
    NSBitmapImageRep* const bitmap = [[image representations] objectAtIndex:0];
    EXPECT_TRUE([bitmap isKindOfClass:[NSBitmapImageRep class]]);
    EXPECT_EQ([bitmap bitsPerSample], 8);
    EXPECT_FALSE([bitmap isPlanar]);
    EXPECT_GE([bitmap samplesPerPixel], 3);
    const bool isStraight = ([bitmap bitmapFormat] & NSAlphaNonpremultipliedBitmapFormat) != 0;
    std::vector<Pixel> pixels;
    for (NSInteger y = 0; y < [bitmap pixelsHigh]; ++y) {
        const unsigned char* sample = [bitmap bitmapData] + y * [bitmap bytesPerRow];
        for (NSInteger x = 0; x < [bitmap pixelsWide]; ++x, sample += [bitmap bitsPerPixel] / 8) {
            Pixel pixel{sample[0], sample[1], sample[2]};
            if ([bitmap hasAlpha]) pixel.alpha = sample[3];
            if (isStraight)
                for (int* color : {&pixel.red, &pixel.green, &pixel.blue})
                    *color = (*color * pixel.alpha + 127) / 255;
            pixels.push_back(pixel);
        }
    }
    return pixels;
}
