/// Bitmaps and images from encoded data.

#include "files.h"

#include "cocoa/codecs/png_file.h"
#include "cocoa/codecs/tiff_file.h"

#include <fstream>

namespace appkit_test {
namespace {

using testing::ElementsAre;

class BitmapFromData : public AppKitTest {};
class ImageFromData : public AppKitTest {};
class BrokenData : public AppKitTest {};

NSBitmapImageRep* bitmapFrom(const ByteVector& file) {
    return [NSBitmapImageRep imageRepWithData:toData(file)];
}

NSImage* imageFrom(const ByteVector& file) {
    return [[[NSImage alloc] initWithData:toData(file)] autorelease];
}

std::vector<int> firstSamples(NSBitmapImageRep* bitmap) {
    std::vector<int> samples;
    for (NSInteger y = 0; y < [bitmap pixelsHigh]; ++y)
        for (NSInteger x = 0; x < [bitmap pixelsWide]; ++x)
            samples.push_back(pixelAt(bitmap, x, y).red);
    return samples;
}

TEST_F(BitmapFromData, HasTheFilesPixelsAndFormat) {
    NSBitmapImageRep* bitmap = bitmapFrom(fourColorPNG());
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, green, blue, white));
    EXPECT_EQ(3, [bitmap samplesPerPixel]);
    EXPECT_EQ(8, [bitmap bitsPerSample]);
    EXPECT_EQ(24, [bitmap bitsPerPixel]);
    EXPECT_FALSE([bitmap hasAlpha]);
    EXPECT_TRUE([bitmap isOpaque]);
    EXPECT_EQUAL_STRINGS(NSCalibratedRGBColorSpace, [bitmap colorSpaceName]);
}

TEST_F(BitmapFromData, OfPNGKeepsAlphaStraight) {
    NSBitmapImageRep* bitmap = bitmapFrom(onePixelPNG({200, 100, 50, 128}));
    EXPECT_TRUE([bitmap hasAlpha]);
    EXPECT_EQ(NSUInteger{NSAlphaNonpremultipliedBitmapFormat}, [bitmap bitmapFormat]);
    EXPECT_THAT(rowsOf(bitmap), ElementsAre(200, 100, 50, 128));
}

TEST_F(BitmapFromData, OfTIFFWithAssociatedAlphaIsPremultiplied) {
    NSBitmapImageRep* bitmap = bitmapFrom(premultipliedTIFF({100, 50, 25, 128}));
    EXPECT_EQ(0U, [bitmap bitmapFormat]);
    EXPECT_THAT(rowsOf(bitmap), ElementsAre(100, 50, 25, 128));
}

TEST_F(BitmapFromData, OfGrayStaysGrayAtItsDepth) {
    using codecs_test::PngFile;
    NSBitmapImageRep* bitmap =
        bitmapFrom(PngFile(9, 1, 1, codecs_test::PngGray).rows({{0xA5, 0x80}}).end());
    EXPECT_EQ(1, [bitmap bitsPerSample]);
    EXPECT_EQ(1, [bitmap samplesPerPixel]);
    EXPECT_EQ(2, [bitmap bytesPerRow]);
    EXPECT_EQUAL_STRINGS(NSCalibratedWhiteColorSpace, [bitmap colorSpaceName]);
    EXPECT_THAT(firstSamples(bitmap), ElementsAre(1, 0, 1, 0, 0, 1, 0, 1, 1));
    NSBitmapImageRep* deep =
        bitmapFrom(PngFile(1, 1, 16, codecs_test::PngGray).rows({{0x12, 0x34}}).end());
    EXPECT_EQ(16, [deep bitsPerSample]);
    EXPECT_THAT(firstSamples(deep), ElementsAre(0x1234));
}

TEST_F(BitmapFromData, OfAPaletteIsRGB) {
    NSBitmapImageRep* bitmap = bitmapFrom(codecs_test::PngFile(2, 1, 1, codecs_test::PngPalette)
                                              .chunk("PLTE", {10, 20, 30, 40, 50, 60})
                                              .rows({{0x40}})
                                              .end());
    EXPECT_EQ(8, [bitmap bitsPerSample]);
    EXPECT_EQ(3, [bitmap samplesPerPixel]);
    EXPECT_THAT(rowsOf(bitmap), ElementsAre(10, 20, 30, 40, 50, 60));
}

TEST_F(BitmapFromData, OfInkIsCMYK) {
    NSBitmapImageRep* bitmap = bitmapFrom(inkJPEG());
    EXPECT_EQ(4, [bitmap samplesPerPixel]);
    EXPECT_FALSE([bitmap hasAlpha]);
    EXPECT_EQUAL_STRINGS(NSDeviceCMYKColorSpace, [bitmap colorSpaceName]);
    NSColor* color = [bitmap colorAtX:3 y:3];
    EXPECT_NEAR(0, [color cyanComponent], 0.02);
    EXPECT_NEAR(1, [color magentaComponent], 0.02);
    EXPECT_NEAR(0, [color blackComponent], 0.02);
}

TEST_F(BitmapFromData, HasItsSizeInPoints) {
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(3, 2), [bitmapFrom(twoPageTIFF()) size]));
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(1.5, 1), [bitmapFrom(tiffWithDensity(144)) size]));
}

TEST_F(BitmapFromData, TakesPixelsAMeterForTheWholeDotsAnInchTheyMean) {
    // 72 dots an inch are 2834.6 pixels a metre, 144 are 5669.3.
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(4, 1), [bitmapFrom(pngWithDensity(2835, 5669)) size]));
    const NSSize size = [bitmapFrom(pngWithDensity(10000, 10000)) size];
    EXPECT_NEAR(4 * 72 / 254.0, size.width, 1e-4);
}

TEST_F(BitmapFromData, TakesDensitiesOfNoSenseForUnset) {
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(3, 2), [bitmapFrom(tiffWithDensity(0)) size]));
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(3, 2), [bitmapFrom(tiffWithDensity(0xFFFFFFFF)) size]));
}

TEST_F(BitmapFromData, HasOneRepresentationForEachPage) {
    NSArray* reps = [NSBitmapImageRep imageRepsWithData:toData(twoPageTIFF())];
    ASSERT_EQ(2U, [reps count]);
    EXPECT_THAT(firstSamples([reps objectAtIndex:0]), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(firstSamples([reps objectAtIndex:1]), ElementsAre(9));
    EXPECT_THAT(firstSamples(bitmapFrom(twoPageTIFF())), ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(BitmapFromData, IsNotTurned) { EXPECT_EQ(32, [bitmapFrom(quarteredJPEG(6)) pixelsWide]); }

TEST_F(BitmapFromData, IsRecognised) {
    for (const ByteVector& file : {fourColorPNG(), quarteredJPEG(1), twoPageTIFF()}) {
        EXPECT_TRUE([NSBitmapImageRep canInitWithData:toData(file)]);
        EXPECT_TRUE([NSImageRep canInitWithData:toData(file)]);
        EXPECT_EQ([NSBitmapImageRep class], [NSImageRep imageRepClassForData:toData(file)]);
    }
    EXPECT_FALSE([NSImageRep canInitWithData:nil]);
    EXPECT_FALSE([NSImageRep canInitWithData:[NSData data]]);
    EXPECT_FALSE([NSBitmapImageRep canInitWithData:nil]);
    EXPECT_FALSE([NSImageRep canInitWithData:toData({1, 2, 3, 4, 5, 6, 7, 8})]);
}

TEST_F(BitmapFromData, DoesNotNeedTheDataAnyMore) {
    NSMutableData* data = [NSMutableData dataWithData:toData(fourColorPNG())];
    NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:data];
    [data resetBytesInRange:NSMakeRange(0, [data length])];
    EXPECT_EQ(green, pixelAt(bitmap, 1, 0));
}

TEST_F(ImageFromData, HasOneRepresentationForEachPage) {
    NSImage* image = imageFrom(twoPageTIFF());
    EXPECT_EQ(2U, [[image representations] count]);
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(3, 2), [image size]));
    EXPECT_TRUE([image isValid]);
}

TEST_F(ImageFromData, HasTheSizeInPoints) {
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(1, static_cast<CGFloat>(2 / 3.0)),
                             [imageFrom(tiffWithDensity(216)) size]));
}

/// The samples of the red channel, row by row, as the orientation wants a picture that is stored as
/// 1 4 7; 10 13 16 to be shown.
struct Turn {
    std::uint8_t orientation;
    NSInteger width;
    std::vector<int> samples;
};

const Turn turns[] = {
    {1, 3, {1, 4, 7, 10, 13, 16}}, {2, 3, {7, 4, 1, 16, 13, 10}}, {3, 3, {16, 13, 10, 7, 4, 1}},
    {4, 3, {10, 13, 16, 1, 4, 7}}, {5, 2, {1, 10, 4, 13, 7, 16}}, {6, 2, {10, 1, 13, 4, 16, 7}},
    {7, 2, {16, 7, 13, 4, 10, 1}}, {8, 2, {7, 16, 4, 13, 1, 10}},
};

TEST_F(ImageFromData, StandsUprightWhateverTheOrientation) {
    for (const Turn& turn : turns) {
        NSBitmapImageRep* bitmap = bitmapOf(imageFrom(turnedTIFF(turn.orientation)));
        EXPECT_EQ(turn.width, [bitmap pixelsWide]) << int{turn.orientation};
        EXPECT_EQ(turn.samples, firstSamples(bitmap)) << int{turn.orientation};
    }
}

TEST_F(ImageFromData, ExchangesTheSidesOfItsSizeWhenTurned) {
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(16, 32), [imageFrom(quarteredJPEG(6)) size]));
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(32, 16), [imageFrom(quarteredJPEG(3)) size]));
}

TEST_F(ImageFromData, OfAPhotoIsTurned) {
    NSBitmapImageRep* bitmap = bitmapOf(imageFrom(quarteredJPEG(6)));
    EXPECT_THAT(pixelAt(bitmap, 3, 3), IsNear(blue, 4));
    EXPECT_THAT(pixelAt(bitmap, 12, 3), IsNear(red, 4));
    EXPECT_THAT(pixelAt(bitmap, 3, 28), IsNear(white, 4));
    EXPECT_THAT(pixelAt(bitmap, 12, 28), IsNear(green, 4));
}

TEST_F(ImageFromData, StaysAsStoredWhenToldToIgnoreTheOrientation) {
    NSImage* image =
        [[[NSImage alloc] initWithDataIgnoringOrientation:toData(turnedTIFF(6))] autorelease];
    EXPECT_THAT(firstSamples(bitmapOf(image)), ElementsAre(1, 4, 7, 10, 13, 16));
}

TEST_F(ImageFromData, ComesFromFilesByPathAndURL) {
    codecs_test::TemporaryFolder folder;
    NSString* path =
        [NSString stringWithUTF8String:folder.write("four.png", fourColorPNG()).c_str()];
    NSURL* url = [NSURL fileURLWithPath:path];
    EXPECT_THAT(pixelsOf(bitmapOf([[[NSImage alloc] initWithContentsOfFile:path] autorelease])),
                ElementsAre(red, green, blue, white));
    EXPECT_NE(nil, [[[NSImage alloc] initWithContentsOfURL:url] autorelease]);
    EXPECT_EQ(2, [[NSImageRep imageRepWithContentsOfFile:path] pixelsWide]);
    EXPECT_EQ(2, [[NSBitmapImageRep imageRepWithContentsOfURL:url] pixelsWide]);
    EXPECT_EQ(1U, [[NSImageRep imageRepsWithContentsOfFile:path] count]);
    NSString* missing = [path stringByAppendingString:@"x"];
    EXPECT_EQ(nil, [[NSImage alloc] initWithContentsOfFile:missing]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithContentsOfURL:[NSURL fileURLWithPath:missing]]);
    EXPECT_EQ(nil, [NSImageRep imageRepWithContentsOfFile:missing]);
}

TEST_F(ImageFromData, DoesNotComeFromURLsThatLeadNowhere) {
    for (NSString* text : {@"no scheme", @"nothing", @"file:///", @"file:///no/such/file",
                           @"http://127.0.0.1:1/a.png", @"mailto:a@b", @"",
                           @"file:", @"file://name", @"file:///%FF"})
        EXPECT_EQ(nil, [[NSImage alloc] initWithContentsOfURL:[NSURL URLWithString:text]])
            << [text UTF8String];
}

TEST_F(ImageFromData, LeavesNothingOfItsFileBehind) {
    codecs_test::TemporaryFolder folder;
    const std::string path = folder.write("four.png", fourColorPNG());
    NSURL* url = [NSURL fileURLWithPath:[NSString stringWithUTF8String:path.c_str()]];
    EXPECT_NE(nil, [[[NSImage alloc] initWithContentsOfURL:url] autorelease]);
    // Base's loading of URLs keeps its handles, and they the whole content.
    EXPECT_EQ(nil, [NSURLHandle cachedHandleForURL:url]);
}

TEST_F(ImageFromData, ByReferenceIsReadWhenAskedAbout) {
    codecs_test::TemporaryFolder folder;
    const std::string path = folder.path("later.png");
    NSString* name = [NSString stringWithUTF8String:path.c_str()];
    NSImage* image = [[[NSImage alloc] initByReferencingFile:name] autorelease];
    NSImage* missing = [[[NSImage alloc] initByReferencingFile:name] autorelease];
    EXPECT_FALSE([missing isValid]);
    EXPECT_TRUE(NSEqualSizes(NSZeroSize, [missing size]));
    folder.write("later.png", fourColorPNG());
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(2, 2), [image size]));
    EXPECT_TRUE([image isValid]);
    EXPECT_FALSE([missing isValid]);
    EXPECT_EQ(nil, [[NSImage alloc] initByReferencingFile:nil]);
}

TEST_F(ImageFromData, NeedsAnArgument) {
    EXPECT_EQ(nil, [[NSImage alloc] initWithData:nil]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithDataIgnoringOrientation:nil]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithContentsOfFile:nil]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithContentsOfURL:nil]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithPasteboard:nil]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithIconRef:nullptr]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithCGImage:nullptr size:NSMakeSize(1, 1)]);
    EXPECT_EQ(nil, [NSBitmapImageRep imageRepWithData:nil]);
    EXPECT_EQ(nil, [NSBitmapImageRep imageRepsWithData:nil]);
    EXPECT_EQ(nil, [[NSBitmapImageRep alloc] initWithData:nil]);
    EXPECT_EQ(nil, [[NSBitmapImageRep alloc] initWithCGImage:nullptr]);
}

TEST_F(ImageFromData, IsHeldOnceByItsCreator) {
    NSImage* image = nil;
    NSImageRep* rep = nil;
    {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        image = [[NSImage alloc] initWithData:toData(twoPageTIFF())];
        rep = [[[image representations] objectAtIndex:0] retain];
        [pool drain];
    }
    EXPECT_EQ(1U, [image retainCount]);
    EXPECT_EQ(2U, [rep retainCount]);
    [image release];
    EXPECT_EQ(1U, [rep retainCount]);
    [rep release];
}

/// Every file cut at every length, and with every byte changed, gives nil or a whole image.
void damage(const ByteVector& file) {
    ASSERT_NE(nil, imageFrom(file));
    for (std::size_t length = 0; length < file.size(); ++length) {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        imageFrom(ByteVector(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
        ByteVector changed = file;
        changed[length] ^= 0xFF;
        [imageFrom(changed) TIFFRepresentation];
        [pool drain];
    }
}

TEST_F(BrokenData, NeverHurts) {
    damage(fourColorPNG());
    damage(onePixelPNG({1, 2, 3, 4}));
    damage(quarteredJPEG(5));
    damage(twoPageTIFF());
    damage(turnedTIFF(7));
}

TEST_F(BrokenData, ThatIsCutShortGivesNil) {
    for (const ByteVector& file : {fourColorPNG(), quarteredJPEG(1)}) {
        for (const std::size_t missing : {std::size_t{20}, file.size() / 2, file.size() - 1}) {
            const ByteVector cut(file.begin(), file.end() - static_cast<std::ptrdiff_t>(missing));
            EXPECT_EQ(nil, imageFrom(cut)) << missing << " of " << file.size();
            EXPECT_EQ(nil, bitmapFrom(cut)) << missing << " of " << file.size();
        }
    }
}

TEST_F(BrokenData, ThatPromisesMorePixelsThanItHasGivesNil) {
    using codecs_test::PngFile;
    EXPECT_EQ(nil,
              imageFrom(PngFile(30000, 30000, 8, codecs_test::PngRGBA).rows({{1, 2, 3, 4}}).end()));
    EXPECT_EQ(nil,
              imageFrom(PngFile(60000, 60000, 8, codecs_test::PngRGBA).rows({{1, 2, 3, 4}}).end()));
}

TEST_F(BrokenData, ThatPromisesMorePixelsThanItHasTakesNoMemory) {
    const auto residentPages = [] {
        std::ifstream statistics("/proc/self/statm");
        long total = 0;
        long resident = 0;
        statistics >> total >> resident;
        return resident;
    };
    const ByteVector file =
        codecs_test::PngFile(30000, 30000, 8, codecs_test::PngRGBA).rows({{1, 2, 3, 4}}).end();
    imageFrom(file);
    const long before = residentPages();
    for (int time = 0; time < 5; ++time)
        EXPECT_EQ(nil, imageFrom(file));
    EXPECT_LT(residentPages() - before, 4096); // 16 MB of the 3.6 GB that are promised
}

TEST_F(BrokenData, OnALaterPageGivesNil) {
    codecs_test::TiffImage broken(3, 2, PHOTOMETRIC_MINISBLACK, 1, 8);
    broken.shorts(TIFFTAG_COMPRESSION, {COMPRESSION_PACKBITS}).data({5, 1}); // 5 more are promised
    const ByteVector file = codecs_test::TiffFile(codecs_test::ByteOrder::Little)
                                .page(codecs_test::tiny_gray())
                                .page(broken)
                                .bytes();
    EXPECT_EQ(nil, [NSBitmapImageRep imageRepsWithData:toData(file)]);
    EXPECT_NE(nil, bitmapFrom(file));
}

} // namespace
} // namespace appkit_test
