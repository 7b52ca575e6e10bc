/// GIF in and out of bitmaps.

#include "support.h"

#include "cocoa/codecs/gif_file.h"

namespace appkit_test {
namespace {

using codecs_test::GifFile;
using testing::ElementsAre;

class GIF : public AppKitTest {};

NSData* encoded(NSBitmapImageRep* bitmap, NSString* key = nil, id value = nil) {
    NSDictionary* properties = key ? [NSDictionary dictionaryWithObject:value forKey:key] : nil;
    return [bitmap representationUsingType:NSGIFFileType properties:properties];
}

/// Red; then its right half blue, then white.
NSData* movingGIF(std::optional<std::uint16_t> repeats = std::nullopt) {
    GifFile file(2, 1);
    if (repeats) file.repeats(*repeats);
    file.frame({.width = 2, .indices = {0, 0}, .hundredths = 10})
        .frame({.left = 1, .indices = {2}, .hundredths = 25})
        .frame({.left = 1, .indices = {3}, .hundredths = 50});
    return toData(file.end());
}

int intValue(NSBitmapImageRep* bitmap, NSString* key) {
    return [[bitmap valueForProperty:key] intValue];
}

TEST_F(GIF, OfFewColoursComesBackTheSame) {
    NSBitmapImageRep* back = [NSBitmapImageRep imageRepWithData:encoded(fourColors())];
    EXPECT_THAT(pixelsOf(back), ElementsAre(red, green, blue, white));
    EXPECT_FALSE([back hasAlpha]);
    EXPECT_EQ(24, [back bitsPerPixel]);
}

TEST_F(GIF, KeepsClearPixelsAndStraightensColours) {
    NSBitmapImageRep* bitmap = makeRGBA(3, 1, {{100, 50, 20, 200}, nothing, green});
    NSBitmapImageRep* back = [NSBitmapImageRep imageRepWithData:encoded(bitmap)];
    EXPECT_TRUE([back hasAlpha]);
    EXPECT_THAT(pixelsOf(back), ElementsAre(Pixel{128, 64, 26}, nothing, green)); // of 200 in 255
}

TEST_F(GIF, DithersTransparencyOnRequest) {
    NSBitmapImageRep* bitmap = makeRGBA(8, 8, std::vector<Pixel>(64, {64, 0, 0, 64}));
    const auto opaque = [bitmap](NSString* key, id value) {
        NSBitmapImageRep* back = [NSBitmapImageRep imageRepWithData:encoded(bitmap, key, value)];
        const auto pixels = pixelsOf(back);
        return std::count(pixels.begin(), pixels.end(), red);
    };
    EXPECT_EQ(0, opaque(nil, nil));
    EXPECT_EQ(0, opaque(NSImageDitherTransparency, [NSNumber numberWithBool:NO]));
    EXPECT_EQ(16, opaque(NSImageDitherTransparency, [NSNumber numberWithBool:YES]));
}

TEST_F(GIF, TakesTheColourTableThatIsGiven) {
    NSData* table = toData({0, 0, 0, 255, 255, 255});
    NSData* data =
        encoded(makeBitmap({.width = 2}, {250, 250, 250, 9, 0, 3}), NSImageRGBColorTable, table);
    EXPECT_THAT(rowsOf([NSBitmapImageRep imageRepWithData:data]),
                ElementsAre(255, 255, 255, 0, 0, 0));
}

TEST_F(GIF, CanBeInterlaced) {
    NSData* data = encoded(fourColors(), NSImageInterlaced, [NSNumber numberWithBool:YES]);
    EXPECT_THAT(pixelsOf([NSBitmapImageRep imageRepWithData:data]),
                ElementsAre(red, green, blue, white));
    codecs_test::TemporaryFolder folder;
    EXPECT_THAT(codecs_test::run("giftext " + folder.write("a.gif", toBytes(data))).output,
                testing::HasSubstr("Image is Interlaced"));
}

TEST_F(GIF, OfInkGreyAndDeepBitmapsIsRGB) {
    NSBitmapImageRep* ink =
        makeBitmap({.samples = 4, .space = NSDeviceCMYKColorSpace}, {255, 0, 0, 0});
    EXPECT_THAT(rowsOf([NSBitmapImageRep imageRepWithData:encoded(ink)]), ElementsAre(0, 255, 255));
    NSBitmapImageRep* deep = makeBitmap({.bits = 16}, codecs_test::words({0xFFFF, 0x8080, 0}));
    EXPECT_THAT(rowsOf([NSBitmapImageRep imageRepWithData:encoded(deep)]),
                ElementsAre(255, 128, 0));
    NSBitmapImageRep* oneBit = makeBitmap(
        {.width = 2, .bits = 1, .samples = 1, .space = NSCalibratedWhiteColorSpace}, {0x40});
    EXPECT_THAT(rowsOf([NSBitmapImageRep imageRepWithData:encoded(oneBit)]),
                ElementsAre(0, 0, 0, 255, 255, 255));
}

TEST_F(GIF, ThatMovesIsOneRepresentation) {
    EXPECT_EQ(1U, [[NSBitmapImageRep imageRepsWithData:movingGIF()] count]);
    NSImage* image = [[[NSImage alloc] initWithData:movingGIF()] autorelease];
    EXPECT_EQ(3, intValue(bitmapOf(image), NSImageFrameCount));
}

TEST_F(GIF, ThatMovesTellsItsFramesAndTimes) {
    NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:movingGIF(4)];
    EXPECT_EQ(3, intValue(bitmap, NSImageFrameCount));
    EXPECT_EQ(0, intValue(bitmap, NSImageCurrentFrame));
    EXPECT_EQ(0.1, [[bitmap valueForProperty:NSImageCurrentFrameDuration] doubleValue]);
    EXPECT_EQ(4, intValue(bitmap, NSImageLoopCount));
    EXPECT_EQ(nil,
              [[NSBitmapImageRep imageRepWithData:movingGIF()] valueForProperty:NSImageLoopCount]);
}

TEST_F(GIF, ThatStandsStillTellsNone) {
    NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:encoded(fourColors())];
    for (NSString* key :
         {NSImageFrameCount, NSImageCurrentFrame, NSImageCurrentFrameDuration, NSImageLoopCount})
        EXPECT_EQ(nil, [bitmap valueForProperty:key]);
    [bitmap setProperty:NSImageCurrentFrame withValue:[NSNumber numberWithInt:1]];
    EXPECT_EQ(red, pixelAt(bitmap, 0, 0));
}

TEST_F(GIF, ShowsTheFrameThatIsMadeCurrent) {
    NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:movingGIF()];
    CGImageRef before = [bitmap CGImage];
    [bitmap setProperty:NSImageCurrentFrame withValue:[NSNumber numberWithInt:2]];
    EXPECT_EQ(2, intValue(bitmap, NSImageCurrentFrame));
    EXPECT_EQ(0.5, [[bitmap valueForProperty:NSImageCurrentFrameDuration] doubleValue]);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, white));
    EXPECT_NE(before, [bitmap CGImage]);
    [bitmap setProperty:NSImageCurrentFrame withValue:[NSNumber numberWithInt:1]];
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, blue));
}

TEST_F(GIF, StaysOnItsFrameWhenAnotherIsNotThere) {
    NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:movingGIF()];
    [bitmap setProperty:NSImageCurrentFrame withValue:[NSNumber numberWithInt:1]];
    for (id value :
         {(id)[NSNumber numberWithInt:3], (id)[NSNumber numberWithInt:-1], (id) @"2", (id)nil})
        [bitmap setProperty:NSImageCurrentFrame withValue:value];
    [bitmap setProperty:NSImageFrameCount withValue:[NSNumber numberWithInt:9]];
    EXPECT_EQ(1, intValue(bitmap, NSImageCurrentFrame));
    EXPECT_EQ(3, intValue(bitmap, NSImageFrameCount));
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, blue));
}

TEST_F(GIF, StaysOnItsFrameWhenAnotherIsBroken) {
    NSData* data = toData(GifFile(2, 1)
                              .frame({.width = 2, .indices = {0, 0}})
                              .frame({.width = 2, .indices = {1}})
                              .end());
    NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:data];
    [bitmap setProperty:NSImageCurrentFrame withValue:[NSNumber numberWithInt:1]];
    EXPECT_EQ(0, intValue(bitmap, NSImageCurrentFrame));
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, red));
}

TEST_F(GIF, CopiedShowsFramesOfItsOwn) {
    NSMutableData* data = [NSMutableData dataWithData:movingGIF()];
    NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:data];
    [data resetBytesInRange:NSMakeRange(0, [data length])];
    NSBitmapImageRep* copy = [[bitmap copy] autorelease];
    [copy setProperty:NSImageCurrentFrame withValue:[NSNumber numberWithInt:2]];
    EXPECT_THAT(pixelsOf(copy), ElementsAre(red, white));
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, red));
    EXPECT_EQ(2, intValue([[copy copy] autorelease], NSImageCurrentFrame));
}

} // namespace
} // namespace appkit_test
