#include "plugin/classes/support/encoded.h"
#include "plugin/classes/support/images.h"

// Declared by the product; its header comes after the host's, which the runtime's macros disturb.
#include "plugin/classes/nsimage/ImageAdditionsZNT.h"

#include <gmock/gmock.h>

namespace {

using testing::Each;
using testing::ElementsAre;

constexpr const char* scaleInFull =
    "imageByScalingToSize(width as double, height as double, fraction as double, flip as boolean, "
    "proportionally as boolean) as NSImageZNT";

class ImageResults : public testing::Test {
protected:
    std::pair<double, double> size_of(const host::ObjectRef& image) {
        return {host.get<double>(image, "width"), host.get<double>(image, "height")};
    }
    std::pair<double, double> scaled_size(double width, double height, double targetWidth,
                                          double targetHeight) {
        const auto image = new_image(host, {plain_page(static_cast<std::uint16_t>(width),
                                                       static_cast<std::uint16_t>(height))});
        return size_of(
            host.call<host::ObjectRef>(image, "imageByScalingToSize", targetWidth, targetHeight));
    }
    std::string data_of(const host::ObjectRef& image, std::string_view method, auto... arguments) {
        const auto block = host.call<host::ObjectRef>(image, method, arguments...);
        if (!block) return "(none)";
        EXPECT_EQ(host.references(block), 1);
        return host.bytes(block);
    }

    Host host;
    const host::ObjectRef colors = new_image(host, {four_colors()});
};

using Size = std::pair<double, double>;

// Scaling

TEST_F(ImageResults, ScalingKeepsTheProportionsByTheImagesOwnOrientation) {
    EXPECT_EQ(scaled_size(200, 100, 100, 100), Size(100, 50));
    EXPECT_EQ(scaled_size(100, 200, 100, 100), Size(50, 100));
    EXPECT_EQ(scaled_size(200, 100, 50, 100), Size(50, 25));
    EXPECT_EQ(scaled_size(200, 100, 100, 20), Size(100, 50)) << "higher than the target";
    EXPECT_EQ(scaled_size(100, 100, 30, 70), Size(30, 70)) << "a square takes any target";
}

TEST_F(ImageResults, ScalingComputesTheOtherSideInSinglePrecision) {
    EXPECT_EQ(scaled_size(300, 70, 100, 1), Size(100, 100.0f / 300.0f * 70.0f));
}

TEST_F(ImageResults, ScalingOutOfProportionTakesTheTargetAsItIs) {
    const auto image = new_image(host, {plain_page(8, 4)});
    EXPECT_EQ(size_of(host.call<host::ObjectRef>(image, scaleInFull, 3.0, 9.0, 1.0, false, false)),
              Size(3, 9));
    EXPECT_EQ(size_of(host.call<host::ObjectRef>(image, scaleInFull, 4.0, 9.0, 1.0, false, true)),
              Size(4, 2));
}

TEST_F(ImageResults, ScalingToTheSameSizeIsACopyThatKeepsTheRepresentations) {
    const auto pages = new_image(host, {plain_page(4, 2), plain_page(4, 2)});
    const auto copy = host.call<host::ObjectRef>(pages, "imageByScalingToSize", 4.0, 2.0);
    EXPECT_NE(copy, pages);
    EXPECT_NE(host.handle(copy), host.handle(pages));
    EXPECT_EQ(host.get<int>(copy, "RepresentationsCount"), 2) << "drawing would leave one";
    EXPECT_EQ(Host::retainCount(host.handle(copy)), 1);
}

TEST_F(ImageResults, ScalingToTheSameSizeRedrawsWhenSomethingElseChanges) {
    const auto pages = new_image(host, {plain_page(4, 2), plain_page(4, 2)});
    for (const auto& [fraction, flip] : {std::pair(0.5, false), std::pair(1.0, true)}) {
        const auto drawn =
            host.call<host::ObjectRef>(pages, scaleInFull, 4.0, 2.0, fraction, flip, false);
        EXPECT_EQ(host.get<int>(drawn, "RepresentationsCount"), 1);
        EXPECT_EQ(host.get<bool>(drawn, "isFlipped"), flip);
    }
}

TEST_F(ImageResults, ScalingKeepsEveryCornerInItsPlace) {
    const auto large = host.call<host::ObjectRef>(colors, "imageByScalingToSize", 40.0, 40.0);
    const std::vector<Pixel> pixels = pixels_of(image_in(host, large));
    ASSERT_EQ(pixels.size(), 1600u);
    EXPECT_EQ(pixels[0], red);
    EXPECT_EQ(pixels[39], green);
    EXPECT_EQ(pixels[39 * 40], blue);
    EXPECT_EQ(pixels[39 * 40 + 39], white);
}

TEST_F(ImageResults, ScalingOfOneColorIsThatColor) {
    const auto image = new_image(host, {plain_page(9, 9, {0x20, 0x40, 0x60})});
    for (const double size : {3.0, 20.0}) {
        const auto scaled = host.call<host::ObjectRef>(image, "imageByScalingToSize", size, size);
        EXPECT_THAT(pixels_of(image_in(host, scaled)), Each(Pixel{0x20, 0x40, 0x60}));
    }
}

TEST_F(ImageResults, ScalingWithAFractionFades) {
    const auto image = new_image(host, {plain_page(8, 8, {255, 255, 255})});
    const auto scaled = host.call<host::ObjectRef>(image, "imageByScalingToSize", 4.0, 4.0, 0.2);
    EXPECT_THAT(pixels_of(image_in(host, scaled)), Each(Pixel{51, 51, 51, 51}));
}

TEST_F(ImageResults, ScalingToNothingOrToAnAbsurdSizeNeitherCrashesNorHangs) {
    for (const auto& [width, height] :
         {std::pair(0.0, 0.0), std::pair(-5.0, 5.0), std::pair(1e9, 1e9),
          std::pair(std::numeric_limits<double>::quiet_NaN(), 5.0),
          std::pair(std::numeric_limits<double>::infinity(), 5.0)}) {
        host.call(colors, scaleInFull, width, height, 1.0, false, false);
        host.takeRaised();
    }
}

// Fading

TEST_F(ImageResults, FadingByNothingIsACopy) {
    const auto copy = host.call<host::ObjectRef>(colors, "imageByFadingToFraction", 1.0);
    EXPECT_NE(host.handle(copy), host.handle(colors));
    EXPECT_THAT(pixels_of(image_in(host, copy)), ElementsAre(red, green, blue, white));
}

TEST_F(ImageResults, FadingToHalfIsHalfAsOpaque) {
    const auto faded = host.call<host::ObjectRef>(colors, "imageByFadingToFraction", 0.5);
    EXPECT_EQ(size_of(faded), Size(2, 2));
    const std::vector<Pixel> pixels = pixels_of(image_in(host, faded));
    ASSERT_EQ(pixels.size(), 4u);
    // Half of 255 lies between two values.
    for (const Pixel& pixel : pixels)
        EXPECT_THAT(pixel.alpha, testing::AnyOf(127, 128));
    EXPECT_EQ(pixels[0], (Pixel{pixels[0].alpha, 0, 0, pixels[0].alpha}));
    EXPECT_EQ(pixels[2], (Pixel{0, 0, pixels[2].alpha, pixels[2].alpha}));
}

TEST_F(ImageResults, TheOriginalIsNotChanged) {
    host.call(colors, "imageByScalingToSize", 5.0, 5.0, 0.5);
    host.call(colors, "imageByFadingToFraction", 0.0);
    EXPECT_THAT(pixels_of(image_in(host, colors)), ElementsAre(red, green, blue, white));
}

// Encoding

TEST_F(ImageResults, PNGKeepsEveryPixelAndItsTransparency) {
    EXPECT_THAT(decoded_png(data_of(colors, "PNGRepresentation")),
                ElementsAre(red, green, blue, white));
    const auto translucent = new_image(host, {{2, 1, 4, {200, 100, 50, 128, 9, 9, 9, 0}}});
    const std::vector<Pixel> pixels = decoded_png(data_of(translucent, "PNGRepresentation"));
    ASSERT_EQ(pixels.size(), 2u);
    EXPECT_EQ(pixels[0].alpha, 128);
    EXPECT_NEAR(pixels[0].red, 200, 2) << "straight; premultiplied in between";
    EXPECT_NEAR(pixels[0].green, 100, 2);
    EXPECT_EQ(pixels[1].alpha, 0);
}

TEST_F(ImageResults, JPEGIsOpaqueOverWhite) {
    const auto translucent = new_image(host, {plain_page(16, 16, {0, 0, 0, 0})});
    EXPECT_THAT(decoded_jpeg(data_of(translucent, "JPEGRepresentation")), Each(white));
    const auto half = new_image(host, {plain_page(16, 16, {0, 0, 0, 128})});
    for (const Pixel& pixel : decoded_jpeg(data_of(half, "JPEGRepresentation")))
        EXPECT_NEAR(pixel.red, 127, 3);
}

TEST_F(ImageResults, JPEGGrowsWithTheFactorWhichIs80PercentWhenNoneIsGiven) {
    TIFFPage noise{64, 64, 3, {}};
    for (std::uint32_t i = 0, value = 1; i < 64 * 64 * 3; ++i, value = value * 1664525 + 1013904223)
        noise.pixels.push_back(static_cast<std::uint8_t>(value >> 24));
    const auto image = new_image(host, {noise});
    const auto jpeg = [&](double factor) {
        return data_of(image, "JPEGRepresentationWithCompressionFactor", factor);
    };
    EXPECT_LT(jpeg(0.1).size(), jpeg(0.5).size());
    EXPECT_LT(jpeg(0.5).size(), jpeg(1.0).size());
    EXPECT_EQ(data_of(image, "JPEGRepresentation"), jpeg(0.8));
}

TEST_F(ImageResults, TIFFIsReadBackPixelByPixelInEveryLosslessCompression) {
    const auto read_back = [&](const std::string& data) {
        const auto image = host.create("NSImageZNT", host.memoryBlock(data));
        return pixels_of(image_in(host, image));
    };
    EXPECT_THAT(read_back(data_of(colors, "TIFFRepresentation")),
                ElementsAre(red, green, blue, white));
    for (const NSTIFFCompression compression :
         {NSTIFFCompressionNone, NSTIFFCompressionLZW, NSTIFFCompressionPackBits}) {
        const std::string data = data_of(colors, "TIFFRepresentationUsingCompression",
                                         static_cast<REALword>(compression), 0.0);
        EXPECT_EQ(tiff_compression(data), compression);
        EXPECT_THAT(read_back(data), ElementsAre(red, green, blue, white)) << compression;
    }
}

TEST_F(ImageResults, TIFFHoldsAPageForEachRepresentation) {
    const auto pages = new_image(host, {plain_page(4, 2), plain_page(3, 5)});
    const auto again =
        host.create("NSImageZNT", host.memoryBlock(data_of(pages, "TIFFRepresentation")));
    EXPECT_EQ(host.get<int>(again, "RepresentationsCount"), 2);
    EXPECT_EQ(host.call<int>(again, "RepresentationHeight", 1), 5);
}

TEST_F(ImageResults, AreNilWithoutAnImage) {
    const host::ObjectRef none = host.instance("NSImageZNT");
    for (const char* method : {"PNGRepresentation", "JPEGRepresentation", "TIFFRepresentation"})
        EXPECT_EQ(data_of(none, method), "(none)") << method;
    EXPECT_EQ(data_of(none, "JPEGRepresentationWithCompressionFactor", 0.5), "(none)");
    EXPECT_EQ(data_of(none, "TIFFRepresentationUsingCompression", 1, 0.0), "(none)");
    EXPECT_FALSE(host.call<host::ObjectRef>(none, "imageByScalingToSize", 1.0, 1.0));
    EXPECT_FALSE(host.call<host::ObjectRef>(none, "imageByScalingToSize", 1.0, 1.0, 0.5));
    EXPECT_FALSE(host.call<host::ObjectRef>(none, scaleInFull, 1.0, 1.0, 1.0, false, false));
    EXPECT_FALSE(host.call<host::ObjectRef>(none, "imageByFadingToFraction", 0.5));
    EXPECT_EQ(host.raised(), "");
}

TEST_F(ImageResults, AreNilForAnImageWithoutRepresentations) {
    const host::ObjectRef empty = host.createBy("NSImageZNT", "Constructor");
    EXPECT_EQ(data_of(empty, "PNGRepresentation"), "(none)");
    EXPECT_EQ(data_of(empty, "TIFFRepresentation"), "(none)");
    host.takeRaised();
}

// The category's own rules

TEST_F(ImageResults, TheOpaqueBitmapIsTheImageOverWhite) {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    const auto image = new_image(host, {{2, 1, 4, {0, 0, 0, 0, 255, 0, 0, 255}}});
    // The category belongs to the loaded plug-in.
    NSBitmapImageRep* const bitmap = [image_in(host, image) opaqueBitmapImageRepZNT];
    EXPECT_EQ([bitmap pixelsWide], 2);
    NSImage* const opaque = [[[NSImage alloc] initWithSize:NSMakeSize(2, 1)] autorelease];
    [opaque addRepresentation:bitmap];
    EXPECT_THAT(pixels_of(opaque), ElementsAre(white, red));
    [pool release];
}

} // namespace
