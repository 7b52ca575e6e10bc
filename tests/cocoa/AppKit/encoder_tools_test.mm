/// What other programs say of encoded bitmaps.

#include "support.h"

#include "cocoa/codecs/gif_file.h"

namespace appkit_test {
namespace {

using codecs_test::portable_pixels;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

/// 60 by 40 pixels at 144 dots an inch: a gradient, opaque unless alpha is asked for.
NSBitmapImageRep* picture(bool alpha = false) {
    const auto colors = codecs_test::gradient(60, 40, 3);
    NSBitmapImageRep* bitmap =
        makeBitmap({.width = 60, .height = 40, .samples = alpha ? 4 : 3, .alpha = alpha});
    for (std::size_t pixel = 0; pixel < std::size_t{60} * 40; ++pixel) {
        unsigned char* out = [bitmap bitmapData] + pixel * (alpha ? 4 : 3);
        std::copy_n(&colors[pixel * 3], 3, out);
        if (alpha) out[3] = 255;
    }
    [bitmap setSize:NSMakeSize(30, 20)];
    return bitmap;
}

/// A clear pixel, and a red one at full and at half opacity.
NSBitmapImageRep* threeOpacities() { return makeRGBA(3, 1, {nothing, red, {128, 0, 0, 128}}); }

class EncoderTools : public AppKitTest {
protected:
    std::string file(NSBitmapImageRep* bitmap, NSBitmapImageFileType type, NSString* flag = nil) {
        NSDictionary* properties =
            flag ? [NSDictionary dictionaryWithObject:[NSNumber numberWithBool:YES] forKey:flag]
                 : nil;
        NSData* data = [bitmap representationUsingType:type properties:properties];
        EXPECT_NE(nil, data);
        return folder_.write("picture", toBytes(data));
    }

    /// What a program says that must be content.
    static std::string said(const std::string& command) {
        const auto result = codecs_test::run(command);
        EXPECT_EQ(0, result.status) << command << '\n' << result.output;
        return result.output;
    }

    /// The pixels that a program writes as PPM.
    ByteVector shown(const std::string& command) {
        said(command + " > " + folder_.path("shown"));
        return portable_pixels(folder_.read("shown"));
    }

private:
    codecs_test::TemporaryFolder folder_;
};

TEST_F(EncoderTools, FindPNGValid) {
    EXPECT_THAT(said("pngcheck -v " + file(picture(), NSPNGFileType)),
                AllOf(HasSubstr("60 x 40 image, 24-bit RGB, non-interlaced"),
                      HasSubstr("5669x5669 pixels/meter (144 dpi)"), HasSubstr("No errors")));
    EXPECT_THAT(said("pngcheck -v " + file(picture(true), NSPNGFileType, NSImageInterlaced)),
                AllOf(HasSubstr("60 x 40 image, 32-bit RGB+alpha, interlaced")));
}

TEST_F(EncoderTools, FindJPEGValid) {
    EXPECT_THAT(said("file " + file(picture(), NSJPEGFileType)),
                AllOf(HasSubstr("JPEG image data, JFIF standard"),
                      HasSubstr("resolution (DPI), density 144x144"),
                      HasSubstr("baseline, precision 8, 60x40, components 3")));
    EXPECT_THAT(said("rdjpgcom -verbose " + file(picture(true), NSJPEGFileType)),
                HasSubstr("60w * 40h, 3 color components, 8 bits per sample"));
    EXPECT_THAT(said("file " + file(picture(), NSJPEGFileType, NSImageProgressive)),
                HasSubstr("progressive, precision 8, 60x40, components 3"));
    EXPECT_EQ(std::size_t{60} * 40 * 3,
              shown("djpeg -pnm " + file(picture(), NSJPEGFileType, NSImageProgressive)).size());
}

TEST_F(EncoderTools, FindTIFFValid) {
    EXPECT_THAT(said("tiffinfo " + file(picture(), NSTIFFFileType)),
                AllOf(HasSubstr("Image Width: 60 Image Length: 40"),
                      HasSubstr("Resolution: 144, 144 pixels/inch"), HasSubstr("Bits/Sample: 8"),
                      HasSubstr("Samples/Pixel: 3"),
                      HasSubstr("Photometric Interpretation: RGB color")));
    EXPECT_THAT(said("tiffinfo " + file(picture(true), NSTIFFFileType)),
                AllOf(HasSubstr("Samples/Pixel: 4"), HasSubstr("Extra Samples: 1<assoc-alpha>")));
}

TEST_F(EncoderTools, FindGIFValid) {
    EXPECT_THAT(said("file " + file(picture(), NSGIFFileType)),
                HasSubstr("GIF image data, version 87a, 60 x 40"));
    EXPECT_THAT(said("giftext " + file(picture(), NSGIFFileType)),
                AllOf(HasSubstr("Screen Size - Width = 60, Height = 40."),
                      HasSubstr("BitsPerPixel = 8"), HasSubstr("GIF file terminated normally.")));
    EXPECT_THAT(said("file " + file(threeOpacities(), NSGIFFileType)),
                HasSubstr("version 89a, 3 x 1"));
}

TEST_F(EncoderTools, FindBMPValid) {
    EXPECT_THAT(said("file " + file(picture(), NSBMPFileType)),
                AllOf(HasSubstr("PC bitmap, Windows 3.x format, 60 x 40 x 24"),
                      HasSubstr("resolution 5669 x 5669 px/m")));
    EXPECT_EQ(codecs_test::gradient(60, 40, 3),
              shown("bmptopnm -quiet " + file(picture(), NSBMPFileType)));
}

TEST_F(EncoderTools, SeeJPEGAndBMPOverWhite) {
    EXPECT_THAT(shown("bmptopnm -quiet " + file(threeOpacities(), NSBMPFileType)),
                ElementsAre(255, 255, 255, 255, 0, 0, 255, 127, 127));
    // Every 16 pixels of one colour, so that JPEG keeps them.
    std::vector<Pixel> row(16, nothing);
    row.resize(32, {128, 0, 0, 128});
    const ByteVector samples = shown("djpeg -pnm " + file(makeRGBA(32, 1, row), NSJPEGFileType));
    const auto near = [](int value) {
        return testing::AllOf(testing::Ge(value - 4), testing::Le(value + 4));
    };
    EXPECT_THAT(ByteVector(&samples[0], &samples[3]), ElementsAre(near(255), near(255), near(255)));
    EXPECT_THAT(ByteVector(&samples[72], &samples[75]),
                ElementsAre(near(255), near(127), near(127)));
}

TEST_F(EncoderTools, SeeAlphaInPNGAndGIF) {
    const std::string png = file(threeOpacities(), NSPNGFileType);
    EXPECT_THAT(shown("pngtopnm -quiet -alpha " + png + " | pgmtopgm"), ElementsAre(0, 255, 128));
    EXPECT_THAT(shown("pngtopnm -quiet " + png + " | tail -c 6 | rawtoppm -quiet 2 1"),
                ElementsAre(255, 0, 0, 255, 0, 0));
    NSData* gif = [threeOpacities() representationUsingType:NSGIFFileType properties:nil];
    ByteVector alpha;
    codecs_test::pixels_by_giftopnm(toBytes(gif), &alpha);
    EXPECT_THAT(alpha, ElementsAre(0, 255, 255));
}

} // namespace
} // namespace appkit_test
