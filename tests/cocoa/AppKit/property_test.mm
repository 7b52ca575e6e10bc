/// What encoded data states beside its pixels: EXIF, gamma.

#include "files.h"

#include "cocoa/codecs/exif_builder.h"
#include "cocoa/codecs/jpeg_file.h"
#include "cocoa/codecs/png_file.h"

namespace appkit_test {
namespace {

class Properties : public AppKitTest {};

/// 16 by 8 pixels with the settings of a camera.
NSBitmapImageRep* photo(const ByteVector& exif = codecs_test::snapshot_exif()) {
    const codecs_test::JpegRecipe recipe{
        .width = 16, .height = 8, .markers = {{JPEG_APP0 + 1, codecs_test::exif_marker(exif)}}};
    return [NSBitmapImageRep
        imageRepWithData:toData(codecs_test::make_jpeg(recipe, codecs_test::gradient(16, 8, 3)))];
}

NSDictionary* exifOf(NSBitmapImageRep* bitmap) { return [bitmap valueForProperty:NSImageEXIFData]; }

TEST_F(Properties, GiveEXIFByItsNames) {
    NSDictionary* exif = exifOf(photo());
    EXPECT_EQ(5U, [exif count]);
    EXPECT_DOUBLE_EQ(0.004, [[exif objectForKey:@"ExposureTime"] doubleValue]);
    EXPECT_DOUBLE_EQ(8, [[exif objectForKey:@"FNumber"] doubleValue]);
    EXPECT_TRUE([[NSArray arrayWithObject:[NSNumber numberWithInt:200]]
        isEqual:[exif objectForKey:@"ISOSpeedRatings"]]);
    EXPECT_EQUAL_STRINGS(@"2009:05:11 19:42:07", [exif objectForKey:@"DateTimeOriginal"]);
    EXPECT_EQ(4000, [[exif objectForKey:@"PixelXDimension"] intValue]);
}

TEST_F(Properties, GiveEXIFOnceMade) {
    NSBitmapImageRep* bitmap = photo();
    EXPECT_NE(nil, exifOf(bitmap));
    EXPECT_EQ(exifOf(bitmap), exifOf(bitmap));
    EXPECT_TRUE([exifOf(bitmap) isEqual:exifOf([[bitmap copy] autorelease])]);
}

TEST_F(Properties, GiveTextOfOldCameras) {
    const ByteVector block =
        codecs_test::ExifBuilder().text(0xA434, "Objektiv f\xFCr Nahes").block();
    EXPECT_EQUAL_STRINGS(@"Objektiv f\u00FCr Nahes",
                         [exifOf(photo(block)) objectForKey:@"LensModel"]);
}

TEST_F(Properties, GiveNoEXIFWhereThereIsNone) {
    EXPECT_EQ(nil, exifOf(fourColors()));
    EXPECT_EQ(nil, exifOf([NSBitmapImageRep imageRepWithData:toData(fourColorPNG())]));
    EXPECT_EQ(nil, exifOf(photo(codecs_test::exif_block(6)))); // an orientation only
    EXPECT_EQ(nil, exifOf(photo(codecs_test::noise(80, 1))));
}

TEST_F(Properties, CanBeSetAndTakenAway) {
    NSBitmapImageRep* bitmap = photo();
    NSDictionary* other = [NSDictionary dictionaryWithObject:[NSNumber numberWithInt:1]
                                                      forKey:@"WhiteBalance"];
    [bitmap setProperty:NSImageEXIFData withValue:other];
    EXPECT_EQ(other, exifOf(bitmap));
    [bitmap setProperty:NSImageEXIFData withValue:nil];
    EXPECT_EQ(nil, exifOf(bitmap));
    [bitmap setProperty:@"Anything" withValue:@"kept"];
    EXPECT_EQUAL_STRINGS(@"kept", [bitmap valueForProperty:@"Anything"]);
    [bitmap setProperty:nil withValue:@"x"];
    EXPECT_EQ(nil, [bitmap valueForProperty:nil]);
}

TEST_F(Properties, WriteEXIFAgain) {
    NSBitmapImageRep* bitmap = photo();
    for (const NSBitmapImageFileType type : {NSJPEGFileType, NSPNGFileType}) {
        NSData* data = [bitmap representationUsingType:type properties:nil];
        EXPECT_TRUE([exifOf(bitmap) isEqual:exifOf([NSBitmapImageRep imageRepWithData:data])]);
    }
    [bitmap setProperty:NSImageEXIFData withValue:nil];
    NSData* data = [bitmap representationUsingType:NSJPEGFileType properties:nil];
    EXPECT_EQ(nil, exifOf([NSBitmapImageRep imageRepWithData:data]));
}

TEST_F(Properties, WriteEXIFThatIsGiven) {
    NSDictionary* given = [NSDictionary
        dictionaryWithObjectsAndKeys:[NSNumber numberWithDouble:0.5], @"ExposureTime", @"Tele",
                                     @"LensModel",
                                     [NSArray arrayWithObject:[NSNumber numberWithInt:400]],
                                     @"ISOSpeedRatings", nil];
    NSMutableDictionary* withMore = [NSMutableDictionary dictionaryWithDictionary:given];
    [withMore setObject:[NSDate date] forKey:@"DateTimeOriginal"];
    [withMore setObject:[NSArray arrayWithObject:@"x"] forKey:@"SubjectArea"];
    NSDictionary* properties = [NSDictionary dictionaryWithObject:withMore forKey:NSImageEXIFData];
    NSBitmapImageRep* kept = fourColors();
    [kept setProperty:NSImageEXIFData withValue:given];
    NSData* encoded[] = {[fourColors() representationUsingType:NSJPEGFileType
                                                    properties:properties],
                         [photo() representationUsingType:NSJPEGFileType properties:properties],
                         [kept representationUsingType:NSJPEGFileType properties:nil]};
    for (NSData* data : encoded)
        EXPECT_TRUE([given isEqual:exifOf([NSBitmapImageRep imageRepWithData:data])]);
}

TEST_F(Properties, WriteTheOrientationOfThePixelsAsTheyAre) {
    NSData* turned = toData(quarteredJPEG(6));
    NSBitmapImageRep* stored = [NSBitmapImageRep imageRepWithData:turned];
    NSBitmapImageRep* upright = bitmapOf([[[NSImage alloc] initWithData:turned] autorelease]);
    for (NSBitmapImageRep* bitmap : {stored, upright}) {
        NSData* data = [bitmap representationUsingType:NSJPEGFileType properties:nil];
        NSImage* back = [[[NSImage alloc] initWithData:data] autorelease];
        EXPECT_THAT(pixelAt(bitmapOf(back), 2, 2), IsNear(blue, 12));
        EXPECT_EQ(16, [bitmapOf(back) pixelsWide]);
    }
}

TEST_F(Properties, GiveGammaAndWriteIt) {
    const ByteVector file = codecs_test::PngFile(1, 1, 8, codecs_test::PngGray)
                                .chunk("gAMA", {0, 0, 0xB1, 0x8F}) // 45455 in 100000
                                .rows({{7}})
                                .end();
    NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:toData(file)];
    EXPECT_DOUBLE_EQ(0.45455, [[bitmap valueForProperty:NSImageGamma] doubleValue]);
    const auto written = [](NSBitmapImageRep* source, id gamma) {
        NSDictionary* properties =
            gamma ? [NSDictionary dictionaryWithObject:gamma forKey:NSImageGamma] : nil;
        return codecs_test::take_apart(toBytes([source representationUsingType:NSPNGFileType
                                                                    properties:properties]))
            .chunk("gAMA");
    };
    EXPECT_THAT(written(bitmap, nil), testing::ElementsAre(0, 0, 0xB1, 0x8F));
    EXPECT_THAT(written(bitmap, [NSNumber numberWithDouble:1]),
                testing::ElementsAre(0, 1, 0x86, 0xA0));
    EXPECT_TRUE(written(fourColors(), nil).empty());
    for (const double wrong : {0.0, -1.0, double{INFINITY}, double{NAN}})
        EXPECT_TRUE(written(fourColors(), [NSNumber numberWithDouble:wrong]).empty());
    EXPECT_TRUE(written(fourColors(), @"2.2").empty());
}

} // namespace
} // namespace appkit_test
