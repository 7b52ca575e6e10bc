/// Graphics contexts and pasteboards.

#include "files.h"

@interface AppKitTestOwner : NSObject {
    int _requests;
    int _losses;
}
- (int)requests;
- (int)losses;
@end

@implementation AppKitTestOwner
- (void)pasteboard:(NSPasteboard*)sender provideDataForType:(NSString*)type {
    ++_requests;
    [sender setString:@"promised" forType:type];
}
- (void)pasteboardChangedOwner:(NSPasteboard*)sender {
    ++_losses;
}
- (int)requests {
    return _requests;
}
- (int)losses {
    return _losses;
}
@end

namespace appkit_test {
namespace {

using testing::ElementsAre;

class GraphicsContext : public AppKitTest {
protected:
    GraphicsContext()
        : bitmap(makeRGBA(4, 1, std::vector<Pixel>(4, nothing)))
        , context([NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap]) {}

    CGContextRef port() { return static_cast<CGContextRef>([context graphicsPort]); }

    NSBitmapImageRep* bitmap;
    NSGraphicsContext* context;
};

class Transform : public GraphicsContext {};

class Pasteboard : public AppKitTest {
protected:
    Pasteboard() { [board() clearContents]; }
    static NSPasteboard* board() { return [NSPasteboard generalPasteboard]; }
};

void fillPixel(CGFloat x) { NSRectFill(NSMakeRect(x, 0, 1, 1)); }

TEST_F(GraphicsContext, DrawsIntoTheBitmap) {
    [NSGraphicsContext setCurrentContext:context];
    [[NSColor redColor] set];
    fillPixel(2);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(nothing, nothing, red, nothing));
    EXPECT_FALSE([context isFlipped]);
    EXPECT_FALSE([context isDrawingToScreen]);
    EXPECT_FALSE([NSGraphicsContext currentContextDrawingToScreen]);
}

TEST_F(GraphicsContext, IsNotMadeForLayoutsThatCannotBeDrawnInto) {
    const auto make = [](const BitmapRecipe& recipe) {
        return [NSGraphicsContext graphicsContextWithBitmapImageRep:makeBitmap(recipe)];
    };
    EXPECT_EQ(nil, make({}));
    EXPECT_EQ(nil, make({.bits = 16}));
    EXPECT_EQ(nil, make({.samples = 4, .alpha = true, .planar = true}));
    EXPECT_EQ(nil,
              make({.samples = 4, .alpha = true, .format = NSAlphaNonpremultipliedBitmapFormat}));
    EXPECT_EQ(nil, make({.samples = 4, .space = NSDeviceCMYKColorSpace}));
    EXPECT_NE(nil, make({.pixelBits = 32}));
    EXPECT_NE(nil, make({.samples = 1, .space = NSDeviceWhiteColorSpace}));
    EXPECT_EQ(nil, [NSGraphicsContext graphicsContextWithBitmapImageRep:nil]);
    EXPECT_EQ(nil, [NSGraphicsContext graphicsContextWithGraphicsPort:nullptr flipped:NO]);
}

TEST_F(GraphicsContext, KeepsItsPortAndOrientation) {
    NSGraphicsContext* flipped = [NSGraphicsContext graphicsContextWithGraphicsPort:port()
                                                                            flipped:YES];
    EXPECT_EQ(port(), [flipped graphicsPort]);
    EXPECT_TRUE([flipped isFlipped]);
}

TEST_F(GraphicsContext, BringsItsStateBack) {
    [NSGraphicsContext setCurrentContext:context];
    [[NSColor redColor] set];
    [context setImageInterpolation:NSImageInterpolationNone];
    [context saveGraphicsState];
    [[NSColor greenColor] set];
    [context setImageInterpolation:NSImageInterpolationHigh];
    [context setCompositingOperation:NSCompositeCopy];
    [context setShouldAntialias:NO];
    CGContextTranslateCTM(port(), 1, 0);
    EXPECT_EQ(kCGInterpolationHigh, CGContextGetInterpolationQuality(port()));
    [context restoreGraphicsState];
    EXPECT_EQ(NSUInteger{NSImageInterpolationNone}, [context imageInterpolation]);
    EXPECT_EQ(NSUInteger{NSCompositeSourceOver}, [context compositingOperation]);
    EXPECT_TRUE([context shouldAntialias]);
    EXPECT_EQ(kCGInterpolationNone, CGContextGetInterpolationQuality(port()));
    fillPixel(0);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, nothing, nothing, nothing));
}

TEST_F(GraphicsContext, IgnoresARestoreWithoutASave) {
    [context restoreGraphicsState];
    [NSGraphicsContext restoreGraphicsState];
    EXPECT_EQ(nil, [NSGraphicsContext currentContext]);
}

TEST_F(GraphicsContext, IsRememberedByTheClassLevelSave) {
    [NSGraphicsContext setCurrentContext:context];
    [context setImageInterpolation:NSImageInterpolationLow];
    [NSGraphicsContext saveGraphicsState];
    [context setImageInterpolation:NSImageInterpolationHigh];
    [NSGraphicsContext setCurrentContext:nil];
    [NSGraphicsContext restoreGraphicsState];
    EXPECT_EQ(context, [NSGraphicsContext currentContext]);
    EXPECT_EQ(NSUInteger{NSImageInterpolationLow}, [context imageInterpolation]);
}

TEST_F(GraphicsContext, CanBeNoneWhenTheClassLevelSaveIsMade) {
    [NSGraphicsContext saveGraphicsState];
    [NSGraphicsContext setCurrentContext:context];
    [NSGraphicsContext restoreGraphicsState];
    EXPECT_EQ(nil, [NSGraphicsContext currentContext]);
}

TEST_F(GraphicsContext, IsRetainedWhileItIsCurrent) {
    NSGraphicsContext* own = [[NSGraphicsContext graphicsContextWithGraphicsPort:port()
                                                                         flipped:NO] retain];
    const NSUInteger before = [own retainCount];
    [NSGraphicsContext setCurrentContext:own];
    EXPECT_EQ(before + 1, [own retainCount]);
    [NSGraphicsContext setCurrentContext:nil];
    EXPECT_EQ(before, [own retainCount]);
    [own release];
}

TEST_F(Transform, MovesDrawingAfterwards) {
    [NSGraphicsContext setCurrentContext:context];
    [[NSColor redColor] set];
    NSAffineTransform* move = [NSAffineTransform transform];
    [move translateXBy:1 yBy:0];
    [move concat];
    fillPixel(0);
    [move concat];
    fillPixel(1);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(nothing, red, nothing, red));
}

TEST_F(Transform, WhenSetTakesThePlaceOfOthers) {
    CGContextTranslateCTM(port(), 1, 0);
    NSGraphicsContext* moved = [NSGraphicsContext graphicsContextWithGraphicsPort:port()
                                                                          flipped:NO];
    [NSGraphicsContext setCurrentContext:moved];
    [[NSColor redColor] set];
    CGContextScaleCTM(port(), 3, 3);
    NSAffineTransform* move = [NSAffineTransform transform];
    [move translateXBy:2 yBy:0];
    [move set];
    fillPixel(0);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(nothing, nothing, nothing, red));
}

TEST_F(Transform, NeedsNoContext) {
    EXPECT_EQ(nil, raisedBy([] {
                  [[NSAffineTransform transform] set];
                  [[NSAffineTransform transform] concat];
              }));
}

TEST_F(Pasteboard, KeepsDataOfDeclaredTypes) {
    const NSInteger before = [board() changeCount];
    NSArray* types = [NSArray arrayWithObjects:NSPasteboardTypePNG, NSStringPboardType, nil];
    EXPECT_EQ(before + 1, [board() declareTypes:types owner:nil]);
    NSData* data = toData(fourColorPNG());
    EXPECT_TRUE([board() setData:data forType:NSPasteboardTypePNG]);
    EXPECT_TRUE([board() setString:@"text" forType:NSStringPboardType]);
    EXPECT_FALSE([board() setData:data forType:NSTIFFPboardType]);
    EXPECT_TRUE([data isEqual:[board() dataForType:NSPasteboardTypePNG]]);
    EXPECT_EQUAL_STRINGS(@"text", [board() stringForType:NSPasteboardTypeString]);
    EXPECT_TRUE([types isEqual:[board() types]]);
    EXPECT_EQ(nil, [board() dataForType:nil]);
    EXPECT_EQ(nil, [board() dataForType:NSTIFFPboardType]);
}

TEST_F(Pasteboard, IsEmptiedByADeclaration) {
    [board() declareTypes:[NSArray arrayWithObject:NSTIFFPboardType] owner:nil];
    [board() setData:[NSData data] forType:NSTIFFPboardType];
    [board() declareTypes:[NSArray arrayWithObject:NSTIFFPboardType] owner:nil];
    EXPECT_EQ(nil, [board() dataForType:NSTIFFPboardType]);
    const NSInteger before = [board() changeCount];
    EXPECT_EQ(before + 1, [board() clearContents]);
    EXPECT_EQ(0U, [[board() types] count]);
}

TEST_F(Pasteboard, AsksItsOwnerForWhatWasPromised) {
    AppKitTestOwner* owner = [[[AppKitTestOwner alloc] init] autorelease];
    [board() declareTypes:[NSArray arrayWithObject:NSStringPboardType] owner:owner];
    EXPECT_EQ(0, [owner requests]);
    EXPECT_EQUAL_STRINGS(@"promised", [board() stringForType:NSStringPboardType]);
    EXPECT_EQUAL_STRINGS(@"promised", [board() stringForType:NSStringPboardType]);
    EXPECT_EQ(1, [owner requests]);
    [board() clearContents];
    EXPECT_EQ(1, [owner losses]);
}

TEST_F(Pasteboard, FindsTheFirstTypeThatIsThere) {
    [board() declareTypes:[NSArray arrayWithObject:@"public.tiff"] owner:nil];
    NSArray* wanted = [NSArray arrayWithObjects:@"public.png", NSTIFFPboardType, nil];
    EXPECT_EQUAL_STRINGS(NSTIFFPboardType, [board() availableTypeFromArray:wanted]);
    EXPECT_EQ(nil, [board() availableTypeFromArray:nil]);
}

TEST_F(Pasteboard, HoldsPropertyLists) {
    [board() declareTypes:[NSArray arrayWithObject:NSFilenamesPboardType] owner:nil];
    NSArray* names = [NSArray arrayWithObject:@"/tmp/a"];
    EXPECT_TRUE([board() setPropertyList:names forType:NSFilenamesPboardType]);
    EXPECT_TRUE([names isEqual:[board() propertyListForType:NSFilenamesPboardType]]);
}

TEST_F(Pasteboard, IsOneForEachName) {
    EXPECT_EQ(board(), [NSPasteboard generalPasteboard]);
    EXPECT_EQ(board(), [NSPasteboard pasteboardWithName:[board() name]]);
    EXPECT_NE(board(), [NSPasteboard pasteboardWithUniqueName]);
}

TEST_F(Pasteboard, GivesImages) {
    EXPECT_FALSE([NSImage canInitWithPasteboard:board()]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithPasteboard:board()]);
    [board() declareTypes:[NSArray arrayWithObject:NSTIFFPboardType] owner:nil];
    [board() setData:[fourColors() TIFFRepresentation] forType:NSTIFFPboardType];
    EXPECT_TRUE([NSImage canInitWithPasteboard:board()]);
    EXPECT_TRUE([NSImageRep canInitWithPasteboard:board()]);
    NSImage* image = [[[NSImage alloc] initWithPasteboard:board()] autorelease];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white));
    EXPECT_EQ(2, [[NSImageRep imageRepWithPasteboard:board()] pixelsWide]);
}

TEST_F(Pasteboard, GivesImagesOfFiles) {
    codecs_test::TemporaryFolder folder;
    NSString* path =
        [NSString stringWithUTF8String:folder.write("four.png", fourColorPNG()).c_str()];
    [board() declareTypes:[NSArray arrayWithObject:NSFilenamesPboardType] owner:nil];
    [board() setPropertyList:[NSArray arrayWithObject:path] forType:NSFilenamesPboardType];
    EXPECT_TRUE([NSImage canInitWithPasteboard:board()]);
    EXPECT_NE(nil, [[[NSImage alloc] initWithPasteboard:board()] autorelease]);
    [board() setPropertyList:[NSArray arrayWithObject:@"/tmp/a.txt"] forType:NSFilenamesPboardType];
    EXPECT_FALSE([NSImage canInitWithPasteboard:board()]);
}

} // namespace
} // namespace appkit_test
