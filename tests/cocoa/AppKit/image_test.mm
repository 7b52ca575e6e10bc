/// Images as objects: sizes, names, representations, flags.

#include "files.h"

#include <sys/stat.h>

@interface NSImage (AppKitTestCategory)
- (NSInteger)appKitTestPixels;
@end

@implementation NSImage (AppKitTestCategory)
- (NSInteger)appKitTestPixels {
    return [[[self representations] objectAtIndex:0] pixelsWide];
}
@end

@interface AppKitTestImage : NSImage {
    int _drawings;
}
- (int)drawings;
@end

@implementation AppKitTestImage
- (void)drawInRect:(NSRect)rect
          fromRect:(NSRect)fromRect
         operation:(NSCompositingOperation)op
          fraction:(CGFloat)delta {
    ++_drawings;
    [super drawInRect:rect fromRect:fromRect operation:op fraction:delta];
}
- (int)drawings {
    return _drawings;
}
@end

namespace appkit_test {
namespace {

using testing::ElementsAre;

class Image : public AppKitTest {};

NSImage* emptyImage() { return [[[NSImage alloc] init] autorelease]; }

TEST_F(Image, HasNoSizeUntilARepresentationGivesItOne) {
    NSImage* image = emptyImage();
    EXPECT_TRUE(NSEqualSizes(NSZeroSize, [image size]));
    EXPECT_FALSE([image isValid]);
    NSBitmapImageRep* bitmap = fourColors();
    [bitmap setSize:NSMakeSize(7, 8)];
    [image addRepresentation:bitmap];
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(7, 8), [image size]));
    EXPECT_TRUE([image isValid]);
}

TEST_F(Image, KeepsTheSizeItIsGiven) {
    NSImage* image = makeImage(fourColors());
    [image setSize:NSMakeSize(50, 60)];
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(50, 60), [image size]));
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(2, 2), [bitmapOf(image) size]));
    [image setSize:NSZeroSize];
    EXPECT_TRUE(NSEqualSizes(NSZeroSize, [image size]));
}

TEST_F(Image, AddsAndRemovesRepresentations) {
    NSImage* image = emptyImage();
    NSBitmapImageRep* first = fourColors();
    NSBitmapImageRep* second = makeBitmap({});
    [image addRepresentations:[NSArray arrayWithObjects:first, second, nil]];
    [image addRepresentation:nil];
    [image addRepresentations:nil];
    ASSERT_EQ(2U, [[image representations] count]);
    EXPECT_EQ(second, [[image representations] objectAtIndex:1]);
    [image removeRepresentation:first];
    [image removeRepresentation:nil];
    EXPECT_EQ(second, bitmapOf(image));
}

TEST_F(Image, OwnsItsRepresentationsOnce) {
    NSBitmapImageRep* bitmap = [fourColors() retain];
    NSImage* image = [[NSImage alloc] initWithSize:NSMakeSize(1, 1)];
    const NSUInteger before = [bitmap retainCount];
    [image addRepresentation:bitmap];
    EXPECT_EQ(before + 1, [bitmap retainCount]);
    [image removeRepresentation:bitmap];
    EXPECT_EQ(before, [bitmap retainCount]);
    [image addRepresentation:bitmap];
    [image release];
    EXPECT_EQ(before, [bitmap retainCount]);
    [bitmap release];
}

TEST_F(Image, GivesAListThatDoesNotChangeWithIt) {
    NSImage* image = makeImage(fourColors());
    NSArray* before = [image representations];
    [image addRepresentation:makeBitmap({})];
    EXPECT_EQ(1U, [before count]);
}

TEST_F(Image, IsNotChangedThroughACopy) {
    NSImage* image = makeImage(fourColors());
    [image setName:@"original"];
    [image setBackgroundColor:[NSColor redColor]];
    [image setCacheMode:NSImageCacheNever];
    [image setAccessibilityDescription:@"four"];
    NSImage* copy = [[image copy] autorelease];
    EXPECT_EQ(nil, [copy name]);
    EXPECT_EQUAL_STRINGS(@"four", [copy accessibilityDescription]);
    EXPECT_EQ(NSUInteger{NSImageCacheNever}, [copy cacheMode]);
    EXPECT_TRUE([[copy backgroundColor] isEqual:[NSColor redColor]]);
    EXPECT_TRUE(NSEqualSizes([image size], [copy size]));
    [copy setBackgroundColor:nil];
    [copy lockFocus];
    [[NSColor blackColor] set];
    NSRectFill(NSMakeRect(0, 0, 2, 2));
    [copy unlockFocus];
    [bitmapOf(copy) bitmapData][0] = 1;
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white));
    EXPECT_EQUAL_STRINGS(@"original", [image name]);
}

TEST_F(Image, DrawnIntoKeepsItsPixelsWhenCopied) {
    NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(1, 1)] autorelease];
    [image lockFocus];
    [[NSColor redColor] set];
    NSRectFill(NSMakeRect(0, 0, 1, 1));
    [image unlockFocus];
    EXPECT_EQ(red, pixelAt(bitmapOf([[image copy] autorelease]), 0, 0));
}

TEST_F(Image, CopyIsOwnedByItsMaker) {
    NSImage* copy = [makeImage(fourColors()) copy];
    EXPECT_EQ(1U, [copy retainCount]);
    [copy release];
}

TEST_F(Image, ForgetsItsDescription) {
    NSImage* image = emptyImage();
    [image setAccessibilityDescription:@"a picture"];
    [image setAccessibilityDescription:nil];
    EXPECT_EQ(nil, [image accessibilityDescription]);
}

TEST_F(Image, OfACoreGraphicsImageHasItsPixelsOrTheSizeItIsGiven) {
    CGImageRef picture = [fourColors() CGImage];
    NSImage* image = [[[NSImage alloc] initWithCGImage:picture
                                                  size:NSMakeSize(10, 30)] autorelease];
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(10, 30), [image size]));
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(10, 30), [bitmapOf(image) size]));
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white));
    NSImage* natural = [[[NSImage alloc] initWithCGImage:picture size:NSZeroSize] autorelease];
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(2, 2), [natural size]));
}

TEST_F(Image, AsTIFFHasAPageForEveryRepresentation) {
    NSImage* image = makeImage(fourColors());
    [image addRepresentation:makeRGBA(1, 3, {red, green, blue})];
    NSArray* pages = [NSBitmapImageRep imageRepsWithData:[image TIFFRepresentation]];
    ASSERT_EQ(2U, [pages count]);
    EXPECT_THAT(pixelsOf([pages objectAtIndex:0]), ElementsAre(red, green, blue, white));
    EXPECT_THAT(pixelsOf([pages objectAtIndex:1]), ElementsAre(red, green, blue));
    EXPECT_EQ(nil, [emptyImage() TIFFRepresentation]);
}

TEST_F(Image, StartsWithCocoasFlags) {
    NSImage* image = emptyImage();
    EXPECT_EQ(NSUInteger{NSImageCacheDefault}, [image cacheMode]);
    EXPECT_FALSE([image isTemplate]);
    EXPECT_FALSE([image isFlipped]);
    EXPECT_FALSE([image scalesWhenResized]);
    EXPECT_FALSE([image isDataRetained]);
    EXPECT_FALSE([image isCachedSeparately]);
    EXPECT_FALSE([image cacheDepthMatchesImageDepth]);
    EXPECT_FALSE([image usesEPSOnResolutionMismatch]);
    EXPECT_TRUE([image prefersColorMatch]);
    EXPECT_TRUE([image matchesOnMultipleResolution]);
    EXPECT_EQ(nil, [image accessibilityDescription]);
    EXPECT_TRUE([[image backgroundColor] isEqual:[NSColor clearColor]]);
}

struct Flag {
    SEL getter;
    SEL setter;
};

const Flag flags[] = {
    {@selector(isTemplate), @selector(setTemplate:)},
    {@selector(isFlipped), @selector(setFlipped:)},
    {@selector(scalesWhenResized), @selector(setScalesWhenResized:)},
    {@selector(isDataRetained), @selector(setDataRetained:)},
    {@selector(isCachedSeparately), @selector(setCachedSeparately:)},
    {@selector(cacheDepthMatchesImageDepth), @selector(setCacheDepthMatchesImageDepth:)},
    {@selector(usesEPSOnResolutionMismatch), @selector(setUsesEPSOnResolutionMismatch:)},
    {@selector(prefersColorMatch), @selector(setPrefersColorMatch:)},
    {@selector(matchesOnMultipleResolution), @selector(setMatchesOnMultipleResolution:)},
};

std::vector<bool> flagsOf(NSImage* image) {
    using Getter = BOOL (*)(id, SEL);
    std::vector<bool> values;
    for (const Flag& flag : flags)
        values.push_back(
            reinterpret_cast<Getter>([image methodForSelector:flag.getter])(image, flag.getter));
    return values;
}

void setFlag(NSImage* image, const Flag& flag, bool value) {
    using Setter = void (*)(id, SEL, BOOL);
    reinterpret_cast<Setter>([image methodForSelector:flag.setter])(image, flag.setter, value);
}

TEST_F(Image, KeepsEachFlagApart) {
    NSImage* image = emptyImage();
    std::vector<bool> expected = flagsOf(image);
    for (std::size_t index = 0; index < std::size(flags); ++index) {
        expected[index] = !expected[index];
        setFlag(image, flags[index], expected[index]);
        EXPECT_EQ(expected, flagsOf(image)) << index;
    }
}

TEST_F(Image, HasACopyWithEachOfItsFlags) {
    for (const Flag& flag : flags) {
        NSImage* image = emptyImage();
        for (const bool value : {true, false}) {
            setFlag(image, flag, value);
            EXPECT_EQ(flagsOf(image), flagsOf([[image copy] autorelease])) << flag.getter;
        }
    }
}

TEST_F(Image, KeepsItsCacheMode) {
    for (const NSImageCacheMode mode :
         {NSImageCacheAlways, NSImageCacheBySize, NSImageCacheNever, NSImageCacheDefault}) {
        NSImage* image = makeImage(fourColors());
        [image setCacheMode:mode];
        EXPECT_EQ(mode, [image cacheMode]);
        EXPECT_EQ(mode, [[[image copy] autorelease] cacheMode]);
        [image lockFocus];
        [image unlockFocus];
        EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white)) << mode;
    }
}

TEST_F(Image, KeepsItsBackgroundColour) {
    NSImage* image = emptyImage();
    NSColor* color = [NSColor orangeColor];
    [image setBackgroundColor:color];
    EXPECT_EQ(color, [image backgroundColor]);
    EXPECT_EQ([image backgroundColor], [image backgroundColor]);
}

TEST_F(Image, ShowsChangedPixelsAfterRecaching) {
    NSBitmapImageRep* bitmap = fourColors();
    NSImage* image = makeImage(bitmap);
    unsigned char* pixels = [bitmap bitmapData];
    [image CGImageForProposedRect:nullptr context:nil hints:nil];
    std::fill_n(pixels, 4, 255);
    [image recache];
    NSBitmapImageRep* shown =
        [[[NSBitmapImageRep alloc] initWithCGImage:[image CGImageForProposedRect:nullptr
                                                                         context:nil
                                                                           hints:nil]] autorelease];
    EXPECT_THAT(pixelsOf(shown), ElementsAre(white, green, blue, white));
    [emptyImage() recache];
}

TEST_F(Image, IsWholeThoughItsLoadingIsCancelled) {
    NSImage* image = makeImage(fourColors());
    [image cancelIncrementalLoad];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white));
}

TEST_F(Image, PrefersTheRepresentationOfItsSize) {
    NSImage* image = makeImage(makeBitmap({.width = 4, .height = 4}));
    NSBitmapImageRep* large = makeBitmap({.width = 8, .height = 8});
    [image addRepresentation:large];
    EXPECT_EQ(4, [[image bestRepresentationForDevice:nil] pixelsWide]);
    EXPECT_EQ(large, [image bestRepresentationForRect:NSMakeRect(0, 0, 7, 7)
                                              context:nil
                                                hints:nil]);
    EXPECT_EQ(nil, [emptyImage() bestRepresentationForDevice:nil]);
}

TEST_F(Image, TakesCategories) { EXPECT_EQ(2, [makeImage(fourColors()) appKitTestPixels]); }

TEST_F(Image, TakesSubclasses) {
    AppKitTestImage* image =
        [[[AppKitTestImage alloc] initWithData:toData(fourColorPNG())] autorelease];
    ASSERT_TRUE([image isKindOfClass:[AppKitTestImage class]]);
    drawing(2, 2, [image] {
        [image drawInRect:NSMakeRect(0, 0, 2, 2)
                 fromRect:NSZeroRect
                operation:NSCompositeCopy
                 fraction:1];
    });
    EXPECT_EQ(1, [image drawings]);
    AppKitTestImage* copy = [[image copy] autorelease];
    EXPECT_EQ(1, [copy drawings]);
    EXPECT_THAT(pixelsOf(bitmapOf(copy)), ElementsAre(red, green, blue, white));
}

TEST_F(Image, OfAFileThatIsNoneIsNil) {
    codecs_test::TemporaryFolder folder;
    const std::string path = folder.path("pipe.png");
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600)); // nobody ever writes into it
    NSString* pipe = [NSString stringWithUTF8String:path.c_str()];
    for (NSString* name : {pipe, @"/dev/zero", @"/", @"/proc/self/mem"}) {
        EXPECT_EQ(nil, [[NSImage alloc] initWithContentsOfFile:name]) << [name UTF8String];
        EXPECT_EQ(nil, [[NSImage alloc] initWithContentsOfURL:[NSURL fileURLWithPath:name]]);
        EXPECT_FALSE([[[[NSImage alloc] initByReferencingFile:name] autorelease] isValid]);
    }
}

} // namespace
} // namespace appkit_test
