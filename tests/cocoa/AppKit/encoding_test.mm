/// Bitmaps and images as encoded data, looked into with other programs' eyes.

#include "files.h"

#include "cocoa/codecs/jpeg_file.h"
#include "cocoa/codecs/png_file.h"
#include "cocoa/codecs/tiff_file.h"

#include <algorithm>
#include <cstring>

namespace appkit_test {
namespace {

using testing::ElementsAre;

class Encoding : public AppKitTest {};
class TIFFEncoding : public AppKitTest {};

NSData* encoded(NSBitmapImageRep* bitmap, NSBitmapImageFileType type,
                NSDictionary* properties = nil) {
    return [bitmap representationUsingType:type properties:properties];
}

codecs_test::PngContent png(NSBitmapImageRep* bitmap, NSDictionary* properties = nil) {
    const ByteVector file = toBytes(encoded(bitmap, NSPNGFileType, properties));
    EXPECT_FALSE(file.empty());
    return codecs_test::take_apart(file);
}

NSDictionary* properties(NSString* key, id value) {
    return [NSDictionary dictionaryWithObject:value forKey:key];
}

/// The rows of a page, by libtiff.
ByteVector tiffRows(NSData* data, unsigned page = 0) {
    codecs_test::TemporaryFolder folder;
    return codecs_test::rows_by_libtiff(folder.write("a.tiff", toBytes(data)), page);
}

/// What the program tiffinfo says.
std::string tiffInfo(NSData* data) {
    codecs_test::TemporaryFolder folder;
    return codecs_test::run("tiffinfo " + folder.write("a.tiff", toBytes(data))).output;
}

TEST_F(Encoding, ToPNGKeepsPixels) {
    const auto file = png(makeBitmap({.width = 2}, {1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(2U, file.width);
    EXPECT_EQ(8, file.bits);
    EXPECT_EQ(codecs_test::PngRGB, file.color);
    EXPECT_THAT(file.samples, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(Encoding, ToPNGMakesAlphaStraight) {
    const auto file = png(makeRGBA(2, 1, {{51, 102, 0, 102}, nothing}));
    EXPECT_EQ(codecs_test::PngRGBA, file.color);
    EXPECT_THAT(file.samples, ElementsAre(128, 255, 0, 102, 0, 0, 0, 0));
}

TEST_F(Encoding, ToPNGKeepsStraightAlphaAndPutsItLast) {
    const BitmapRecipe recipe{.samples = 4,
                              .alpha = true,
                              .format =
                                  NSAlphaFirstBitmapFormat | NSAlphaNonpremultipliedBitmapFormat};
    EXPECT_THAT(png(makeBitmap(recipe, {9, 200, 100, 50})).samples, ElementsAre(200, 100, 50, 9));
}

TEST_F(Encoding, ToPNGKeepsGrayOfEveryDepth) {
    BitmapRecipe recipe{.width = 2, .samples = 1, .space = NSCalibratedWhiteColorSpace};
    const std::pair<NSInteger, ByteVector> rows[] = {
        {1, {0x40}}, {2, {0x60}}, {4, {0xA5}}, {8, {7, 200}}};
    for (const auto& [bits, row] : rows) {
        recipe.bits = bits;
        const auto file = png(makeBitmap(recipe, row));
        EXPECT_EQ(bits, file.bits);
        EXPECT_EQ(codecs_test::PngGray, file.color);
        EXPECT_EQ(row, file.samples);
    }
    recipe.bits = 16;
    const auto file = png(makeBitmap(recipe, codecs_test::words({0x1234, 0xFEDC})));
    EXPECT_EQ(16, file.bits);
    EXPECT_THAT(file.samples, ElementsAre(0x12, 0x34, 0xFE, 0xDC));
}

TEST_F(Encoding, ToPNGWidensWhatPNGDoesNotHave) {
    EXPECT_THAT(png(makeBitmap({.bits = 4}, {0xF5, 0x00})).samples, ElementsAre(255, 85, 0));
    const auto deep = png(makeBitmap({.bits = 12}, {0xFF, 0xF0, 0x00, 0x80, 0x00}));
    EXPECT_EQ(16, deep.bits);
    EXPECT_THAT(deep.samples, ElementsAre(0xFF, 0xFF, 0, 0, 0x80, 0x08)); // 2048 * 65535 / 4095
}

TEST_F(Encoding, ToPNGOfPlanesAndOfBlackIsMeshedAndWhite) {
    EXPECT_THAT(png(makeBitmap({.width = 2, .planar = true}, {1, 2, 3, 4, 5, 6})).samples,
                ElementsAre(1, 3, 5, 2, 4, 6));
    EXPECT_THAT(png(makeBitmap({.samples = 1, .space = NSDeviceBlackColorSpace}, {55})).samples,
                ElementsAre(200));
}

TEST_F(Encoding, ToPNGOfFloatsHasSixteenBits) {
    NSBitmapImageRep* bitmap =
        makeBitmap({.bits = 32, .format = NSFloatingPointSamplesBitmapFormat});
    const float values[] = {-1, 0.5F, 2};
    std::memcpy([bitmap bitmapData], values, sizeof values);
    EXPECT_THAT(png(bitmap).samples, ElementsAre(0, 0, 0x80, 0x00, 0xFF, 0xFF));
}

TEST_F(Encoding, ToPNGOfInkIsRGB) {
    const auto file =
        png(makeBitmap({.samples = 4, .space = NSDeviceCMYKColorSpace}, {255, 0, 0, 0}));
    EXPECT_EQ(codecs_test::PngRGB, file.color);
    EXPECT_THAT(file.samples, ElementsAre(0, 255, 255));
}

TEST_F(Encoding, ToPNGCanBeInterlaced) {
    NSBitmapImageRep* bitmap = fourColors();
    EXPECT_EQ(0, toBytes(encoded(bitmap, NSPNGFileType))[28]);
    NSDictionary* interlaced = properties(NSImageInterlaced, [NSNumber numberWithBool:YES]);
    EXPECT_EQ(1, toBytes(encoded(bitmap, NSPNGFileType, interlaced))[28]);
    [bitmap setProperty:NSImageInterlaced withValue:[NSNumber numberWithBool:YES]];
    EXPECT_EQ(1, toBytes(encoded(bitmap, NSPNGFileType))[28]);
    EXPECT_EQ(0, toBytes(encoded(bitmap, NSPNGFileType,
                                 properties(NSImageInterlaced, [NSNumber numberWithBool:NO])))[28]);
}

TEST_F(Encoding, WritesTheResolution) {
    NSBitmapImageRep* bitmap = makeBitmap({.width = 4, .height = 2});
    [bitmap setSize:NSMakeSize(2, 2)];
    EXPECT_THAT(png(bitmap).chunk("pHYs"), ElementsAre(0, 0, 0x16, 0x25, 0, 0, 0x0B, 0x13, 1));
    EXPECT_THAT(tiffInfo([bitmap TIFFRepresentation]),
                testing::HasSubstr("Resolution: 144, 72 pixels/inch"));
    [bitmap setSize:NSZeroSize];
    EXPECT_TRUE(png(bitmap).chunk("pHYs").empty());
}

TEST_F(Encoding, ToJPEGKeepsColoursNearly) {
    NSBitmapImageRep* bitmap = makeBitmap({.width = 8, .height = 8}, ByteVector(192, 0));
    for (NSInteger y = 0; y < 8; ++y)
        for (NSInteger x = 0; x < 8; ++x)
            [bitmap setColor:[NSColor orangeColor] atX:x y:y];
    const ByteVector samples =
        codecs_test::read_jpeg(toBytes(encoded(bitmap, NSJPEGFileType)), JCS_RGB);
    ASSERT_EQ(192U, samples.size());
    EXPECT_NEAR(255, samples[0], 4);
    EXPECT_NEAR(128, samples[1], 4);
    EXPECT_NEAR(0, samples[2], 4);
}

TEST_F(Encoding, ToJPEGLaysAlphaOverWhite) {
    const ByteVector samples = codecs_test::read_jpeg(
        toBytes(encoded(makeRGBA(1, 1, {{64, 0, 0, 128}}), NSJPEGFileType)), JCS_RGB);
    EXPECT_NEAR(191, samples[0], 3);
    EXPECT_NEAR(127, samples[1], 3);
}

/// Runs of opaque pixels of every length, and others between them.
std::vector<Pixel> mixedOpacities(std::size_t count) {
    const ByteVector noise = codecs_test::noise(count * 4, 17);
    std::vector<Pixel> pixels;
    for (std::size_t run = 0, left = 0; pixels.size() < count; left > 0 ? --left : left = ++run) {
        const std::uint8_t* color = &noise[pixels.size() * 4];
        const int alpha = left > 0 ? 255 : color[3];
        pixels.push_back(
            {color[0] * alpha / 255, color[1] * alpha / 255, color[2] * alpha / 255, alpha});
    }
    return pixels;
}

TEST_F(Encoding, ToBMPLaysEveryPixelOverWhite) {
    const auto pixels = mixedOpacities(1200);
    NSData* data = encoded(makeRGBA(1200, 1, pixels), NSBMPFileType);
    const auto seen = pixelsOf([NSBitmapImageRep imageRepWithData:data]);
    ASSERT_EQ(pixels.size(), seen.size());
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        const Pixel& own = pixels[x];
        const int white = 255 - own.alpha;
        ASSERT_EQ((Pixel{own.red + white, own.green + white, own.blue + white}), seen[x]) << x;
    }
}

TEST_F(Encoding, ToBMPOfPixelsWithAnUnusedByteLeavesItOut) {
    const ByteVector rows = codecs_test::noise(40 * 4, 18);
    NSData* data = encoded(makeBitmap({.width = 40, .pixelBits = 32}, rows), NSBMPFileType);
    const auto seen = pixelsOf([NSBitmapImageRep imageRepWithData:data]);
    for (std::size_t x = 0; x < 40; ++x)
        ASSERT_EQ((Pixel{rows[x * 4], rows[x * 4 + 1], rows[x * 4 + 2]}), seen[x]) << x;
}

TEST_F(Encoding, ToJPEGLaysAlphaOverTheFallbackColour) {
    NSDictionary* overBlue = properties(NSImageFallbackBackgroundColor, [NSColor blueColor]);
    NSBitmapImageRep* straight =
        makeBitmap({.samples = 4, .alpha = true, .format = NSAlphaNonpremultipliedBitmapFormat},
                   ByteVector{255, 0, 0, 128});
    for (NSBitmapImageRep* bitmap : {makeRGBA(1, 1, {{128, 0, 0, 128}}), straight}) {
        const ByteVector samples =
            codecs_test::read_jpeg(toBytes(encoded(bitmap, NSJPEGFileType, overBlue)), JCS_RGB);
        EXPECT_NEAR(128, samples[0], 3);
        EXPECT_NEAR(0, samples[1], 3);
        EXPECT_NEAR(127, samples[2], 3);
    }
}

TEST_F(Encoding, ToJPEGOfGrayHasOneComponent) {
    NSBitmapImageRep* bitmap =
        makeBitmap({.bits = 16, .samples = 1, .space = NSCalibratedWhiteColorSpace},
                   codecs_test::words({0x8080}));
    NSData* data = encoded(bitmap, NSJPEGFileType);
    EXPECT_THAT(codecs_test::read_jpeg(toBytes(data), JCS_GRAYSCALE), ElementsAre(128));
    EXPECT_EQ(1, [[NSBitmapImageRep imageRepWithData:data] samplesPerPixel]);
}

TEST_F(Encoding, ToJPEGIsSmallerAtALowerFactor) {
    const ByteVector noise = codecs_test::noise(64 * 64 * 3, 7);
    NSBitmapImageRep* bitmap = makeBitmap({.width = 64, .height = 64}, noise);
    const auto size = [bitmap](float factor) {
        return [encoded(bitmap, NSJPEGFileType,
                        properties(NSImageCompressionFactor, [NSNumber numberWithFloat:factor]))
            length];
    };
    EXPECT_LT(size(0), size(0.3F));
    EXPECT_LT(size(0.3F), size(0.9F));
    EXPECT_LT(size(0.9F), size(1));
    EXPECT_EQ(size(0), size(-5));
    EXPECT_EQ(size(1), size(5));
    EXPECT_EQ(size(0), size(NAN));
}

TEST_F(Encoding, ToJPEGCanBeProgressive) {
    const auto hasMarker = [](NSData* data, std::uint8_t marker) {
        const ByteVector bytes = toBytes(data);
        const ByteVector wanted{0xFF, marker};
        return std::search(bytes.begin(), bytes.end(), wanted.begin(), wanted.end()) != bytes.end();
    };
    NSDictionary* progressive = properties(NSImageProgressive, [NSNumber numberWithBool:YES]);
    EXPECT_TRUE(hasMarker(encoded(fourColors(), NSJPEGFileType), 0xC0));
    EXPECT_TRUE(hasMarker(encoded(fourColors(), NSJPEGFileType, progressive), 0xC2));
}

TEST_F(Encoding, IgnoresPropertiesOfOtherTypes) {
    NSMutableDictionary* wrong = [NSMutableDictionary dictionary];
    for (NSString* key :
         {NSImageCompressionFactor, NSImageCompressionMethod, NSImageInterlaced, NSImageProgressive,
          NSImageColorSyncProfileData, NSImageFallbackBackgroundColor})
        [wrong setObject:@"wrong" forKey:key];
    for (const NSBitmapImageFileType type : {NSJPEGFileType, NSPNGFileType, NSTIFFFileType})
        EXPECT_NE(nil, encoded(fourColors(), type, wrong));
}

TEST_F(Encoding, ToTypesThatAreNotWrittenGivesNil) {
    EXPECT_EQ(nil, encoded(fourColors(), NSJPEG2000FileType));
    EXPECT_EQ(nil, encoded(fourColors(), 77));
}

TEST_F(Encoding, OfNoBitmapsGivesNil) {
    NSArray* other = [NSArray arrayWithObject:[[[NSImageRep alloc] init] autorelease]];
    EXPECT_EQ(nil, [NSBitmapImageRep TIFFRepresentationOfImageRepsInArray:nil]);
    EXPECT_EQ(nil, [NSBitmapImageRep TIFFRepresentationOfImageRepsInArray:[NSArray array]]);
    EXPECT_EQ(nil, [NSBitmapImageRep TIFFRepresentationOfImageRepsInArray:other]);
    EXPECT_EQ(nil, [NSBitmapImageRep representationOfImageRepsInArray:other
                                                            usingType:NSPNGFileType
                                                           properties:nil]);
}

TEST_F(Encoding, ComesBackTheSame) {
    const std::vector<Pixel> pixels{
        {10, 20, 30, 255}, {0, 0, 0, 0}, {5, 6, 7, 8}, {1, 2, 200, 254}};
    NSBitmapImageRep* bitmap = makeRGBA(2, 2, pixels);
    [bitmap setSize:NSMakeSize(1, 4)];
    NSBitmapImageRep* back = [NSBitmapImageRep imageRepWithData:[bitmap TIFFRepresentation]];
    EXPECT_EQ(pixels, pixelsOf(back));
    EXPECT_EQ(0U, [back bitmapFormat]);
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(1, 4), [back size]));
}

TEST_F(TIFFEncoding, KeepsPremultipliedAlphaAsAssociated) {
    NSData* data = [makeRGBA(1, 1, {{51, 102, 0, 102}}) TIFFRepresentation];
    EXPECT_THAT(tiffRows(data), ElementsAre(51, 102, 0, 102));
    EXPECT_THAT(tiffInfo(data), testing::HasSubstr("Extra Samples: 1<assoc-alpha>"));
}

TEST_F(TIFFEncoding, KeepsStraightAlphaAsUnassociated) {
    NSBitmapImageRep* bitmap =
        makeBitmap({.samples = 4, .alpha = true, .format = NSAlphaNonpremultipliedBitmapFormat},
                   ByteVector{200, 100, 50, 9});
    EXPECT_THAT(tiffRows([bitmap TIFFRepresentation]), ElementsAre(200, 100, 50, 9));
    EXPECT_THAT(tiffInfo([bitmap TIFFRepresentation]),
                testing::HasSubstr("Extra Samples: 1<unassoc-alpha>"));
}

TEST_F(TIFFEncoding, KeepsInkAndDepth) {
    NSBitmapImageRep* ink =
        makeBitmap({.samples = 4, .space = NSDeviceCMYKColorSpace}, {1, 2, 3, 4});
    EXPECT_THAT(tiffRows([ink TIFFRepresentation]), ElementsAre(1, 2, 3, 4));
    const ByteVector words = codecs_test::words({0x1234, 0x5678, 0x9ABC});
    NSBitmapImageRep* deep = makeBitmap({.bits = 16}, words);
    EXPECT_EQ(words, tiffRows([deep TIFFRepresentation]));
    NSBitmapImageRep* oneBit = makeBitmap(
        {.width = 3, .bits = 1, .samples = 1, .space = NSCalibratedWhiteColorSpace}, {0xA0});
    EXPECT_THAT(tiffRows([oneBit TIFFRepresentation]), ElementsAre(0xA0));
}

TEST_F(TIFFEncoding, UsesTheCompressionAskedFor) {
    NSBitmapImageRep* bitmap = makeBitmap({.width = 4, .height = 4}, ByteVector(48, 9));
    const std::pair<NSTIFFCompression, const char*> schemes[] = {
        {NSTIFFCompressionNone, "Compression Scheme: None"},
        {NSTIFFCompressionLZW, "Compression Scheme: LZW"},
        {NSTIFFCompressionPackBits, "Compression Scheme: PackBits"},
        {NSTIFFCompressionNEXT, "Compression Scheme: None"},
        {NSTIFFCompressionOldJPEG, "Compression Scheme: None"},
        {NSTIFFCompressionCCITTFAX4, "Compression Scheme: None"},
        {77, "Compression Scheme: None"}};
    for (const auto& [compression, text] : schemes) {
        NSData* data = [bitmap TIFFRepresentationUsingCompression:compression factor:0.5F];
        EXPECT_THAT(tiffInfo(data), testing::HasSubstr(text));
        EXPECT_EQ(ByteVector(48, 9), tiffRows(data));
    }
}

TEST_F(TIFFEncoding, UsesFaxCompressionForOneBit) {
    NSBitmapImageRep* bitmap = makeBitmap(
        {.width = 8, .bits = 1, .samples = 1, .space = NSCalibratedWhiteColorSpace}, {0x3C});
    for (const NSTIFFCompression compression :
         {NSTIFFCompressionCCITTFAX3, NSTIFFCompressionCCITTFAX4}) {
        EXPECT_TRUE([bitmap canBeCompressedUsing:compression]);
        NSData* data = [bitmap TIFFRepresentationUsingCompression:compression factor:0];
        EXPECT_THAT(tiffInfo(data), testing::HasSubstr("Compression Scheme: CCITT Group"));
        EXPECT_THAT(rowsOf([NSBitmapImageRep imageRepWithData:data]), ElementsAre(0x3C));
    }
}

TEST_F(TIFFEncoding, UsesJPEGForOpaqueBytes) {
    const ByteVector noise = codecs_test::noise(64 * 64 * 3, 7);
    NSBitmapImageRep* bitmap = makeBitmap({.width = 64, .height = 64}, noise);
    const auto withFactor = [bitmap](float factor) {
        return [bitmap TIFFRepresentationUsingCompression:NSTIFFCompressionJPEG factor:factor];
    };
    EXPECT_THAT(tiffInfo(withFactor(50)), testing::HasSubstr("Compression Scheme: JPEG"));
    EXPECT_GT([withFactor(0) length], [withFactor(100) length]);
    EXPECT_GT([withFactor(100) length], [withFactor(255) length]);
    EXPECT_EQ([withFactor(255) length], [withFactor(1000) length]);
    EXPECT_EQ([withFactor(0) length], [withFactor(NAN) length]);
    NSBitmapImageRep* back = [NSBitmapImageRep imageRepWithData:withFactor(0)];
    const ByteVector samples = rowsOf(back);
    ASSERT_EQ(noise.size(), samples.size());
    int worst = 0;
    for (std::size_t i = 0; i < noise.size(); ++i)
        worst = std::max(worst, std::abs(noise[i] - samples[i]));
    EXPECT_LT(worst, 8); // colours as sharp as the light
}

TEST_F(TIFFEncoding, UsesNoCompressionWhereAPageCannotBearIt) {
    NSArray* pages = [NSArray arrayWithObjects:makeBitmap({}, {1, 2, 3}), fourColors(), nil];
    NSData* data = [NSBitmapImageRep TIFFRepresentationOfImageRepsInArray:pages
                                                         usingCompression:NSTIFFCompressionJPEG
                                                                   factor:0];
    EXPECT_THAT(tiffInfo(data), testing::Not(testing::HasSubstr("JPEG")));
    EXPECT_THAT(tiffRows(data), ElementsAre(1, 2, 3));
}

TEST_F(TIFFEncoding, KnowsWhatABitmapCanBeCompressedWith) {
    NSBitmapImageRep* bitmap = fourColors();
    EXPECT_TRUE([bitmap canBeCompressedUsing:NSTIFFCompressionNone]);
    EXPECT_TRUE([bitmap canBeCompressedUsing:NSTIFFCompressionLZW]);
    EXPECT_TRUE([bitmap canBeCompressedUsing:NSTIFFCompressionPackBits]);
    EXPECT_FALSE([bitmap canBeCompressedUsing:NSTIFFCompressionCCITTFAX3]);
    EXPECT_FALSE([bitmap canBeCompressedUsing:NSTIFFCompressionJPEG]); // it has alpha
    EXPECT_TRUE([makeBitmap({}) canBeCompressedUsing:NSTIFFCompressionJPEG]);
    EXPECT_FALSE([makeBitmap({.bits = 16}) canBeCompressedUsing:NSTIFFCompressionJPEG]);
    EXPECT_FALSE([bitmap canBeCompressedUsing:NSTIFFCompressionNEXT]);
    EXPECT_FALSE([bitmap canBeCompressedUsing:NSTIFFCompressionOldJPEG]);
    EXPECT_FALSE([bitmap canBeCompressedUsing:0]);
}

TEST_F(TIFFEncoding, UsesTheBitmapsOwnCompression) {
    NSBitmapImageRep* bitmap = fourColors();
    NSTIFFCompression compression = 0;
    float factor = -1;
    [bitmap getCompression:&compression factor:&factor];
    EXPECT_EQ(NSTIFFCompression{NSTIFFCompressionNone}, compression);
    [bitmap setCompression:NSTIFFCompressionLZW factor:0.5F];
    [bitmap getCompression:&compression factor:&factor];
    EXPECT_EQ(NSTIFFCompression{NSTIFFCompressionLZW}, compression);
    EXPECT_EQ(0.5F, factor);
    [bitmap getCompression:nullptr factor:nullptr];
    EXPECT_THAT(tiffInfo([bitmap TIFFRepresentation]), testing::HasSubstr("Scheme: LZW"));
    NSDictionary* packBits =
        properties(NSImageCompressionMethod, [NSNumber numberWithInt:NSTIFFCompressionPackBits]);
    EXPECT_THAT(tiffInfo(encoded(bitmap, NSTIFFFileType, packBits)),
                testing::HasSubstr("Scheme: PackBits"));
}

TEST_F(TIFFEncoding, NamesTheCompressions) {
    const NSTIFFCompression* list = nullptr;
    NSInteger count = 0;
    [NSBitmapImageRep getTIFFCompressionTypes:&list count:&count];
    ASSERT_EQ(8, count);
    for (NSInteger index = 0; index < count; ++index)
        EXPECT_NE(nil, [NSBitmapImageRep localizedNameForTIFFCompressionType:list[index]]);
    EXPECT_EQ(nil, [NSBitmapImageRep localizedNameForTIFFCompressionType:2]);
}

TEST_F(TIFFEncoding, OfAnImageHasAPageForEachRepresentation) {
    NSImage* image = makeImage(makeBitmap({}, {1, 2, 3}));
    [image
        addRepresentation:makeBitmap({.width = 2, .samples = 1, .space = NSDeviceWhiteColorSpace},
                                     {7, 8})];
    NSData* data = [image TIFFRepresentation];
    EXPECT_THAT(tiffRows(data, 0), ElementsAre(1, 2, 3));
    EXPECT_THAT(tiffRows(data, 1), ElementsAre(7, 8));
    NSData* packed = [image TIFFRepresentationUsingCompression:NSTIFFCompressionLZW factor:1];
    EXPECT_THAT(tiffInfo(packed), testing::HasSubstr("Scheme: LZW"));
    EXPECT_THAT(tiffRows(packed, 1), ElementsAre(7, 8));
}

TEST_F(TIFFEncoding, OfAnImageWithoutRepresentationsGivesNil) {
    NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(5, 5)] autorelease];
    EXPECT_EQ(nil, [image TIFFRepresentation]);
    EXPECT_EQ(nil, [image TIFFRepresentationUsingCompression:NSTIFFCompressionLZW factor:1]);
}

} // namespace
} // namespace appkit_test
