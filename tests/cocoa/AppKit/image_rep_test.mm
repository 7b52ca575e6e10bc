/// Representations in general, the registry of their classes and the lists of types.

#include "files.h"

/// Draws one red square in its lower left quarter.
@interface AppKitTestRep : NSImageRep
@end

@implementation AppKitTestRep

- (BOOL)draw {
    [[NSColor redColor] set];
    NSRectFill(NSMakeRect(0, 0, [self size].width / 2, [self size].height / 2));
    return YES;
}

+ (NSArray*)imageUnfilteredFileTypes {
    return [NSArray arrayWithObjects:@"square", @"png", nil];
}

+ (NSArray*)imageUnfilteredPasteboardTypes {
    return [NSArray arrayWithObject:@"test.square"];
}

+ (NSArray*)imageUnfilteredTypes {
    return [NSArray arrayWithObject:@"test.square"];
}

+ (BOOL)canInitWithData:(NSData*)data {
    return [data isEqual:[NSData dataWithBytes:"square" length:6]];
}

+ (NSArray*)imageRepsWithData:(NSData*)data {
    NSImageRep* rep = [[[self alloc] init] autorelease];
    [rep setSize:NSMakeSize(4, 4)];
    return [NSArray arrayWithObject:rep];
}

@end

namespace appkit_test {
namespace {

using testing::ElementsAre;

class ImageRep : public AppKitTest {};
class ImageTypes : public AppKitTest {};

AppKitTestRep* makeTestRep() {
    AppKitTestRep* rep = [[[AppKitTestRep alloc] init] autorelease];
    [rep setSize:NSMakeSize(4, 4)];
    return rep;
}

TEST_F(ImageRep, KeepsItsAttributes) {
    NSImageRep* rep = [[[NSImageRep alloc] init] autorelease];
    EXPECT_EQ(NSImageRepMatchesDevice, [rep pixelsWide]);
    [rep setSize:NSMakeSize(3, 4)];
    [rep setPixelsWide:5];
    [rep setPixelsHigh:6];
    [rep setBitsPerSample:8];
    [rep setAlpha:YES];
    [rep setOpaque:YES];
    [rep setColorSpaceName:@"space"];
    NSImageRep* copy = [[rep copy] autorelease];
    [rep setColorSpaceName:nil];
    for (NSImageRep* each : {rep, copy}) {
        EXPECT_TRUE(NSEqualSizes(NSMakeSize(3, 4), [each size]));
        EXPECT_EQ(5, [each pixelsWide]);
        EXPECT_EQ(6, [each pixelsHigh]);
        EXPECT_EQ(8, [each bitsPerSample]);
        EXPECT_TRUE([each hasAlpha]);
        EXPECT_TRUE([each isOpaque]);
    }
    EXPECT_EQ(nil, [rep colorSpaceName]);
    EXPECT_EQUAL_STRINGS(@"space", [copy colorSpaceName]);
}

TEST_F(ImageRep, DrawsNothingByItself) {
    NSImageRep* rep = [[[NSImageRep alloc] init] autorelease];
    [rep setSize:NSMakeSize(2, 2)];
    drawing(2, 2, [rep] {
        EXPECT_FALSE([rep draw]);
        EXPECT_FALSE([rep drawInRect:NSMakeRect(0, 0, 2, 2)]);
    });
    EXPECT_EQ(nullptr, [rep CGImageForProposedRect:nullptr context:nil hints:nil]);
}

TEST_F(ImageRep, OfABitmapKeepsItsPixelsWhateverItsAttributesSay) {
    NSBitmapImageRep* bitmap = fourColors();
    [bitmap setPixelsWide:5000];
    [bitmap setBitsPerSample:16];
    EXPECT_EQ(5000, [bitmap pixelsWide]);
    NSBitmapImageRep* drawn = drawing(2, 2, [bitmap] {
        [makeImage(bitmap) compositeToPoint:NSZeroPoint operation:NSCompositeCopy];
    });
    EXPECT_EQ(green, pixelAt(drawn, 1, 0));
}

TEST_F(ImageRep, OfAnyClassIsDrawnByAnImage) {
    NSBitmapImageRep* drawn = drawing(4, 4, [] {
        [[NSColor greenColor] set];
        NSRectFill(NSMakeRect(0, 0, 4, 4));
        [makeImage(makeTestRep()) drawInRect:NSMakeRect(0, 0, 4, 4)
                                    fromRect:NSZeroRect
                                   operation:NSCompositeSourceOver
                                    fraction:1];
    });
    EXPECT_EQ(red, pixelAt(drawn, 1, 2));
    EXPECT_EQ(red, pixelAt(drawn, 0, 3));
    EXPECT_EQ(green, pixelAt(drawn, 2, 2));
    EXPECT_EQ(green, pixelAt(drawn, 1, 1));
}

TEST_F(ImageRep, OfAnyClassIsRenderedAtTheSizeItIsDrawn) {
    NSBitmapImageRep* drawn = drawing(40, 40, [] {
        [makeImage(makeTestRep()) drawInRect:NSMakeRect(0, 0, 40, 40)
                                    fromRect:NSZeroRect
                                   operation:NSCompositeCopy
                                    fraction:1];
    });
    EXPECT_EQ(red, pixelAt(drawn, 19, 20));
    EXPECT_EQ(nothing, pixelAt(drawn, 20, 20));
    EXPECT_EQ(nothing, pixelAt(drawn, 19, 19));
}

TEST_F(ImageRep, OfAnyClassIsNotRenderedLargerThanMemory) {
    AppKitTestRep* rep = makeTestRep();
    NSRect rect = NSMakeRect(0, 0, 60000, 60000);
    EXPECT_EQ(nullptr, [rep CGImageForProposedRect:&rect context:nil hints:nil]);
    rect = NSMakeRect(0, 0, NAN, INFINITY);
    EXPECT_EQ(nullptr, [rep CGImageForProposedRect:&rect context:nil hints:nil]);
    rect = NSMakeRect(0, 0, 7, 3);
    CGImageRef image = [rep CGImageForProposedRect:&rect context:nil hints:nil];
    EXPECT_EQ(7U, CGImageGetWidth(image));
    EXPECT_EQ(3U, CGImageGetHeight(image));
}

TEST_F(ImageRep, OfAnyClassBecomesAPageOfTIFF) {
    NSData* data = [makeImage(makeTestRep()) TIFFRepresentation];
    NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:data];
    EXPECT_EQ(4, [bitmap pixelsWide]);
    EXPECT_EQ(red, pixelAt(bitmap, 1, 2));
    EXPECT_EQ(nothing, pixelAt(bitmap, 2, 2));
}

TEST_F(ImageRep, LeavesTheContextAloneWhenItIsRendered) {
    drawing(1, 1, [] {
        NSGraphicsContext* context = [NSGraphicsContext currentContext];
        [makeTestRep() CGImageForProposedRect:nullptr context:nil hints:nil];
        EXPECT_EQ(context, [NSGraphicsContext currentContext]);
    });
}

TEST_F(ImageRep, ClassesAreAskedInOrderOfRegistration) {
    [NSImageRep registerImageRepClass:[AppKitTestRep class]];
    [NSImageRep registerImageRepClass:[AppKitTestRep class]];
    NSArray* classes = [NSImageRep registeredImageRepClasses];
    ASSERT_EQ(2U, [classes count]);
    EXPECT_EQ([NSBitmapImageRep class], [NSImageRep imageRepClassForFileType:@"png"]);
    EXPECT_EQ([AppKitTestRep class], [NSImageRep imageRepClassForFileType:@"square"]);
    EXPECT_EQ([AppKitTestRep class], [NSImageRep imageRepClassForPasteboardType:@"test.square"]);
    EXPECT_EQ([AppKitTestRep class], [NSImageRep imageRepClassForType:@"test.square"]);
    EXPECT_TRUE([[NSImage imageUnfilteredFileTypes] containsObject:@"square"]);

    NSData* data = [NSData dataWithBytes:"square" length:6];
    NSImage* image = [[[NSImage alloc] initWithData:data] autorelease];
    EXPECT_TRUE([[[image representations] objectAtIndex:0] isKindOfClass:[AppKitTestRep class]]);

    [NSImageRep unregisterImageRepClass:[AppKitTestRep class]];
    EXPECT_EQ(Nil, [NSImageRep imageRepClassForFileType:@"square"]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithData:data]);
}

TEST_F(ImageTypes, AreThoseThatAreRead) {
    NSArray* files = [NSImage imageFileTypes];
    for (NSString* type : {@"png", @"jpg", @"jpeg", @"tif", @"tiff", @"gif", @"bmp", @"'TIFF'",
                           @"'JPEG'", @"'PNGf'", @"'GIFf'", @"'BMPf'"})
        EXPECT_TRUE([files containsObject:type]) << [type UTF8String];
    for (NSString* type : {@"pdf", @"eps", @"pict", @"psd"})
        EXPECT_FALSE([files containsObject:type]) << [type UTF8String];
    NSArray* identifiers = [NSImage imageTypes];
    for (NSString* type : {@"public.png", @"public.jpeg", @"public.tiff", @"com.compuserve.gif",
                           @"com.microsoft.bmp"})
        EXPECT_TRUE([identifiers containsObject:type]) << [type UTF8String];
    EXPECT_TRUE([[NSImage imagePasteboardTypes] containsObject:NSTIFFPboardType]);
    EXPECT_TRUE([[NSImage imagePasteboardTypes] containsObject:@"public.png"]);
}

TEST_F(ImageTypes, AreTheSameWithAndWithoutFilters) {
    EXPECT_TRUE([[NSImage imageFileTypes] isEqual:[NSImage imageUnfilteredFileTypes]]);
    EXPECT_TRUE([[NSImage imageTypes] isEqual:[NSImageRep imageUnfilteredTypes]]);
    EXPECT_TRUE(
        [[NSImage imagePasteboardTypes] isEqual:[NSBitmapImageRep imageUnfilteredPasteboardTypes]]);
}

TEST_F(ImageTypes, AreFoundWhateverTheirCase) {
    EXPECT_EQ([NSBitmapImageRep class], [NSImageRep imageRepClassForFileType:@"PNG"]);
    EXPECT_EQ(Nil, [NSImageRep imageRepClassForFileType:@"docx"]);
    EXPECT_EQ(Nil, [NSImageRep imageRepClassForFileType:nil]);
}

TEST_F(ImageTypes, OfAClassThatNamesNoneAreNone) {
    EXPECT_FALSE([NSImageRep canInitWithPasteboard:nil]);
    EXPECT_TRUE([NSImageRep imageRepsWithPasteboard:nil] == nil);
}

} // namespace
} // namespace appkit_test
