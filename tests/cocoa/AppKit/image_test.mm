/// Images as objects: sizes, names, representations, flags.

#include "files.h"

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

TEST_F(Image, IsFoundByItsName) {
    NSImage* image = makeImage(fourColors());
    EXPECT_EQ(nil, [NSImage imageNamed:@"four"]);
    EXPECT_TRUE([image setName:@"four"]);
    EXPECT_EQ(image, [NSImage imageNamed:@"four"]);
    EXPECT_EQUAL_STRINGS(@"four", [image name]);
    EXPECT_TRUE([image setName:@"other"]);
    EXPECT_EQ(nil, [NSImage imageNamed:@"four"]);
    EXPECT_TRUE([image setName:nil]);
    EXPECT_EQ(nil, [NSImage imageNamed:@"other"]);
    EXPECT_EQ(nil, [image name]);
    EXPECT_EQ(nil, [NSImage imageNamed:nil]);
}

TEST_F(Image, CannotTakeAnothersName) {
    NSImage* first = emptyImage();
    NSImage* second = emptyImage();
    EXPECT_TRUE([first setName:@"taken"]);
    EXPECT_TRUE([first setName:@"taken"]);
    EXPECT_TRUE([second setName:@"mine"]);
    EXPECT_FALSE([second setName:@"taken"]);
    EXPECT_EQUAL_STRINGS(@"mine", [second name]);
    EXPECT_EQ(first, [NSImage imageNamed:@"taken"]);
}

TEST_F(Image, LosesItsNameWhenItGoes) {
    NSImage* image = [[NSImage alloc] init];
    [image setName:@"short-lived"];
    EXPECT_EQ(1U, [image retainCount]);
    [image release];
    EXPECT_EQ(nil, [NSImage imageNamed:@"short-lived"]);
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

TEST_F(Image, KeepsEachFlagApart) {
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
    using Getter = BOOL (*)(id, SEL);
    using Setter = void (*)(id, SEL, BOOL);
    NSImage* image = emptyImage();
    const auto get = [image](SEL name) {
        return reinterpret_cast<Getter>([image methodForSelector:name])(image, name);
    };
    const auto values = [&] {
        std::vector<bool> all;
        for (const Flag& flag : flags)
            all.push_back(get(flag.getter));
        return all;
    };
    std::vector<bool> expected = values();
    for (std::size_t index = 0; index < std::size(flags); ++index) {
        expected[index] = !expected[index];
        const SEL setter = flags[index].setter;
        reinterpret_cast<Setter>([image methodForSelector:setter])(image, setter, expected[index]);
        EXPECT_EQ(expected, values()) << index;
    }
}

TEST_F(Image, KeepsItsBackgroundColour) {
    NSImage* image = emptyImage();
    NSColor* color = [NSColor orangeColor];
    [image setBackgroundColor:color];
    EXPECT_EQ(color, [image backgroundColor]);
    EXPECT_EQ([image backgroundColor], [image backgroundColor]);
}

TEST_F(Image, DoesNotMindBeingToldToForgetItsCaches) {
    NSImage* image = makeImage(fourColors());
    [image recache];
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

} // namespace
} // namespace appkit_test
