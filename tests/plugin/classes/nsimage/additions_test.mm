/// What the plug-in adds to NSImage, sent as any Cocoa code of the process may send it.

#include "plugin/classes/support/encoded.h"
#include "plugin/classes/support/images.h"

// Declared by the product; its header comes after the host's, which the runtime's macros disturb.
#include "plugin/classes/nsimage/ImageAdditionsZNT.h"

#include <gmock/gmock.h>

/// A representation that says its pixels and draws nothing.
@interface SizedRepresentation : NSImageRep
@end
@implementation SizedRepresentation
- (BOOL)draw {
    return YES;
}
@end

namespace {

using testing::ElementsAre;

class ImageAdditions : public testing::Test {
protected:
    ~ImageAdditions() override { [pool release]; }

    NSImage* image_of(const std::vector<TIFFPage>& pages) {
        const std::string bytes = tiff_of(pages);
        return [[[NSImage alloc] initWithData:[NSData dataWithBytes:bytes.data()
                                                             length:bytes.size()]] autorelease];
    }
    NSImage* image_of_size(CGFloat width, CGFloat height) {
        return [[[NSImage alloc] initWithSize:NSMakeSize(width, height)] autorelease];
    }
    /// An image of representations of these widths and of heights one above them.
    NSImage* image_of_widths(const std::vector<NSInteger>& widths) {
        NSImage* const image = image_of_size(1, 1);
        for (const NSInteger width : widths) {
            SizedRepresentation* const representation =
                [[[SizedRepresentation alloc] init] autorelease];
            [representation setPixelsWide:width];
            [representation setPixelsHigh:width + 1];
            [image addRepresentation:representation];
        }
        return image;
    }
    static std::string bytes_of(NSData* data) {
        return data ? std::string(static_cast<const char*>([data bytes]), [data length]) : "(none)";
    }

    /// Loads the plug-in, which brings the category.
    Host host;
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
};

// Queries

TEST_F(ImageAdditions, CountTheRepresentations) {
    EXPECT_EQ([image_of_size(5, 5) representationsCount], 0);
    EXPECT_EQ([image_of_widths({3, 4, 5}) representationsCount], 3);
}

TEST_F(ImageAdditions, TellTheLargestPixelsNeverBelow0) {
    EXPECT_EQ([image_of_size(5, 5) MaximumWidth], 0) << "no representations";
    EXPECT_EQ([image_of_widths({3, 50, 40}) MaximumWidth], 50);
    EXPECT_EQ([image_of_widths({3, 50, 40}) MaximumHeight], 51);
    EXPECT_EQ([image_of_widths({-3, -7}) MaximumWidth], 0);
}

TEST_F(ImageAdditions, TellTheSmallestPixelsWhere0GivesWayToWhateverFollows) {
    const auto smallest = [&](const std::vector<NSInteger>& widths) {
        return [image_of_widths(widths) MinimumWidth];
    };
    EXPECT_EQ([image_of_size(5, 5) MinimumWidth], 0) << "no representations";
    EXPECT_EQ([image_of_size(5, 5) MinimumHeight], 0);
    EXPECT_EQ(smallest({50, 30, 40}), 30);
    EXPECT_EQ(smallest({0, 50}), 50);
    EXPECT_EQ(smallest({30, 0, 50}), 50) << "0 starts anew";
    EXPECT_EQ(smallest({50, 30, 0}), 0);
    EXPECT_EQ(smallest({30, -1, 50}), -1);
    EXPECT_EQ([image_of_widths({30, -1, 50}) MinimumHeight], 51) << "its 0 starts anew";
}

// EXIF

TEST_F(ImageAdditions, TakeTheEXIFDataOfTheFirstBitmapThatHasSome) {
    NSImage* const image = image_of_widths({7});
    EXPECT_EQ([image EXIFData], nil) << "no bitmap";
    NSImage* const pages = image_of({plain_page(2, 2), plain_page(3, 2), plain_page(4, 2)});
    for (NSBitmapImageRep* const bitmap in [pages representations])
        [image addRepresentation:bitmap];
    EXPECT_EQ([image EXIFData], nil);
    for (const int index : {3, 2})
        [[[image representations] objectAtIndex:static_cast<NSUInteger>(index)]
            setProperty:NSImageEXIFData
              withValue:[NSDictionary dictionaryWithObject:[NSNumber numberWithInt:index]
                                                    forKey:@"page"]];
    EXPECT_EQ([[[image EXIFData] objectForKey:@"page"] intValue], 2);
}

TEST_F(ImageAdditions, HaveNoEXIFDataWithoutRepresentations) {
    EXPECT_EQ([image_of_size(5, 5) EXIFData], nil);
}

TEST_F(ImageAdditions, GiveTheEXIFDataOfAFileToPrograms) {
    const auto image = host.create("NSImageZNT", host.memoryBlock(exposed_jpeg()));
    const auto exif = host.get<host::ObjectRef>(image, "EXIFData");
    ASSERT_TRUE(exif);
    EXPECT_EQ(host.references(exif), 1);
    EXPECT_DOUBLE_EQ(host.call(exif, "Value", "ExposureTime").toDouble(), 0.125);
    const auto none = new_image(host, {four_colors()});
    EXPECT_FALSE(host.get<host::ObjectRef>(none, "EXIFData"));
    EXPECT_FALSE(host.get<host::ObjectRef>(host.instance("NSImageZNT"), "EXIFData"));
}

// Encoders: JPEG and BMP are opaque, PNG and GIF are not.

const TIFFPage translucent = {3, 1, 4, {200, 100, 50, 128, 9, 9, 9, 0, 0, 0, 255, 255}};

/// Half of the colour, half of white: 255 - (255 - c) * 128 / 255.
constexpr Pixel overWhite{227, 177, 152};

void expect_over_white(const std::vector<Pixel>& pixels, int tolerance) {
    ASSERT_EQ(pixels.size(), 3u);
    for (const auto& [pixel, expected] :
         {std::pair(pixels[0], overWhite), std::pair(pixels[1], white),
          std::pair(pixels[2], blue)}) {
        EXPECT_EQ(pixel.alpha, 255);
        EXPECT_NEAR(pixel.red, expected.red, tolerance);
        EXPECT_NEAR(pixel.green, expected.green, tolerance);
        EXPECT_NEAR(pixel.blue, expected.blue, tolerance);
    }
}

TEST_F(ImageAdditions, EncodeBMPOverWhite) {
    expect_over_white(decoded_bmp(bytes_of([image_of({translucent}) BMPRepresentationZNT])), 1);
}

TEST_F(ImageAdditions, EncodeJPEGOverWhite) {
    // One colour a block of 16 by 16, since JPEG halves the resolution of colours.
    const std::string data = bytes_of([image_of({plain_page(16, 16, {200, 100, 50, 128})})
        JPEGRepresentationWithCompressionFactorZNT:1.0f]);
    for (const Pixel& pixel : decoded_jpeg(data)) {
        EXPECT_NEAR(pixel.red, overWhite.red, 3);
        EXPECT_NEAR(pixel.blue, overWhite.blue, 3);
    }
}

TEST_F(ImageAdditions, EncodePNGWithItsTransparency) {
    const std::vector<Pixel> pixels =
        decoded_png(bytes_of([image_of({translucent}) PNGRepresentationZNT]));
    ASSERT_EQ(pixels.size(), 3u);
    EXPECT_EQ(pixels[0].alpha, 128);
    EXPECT_NEAR(pixels[0].red, 200, 2);
    EXPECT_EQ(pixels[1].alpha, 0);
    EXPECT_EQ(pixels[2], blue);
}

TEST_F(ImageAdditions, EncodeGIFWithTransparentPixels) {
    const TIFFPage page = {3, 1, 4, {0, 0, 255, 255, 9, 9, 9, 0, 255, 0, 0, 255}};
    const std::string data = bytes_of([image_of({page}) GIFRepresentationZNT]);
    EXPECT_TRUE(data.starts_with("GIF89a"));
    const std::vector<Pixel> pixels = decoded_gif(data);
    ASSERT_EQ(pixels.size(), 3u);
    EXPECT_EQ(pixels[0], blue);
    EXPECT_EQ(pixels[1].alpha, 0);
    EXPECT_EQ(pixels[2], red);
}

TEST_F(ImageAdditions, EncodeNoGIFWithoutASize) {
    NSImage* const image = image_of({four_colors()});
    EXPECT_NE([image GIFRepresentationZNT], nil) << "the control";
    for (const NSSize size : {NSMakeSize(0, 0), NSMakeSize(2, 0), NSMakeSize(0, 2)}) {
        NSImage* const sizeless = image_of({four_colors()});
        [sizeless setSize:size];
        EXPECT_EQ([sizeless GIFRepresentationZNT], nil);
    }
}

TEST_F(ImageAdditions, EncodeNothingOfAnImageWithoutRepresentations) {
    NSImage* const empty = image_of_size(5, 5);
    EXPECT_EQ([empty GIFRepresentationZNT], nil);
    EXPECT_EQ([empty PNGRepresentationZNT], nil);
}

TEST_F(ImageAdditions, EncodeWithoutRepresentationsTheWhiteThatIsBehindIt) {
    // Over white: nothing over white is white.
    const std::vector<Pixel> pixels =
        decoded_bmp(bytes_of([image_of_size(2, 1) BMPRepresentationZNT]));
    EXPECT_THAT(pixels, ElementsAre(white, white));
}

TEST_F(ImageAdditions, GiveNilToNobody) {
    NSImage* const nobody = nil;
    EXPECT_EQ([nobody GIFRepresentationZNT], nil);
    EXPECT_EQ([nobody imageByScalingToSizeZNT:NSMakeSize(1, 1)], nil);
    EXPECT_EQ([nobody MinimumWidth], 0);
}

TEST_F(ImageAdditions, AreGIFAndBMPMembersToo) {
    const auto image = new_image(host, {translucent});
    const auto bmp = host.call<host::ObjectRef>(image, "BMPRepresentation");
    expect_over_white(decoded_bmp(host.bytes(bmp)), 1);
    const auto gif = host.call<host::ObjectRef>(image, "GIFRepresentation");
    EXPECT_EQ(decoded_gif(host.bytes(gif))[1].alpha, 0);
    host.set(image, "size", nullptr);
    EXPECT_FALSE(host.call<host::ObjectRef>(image, "GIFRepresentation"));
    EXPECT_FALSE(host.call<host::ObjectRef>(image, "GIFRepresentationMT"));
    EXPECT_EQ(host.raised(), "");
}

// Scaling

class ScaledSizes : public ImageAdditions {
protected:
    NSSize scaled(NSSize source, NSSize target) {
        NSImage* const image = image_of({four_colors()});
        [image setSize:source];
        return [[image imageByScalingToSizeZNT:target] size];
    }
};

TEST_F(ScaledSizes, FollowTheOrientationInSinglePrecision) {
    for (const auto& [width, height, target] :
         {std::tuple(3.0f, 7.0f, 1.0f), std::tuple(7.0f, 3.0f, 2.5f),
          std::tuple(1000.0f, 999.0f, 0.7f), std::tuple(1.1f, 3.3f, 9.9f)}) {
        const NSSize size = scaled(NSMakeSize(width, height), NSMakeSize(target, target));
        const bool isWide = width > height;
        EXPECT_EQ(size.width, isWide ? target : target / height * width);
        EXPECT_EQ(size.height, isWide ? target / width * height : target);
    }
}

TEST_F(ScaledSizes, KeepFractionsOfAPoint) {
    const NSSize size = scaled(NSMakeSize(4, 3), NSMakeSize(2, 9));
    EXPECT_EQ(size.width, 2);
    EXPECT_EQ(size.height, 1.5);
}

TEST_F(ImageAdditions, FlipTheImageTheyScaleInto) {
    NSImage* const image = image_of({four_colors()});
    NSImage* const flipped = [image imageByScalingToSizeZNT:NSMakeSize(2, 2)
                                                   fraction:1.0f
                                                  flipImage:YES
                                             proportionally:YES];
    EXPECT_TRUE([flipped isFlipped]);
    EXPECT_NE(flipped, image);
}

TEST_F(ImageAdditions, ReplaceRatherThanCoverWhenScaling) {
    // Drawn with the copy operation: half opacity over nothing stays half.
    NSImage* const faded =
        [image_of({plain_page(2, 2, {255, 255, 255})}) imageByFadingToFraction:0.2f];
    EXPECT_THAT(pixels_of(faded), testing::Each(Pixel{51, 51, 51, 51}));
}

} // namespace
